"""Runs one whole job of a program in a fresh folder and gives back, masked, everything that it left.

A job is a folder with `answers.txt` (@ROOT@ stands for the working directory, @THREADS@ for the thread count),
`tree/` (the working directory before the run) and, where wanted, `folders` (the empty folders to make, one a
line, instead of `result`) and `environment` (lines NAME=VALUE, read by the stand-ins of the outside tools).
"""
import itertools
import os
import re
import resource
import shutil
import signal
import subprocess
import time

MACHINE_THREADS = 8             # what the OpenMP runtime takes the machine to have; more where a run asks for more
FILE_LIMIT = 16 << 20           # bytes of one file: the dialogue repeats for ever at the end of its input
KEPT_OF_ENDLESS = 1 << 14       # bytes kept of each file of a run that had to be stopped

JOB_ID = re.compile(rb"J_(\d{4}-\d\d-\d\d)_([1-9]\d{3})_")
CREATED = re.compile(rb"(Results created by VARNOLIX on )(\d\d-\d\d-\d{4} \d\d:\d\d:\d\d)")
RUN_TIME = re.compile(rb"(Runtime: )(\S+)( seconds)")
CONSOLE_RUN_TIME = re.compile(rb"Runtime: (\S+) seconds\.\n\Z")
RUN_TIME_MARK = re.compile(rb"(?<=Runtime: )(GENERAL|SIX_DECIMALS|EITHER)(?= seconds)")

# Stand-ins of the outside tools. All add to one list of calls, so that the order among them shows too. Each adds its
# record at once, as calls may overlap: first a line of a tab and the file it has as standard input, which ordered_calls
# takes away again, then the call, then what was read, each line behind four blanks. STAND_IN_SHAKE has them wait for
# random times of up to 0.1 seconds.
RECORD = r"""#!/bin/sh
own="$STAND_IN_CALLS.$$"
shake() { [ -z "$STAND_IN_SHAKE" ] || sleep "0.0$(od -An -N1 -tu1 /dev/urandom | tr -d ' ')"; }
record() {
    printf '\t%s\n%s' "$(readlink /proc/$$/fd/0)" "$1" > "$own"; shift
    for argument in "$@"; do printf ' [%s]' "$argument" >> "$own"; done
    printf '\n' >> "$own"
}
record_lines() { sed 's/^/    /' "$1" >> "$own"; }
add_record() { cat "$own" >> "$STAND_IN_CALLS"; rm "$own"; }
shake
"""
WEBLOGO = RECORD + r"""
record weblogo "$@"
matrix="$own.matrix"
cat > "$matrix"
record_lines "$matrix"
add_record
shake
[ -n "$STAND_IN_FAILS" ] && exit 1
printf 'logo\n'
cat "$matrix"
rm "$matrix"
"""
PHP5 = RECORD + r"""
page="${1%.php}.html"
record php5 "$@"
record_lines "$1"
[ -n "$STAND_IN_FAILS" ] || [ -f "$page" ] || printf '    no page\n' >> "$own"
add_record
shake
[ -n "$STAND_IN_FAILS" ] && exit 1
[ -n "$STAND_IN_PDF" ] && { printf '%%PDF-1.4\n'; cat "$page"; printf '%%%%EOF\n'; } > "${page%.html}.pdf"
exit 0
"""
RSCRIPT = RECORD + r"""
record Rscript "$@"
record_lines "$1"
add_record
[ -n "$STAND_IN_FAILS" ] && exit 1
image=$(sed -n "s/^png('\(.*\)', width.*/\1/p" "$1" | sed "s/\\\\\(.\)/\1/g")
printf 'tree\n' > "$image"
"""

# One record of the list: the file on standard input, then tool and arguments, then the lines that it read.
CALL = re.compile(rb"\t(.*)\n((\w+) .*\n(?:    .*\n)*)")
LOGO_INPUT = re.compile(rb"_([MD])(\d+)\.txt\Z")
CONVERTED_SCRIPT = re.compile(rb"\Aphp5 \[.*/J_[\d-]+_\d+_(\w+)\.php\]\n")
CONVERTED_IN_ORDER = (b"HTML_Global_Matching_Results", b"HTML_Results_Database_Matching_Global_Matching",
                      b"HTML_Results", b"HTML_Results_Database_Matching", b"Global_Matching_Phylogenetic_Tree",
                      b"Phylogenetic_Tree")


def read(path):
    with open(path, "rb") as file:
        return file.read()


def write(path, data, mode=0o644):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(data)
    os.chmod(path, mode)


def read_or(path, otherwise):
    return read(path) if os.path.exists(path) else otherwise


def snapshot(top):
    """Path below top -> content; the path of a folder ends in a slash."""
    found = {}
    for here, folders, files in os.walk(top):
        for name in files:
            path = os.path.join(here, name)
            found[os.path.relpath(path, top)] = read(path)
        for name in folders:
            found[os.path.relpath(os.path.join(here, name), top) + "/"] = b""
    return found


class Mask:
    """Takes out what must vary: the root folder, the job's number, the date and the run time."""

    def __init__(self, root, begun, ended, console):
        seconds = [time.gmtime(second) for second in range(int(begun) - 1, int(ended) + 2)]
        self.root = os.fsencode(root)
        self.days = {time.strftime("%Y-%m-%d", second).encode() for second in seconds}
        self.moments = {time.strftime("%m-%d-%Y %H:%M:%S", second).encode() for second in seconds}
        said = CONSOLE_RUN_TIME.search(console)
        self.run_time = said.group(1) if said else b""

    def __call__(self, data):
        data = data.replace(self.root, b"@ROOT@")
        data = JOB_ID.sub(lambda m: b"J_DATE_NUMBER_" if m.group(1) in self.days else m.group(0), data)
        data = CREATED.sub(lambda m: m.group(1) + (b"MOMENT" if m.group(2) in self.moments else m.group(2)), data)
        return RUN_TIME.sub(lambda m: m.group(1) + self.notation(m.group(2)) + m.group(3), data)

    def notation(self, text):
        """The console shows the one run time in general notation; from 0.1 to 1 second the two look alike."""
        try:
            value = float(self.run_time)
            same = abs(float(text) - value) <= 1e-6 + 1e-5 * value
        except ValueError:
            return text
        six_decimals = re.fullmatch(rb"\d+\.\d{6}", text) is not None
        if text == self.run_time:
            return b"EITHER" if six_decimals else b"GENERAL"
        return b"SIX_DECIMALS" if six_decimals and same else text


def same(wanted, found):
    """Equal contents, where a run time of unclear notation may stand for both."""
    if b"Runtime: EITHER" in wanted + found:
        wanted, found = (RUN_TIME_MARK.sub(b"EITHER", data) for data in (wanted, found))
    return wanted == found


def confine():
    """In the child: a process group of its own and a bound on what it can write."""
    os.setpgid(0, 0)
    os.umask(0o022)
    resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_LIMIT, FILE_LIMIT))


def lay_out(job, place, threads, may_overlap):
    """Copy the job below place, with stand-ins of the outside tools; the working directory comes back."""
    root = os.path.join(place, "job")
    shutil.copytree(os.path.join(job, "tree"), root)
    for folder in read_or(os.path.join(job, "folders"), b"result").decode().splitlines():
        os.makedirs(os.path.join(root, folder))
    for folder in [here for here, _, files in os.walk(root) if files]:
        write(os.path.join(folder, "weblogo-3.4", "weblogo"), WEBLOGO.encode(), 0o755)
        if may_overlap:
            write(os.path.join(folder, "weblogo-3.4", "calls-may-overlap"), b"")
    if may_overlap:
        write(os.path.join(root, "prince-calls-may-overlap"), b"")
    write(os.path.join(place, "bin", "php5"), PHP5.encode(), 0o755)
    write(os.path.join(place, "bin", "Rscript"), RSCRIPT.encode(), 0o755)
    answers = read(os.path.join(job, "answers.txt"))
    answers = answers.replace(b"@ROOT@", os.fsencode(root)).replace(b"@THREADS@", b"%d" % threads)
    write(os.path.join(place, "answers"), answers)
    return root


def environment(job, place, threads, extra):
    kept = {name: value for name, value in os.environ.items() if not name.startswith(("OMP_", "GOMP_", "LC_"))}
    kept.update(PATH=os.path.join(place, "bin") + os.pathsep + kept.get("PATH", os.defpath), LC_ALL="C", TZ="UTC",
                STAND_IN_CALLS=os.path.join(place, "calls"), OMP_WAIT_POLICY="passive",
                OMP_NUM_THREADS=str(max(threads, MACHINE_THREADS)), **extra)
    lines = read_or(os.path.join(job, "environment"), b"").decode().splitlines()
    kept.update(line.split("=", 1) for line in lines)
    return kept


def start_and_wait(program, root, place, limit, env):
    """Run the program on its answers; the text of its end comes back."""
    with open(os.path.join(place, "answers"), "rb") as answers, \
            open(os.path.join(place, "stdout"), "wb") as out, open(os.path.join(place, "stderr"), "wb") as err:
        process = subprocess.Popen([program], stdin=answers, stdout=out, stderr=err, cwd=root, env=env,
                                   preexec_fn=confine)
        try:
            code = process.wait(limit)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
            return "stopped after %g seconds" % limit
    return "exit %d" % code if code >= 0 else "signal %d" % -code


def place_of_call(source, call):
    """Where a call that overlaps others of its tool would stand with one thread."""
    if call.startswith(b"weblogo "):
        return int(LOGO_INPUT.search(source)[2])
    return CONVERTED_IN_ORDER.index(CONVERTED_SCRIPT.match(call)[1])


def ordered_calls(data, may_overlap):
    """The list of calls in the order in which they came. Where they may overlap, those for different motifs may come
    in any order, and so may those for different pages; they are put in the order of one thread. The calls for one
    motif keep theirs."""
    found = [match.groups() for match in CALL.finditer(data)]
    if b"".join(b"\t" + source + b"\n" + call for source, call, _ in found) != data:
        raise ValueError("a record of the calls is not whole")

    def stage(record):
        source, _, tool = record
        return (tool, LOGO_INPUT.search(source)[1]) if tool == b"weblogo" else (tool,)

    ordered = []
    for (tool, *_), group in itertools.groupby(found, stage):
        calls = [(source, call) for source, call, _ in group]
        if may_overlap and tool != b"Rscript":
            calls.sort(key=lambda call: place_of_call(*call))
        ordered += [call for _, call in calls]
    return b"".join(ordered)


def run_job(program, job, place, threads, limit=20.0, extra=(), may_overlap=False):
    """Run the job below the folder `place` (made anew): name -> masked content.

    With `may_overlap` the stand-ins tell the program, by the files made for that, that they bear several calls at once.

    Names: status, stdout, stderr (where not empty), calls (of the stand-ins), folders (the new ones, a line
    each), and every new, changed or removed file under its path.
    """
    shutil.rmtree(place, ignore_errors=True)
    os.makedirs(place)
    root = lay_out(job, place, threads, may_overlap)
    env = environment(job, place, threads, dict(extra))
    earlier, begun = snapshot(root), time.time()
    status = start_and_wait(program, root, place, limit, env)
    ended, later = time.time(), snapshot(root)
    left = {"status": status.encode() + b"\n", "stdout": read(os.path.join(place, "stdout"))}
    for name in ("stderr", "calls"):
        left[name] = read_or(os.path.join(place, name), b"")
    left["calls"] = ordered_calls(left["calls"], may_overlap)
    if threads > MACHINE_THREADS:
        left["stdout"] = left["stdout"].replace(b"on your machine is %d." % threads,
                                                b"on your machine is %d." % MACHINE_THREADS)
    left["folders"] = "".join(sorted(name + "\n" for name in later.keys() - earlier.keys()
                                     if name.endswith("/"))).encode()
    left = {name: data for name, data in left.items() if data}
    left.update((name, data) for name, data in later.items()
                if not name.endswith("/") and earlier.get(name) != data)
    left.update((name, b"removed\n") for name in earlier.keys() - later.keys())
    if not status.startswith("exit"):
        left = {name: data[:KEPT_OF_ENDLESS] for name, data in left.items()}
    mask = Mask(root, begun, ended, left.get("stdout", b""))
    return {os.fsdecode(mask(os.fsencode(name))): mask(data) for name, data in left.items()}


def differences(wanted, found):
    """Names that differ, the status and the console first."""
    names = [name for name in wanted.keys() | found.keys()
             if name not in wanted or name not in found or not same(wanted[name], found[name])]
    return sorted(names, key=lambda name: (name != "status", name != "stdout", name))


def describe(wanted, found, names, lines=40):
    """A line for each name that differs and the head of the first unified diff."""
    import difflib
    text, diff = [], []
    for name in names:
        if name not in wanted or name not in found:
            text.append("%s: %s" % (name, "missing" if name in wanted else "not expected"))
            continue
        text.append("%s: differs" % name)
        if not diff:
            sides = [data.decode("latin-1").split("\n") for data in (wanted[name], found[name])]
            diff = list(difflib.unified_diff(*sides, "expected/" + name, "found/" + name, lineterm=""))
    return "\n".join(text + [line[:300] for line in diff[:lines]])


def keep(folder, left):
    """Write what a run left below the folder."""
    shutil.rmtree(folder, ignore_errors=True)
    for name, data in left.items():
        write(os.path.join(folder, name), data)
