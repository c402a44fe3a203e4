"""Runs one whole job of a program in a fresh folder and gives back, masked, everything that it left.

A job is a folder with `answers.txt` (@ROOT@ stands for the working directory, @THREADS@ for the thread count),
`tree/` (the working directory before the run) and, where wanted, `folders` (the empty folders to make, one a
line, instead of `result`) and `environment` (lines NAME=VALUE, read by the stand-ins of the outside tools).
"""
import os
import re
import resource
import shutil
import signal
import subprocess
import time

MACHINE_THREADS = "8"           # what the OpenMP runtime takes the machine to have
FILE_LIMIT = 16 << 20           # bytes of one file: the dialogue repeats for ever at the end of its input
KEPT_OF_ENDLESS = 1 << 14       # bytes kept of each file of a run that had to be stopped

JOB_ID = re.compile(rb"J_(\d{4}-\d\d-\d\d)_([1-9]\d{3})_")
CREATED = re.compile(rb"(Results created by VARNOLIX on )(\d\d-\d\d-\d{4} \d\d:\d\d:\d\d)")
RUN_TIME = re.compile(rb"(Runtime: )(\S+)( seconds)")
CONSOLE_RUN_TIME = re.compile(rb"Runtime: (\S+) seconds\.\n\Z")
RUN_TIME_MARK = re.compile(rb"(?<=Runtime: )(GENERAL|SIX_DECIMALS|EITHER)(?= seconds)")

# Stand-ins of the outside tools. All add to one list of calls, so that the order among them shows too.
RECORD = r"""#!/bin/sh
record() {
    printf '%s' "$1" >> "$STAND_IN_CALLS"; shift
    for argument in "$@"; do printf ' [%s]' "$argument" >> "$STAND_IN_CALLS"; done
    printf '\n' >> "$STAND_IN_CALLS"
}
record_lines() { sed 's/^/    /' "$1" >> "$STAND_IN_CALLS"; }
"""
WEBLOGO = RECORD + r"""
record weblogo "$@"
matrix="$STAND_IN_CALLS.matrix"
cat > "$matrix"
record_lines "$matrix"
[ -n "$STAND_IN_FAILS" ] && exit 1
printf 'logo\n'
cat "$matrix"
"""
PHP5 = RECORD + r"""
record php5 "$@"
record_lines "$1"
[ -n "$STAND_IN_FAILS" ] && exit 1
page="${1%.php}.html"
[ -f "$page" ] || printf '    no page\n' >> "$STAND_IN_CALLS"
[ -n "$STAND_IN_PDF" ] && { printf '%%PDF-1.4\n'; cat "$page"; printf '%%%%EOF\n'; } > "${page%.html}.pdf"
exit 0
"""
RSCRIPT = RECORD + r"""
record Rscript "$@"
record_lines "$1"
[ -n "$STAND_IN_FAILS" ] && exit 1
image=$(sed -n "s/^png('\(.*\)', width.*/\1/p" "$1" | sed "s/\\\\\(.\)/\1/g")
printf 'tree\n' > "$image"
"""


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


def lay_out(job, place, threads):
    """Copy the job below place, with stand-ins of the outside tools; the working directory comes back."""
    root = os.path.join(place, "job")
    shutil.copytree(os.path.join(job, "tree"), root)
    for folder in read_or(os.path.join(job, "folders"), b"result").decode().splitlines():
        os.makedirs(os.path.join(root, folder))
    for folder in [here for here, _, files in os.walk(root) if files]:
        write(os.path.join(folder, "weblogo-3.4", "weblogo"), WEBLOGO.encode(), 0o755)
    write(os.path.join(place, "bin", "php5"), PHP5.encode(), 0o755)
    write(os.path.join(place, "bin", "Rscript"), RSCRIPT.encode(), 0o755)
    answers = read(os.path.join(job, "answers.txt"))
    answers = answers.replace(b"@ROOT@", os.fsencode(root)).replace(b"@THREADS@", b"%d" % threads)
    write(os.path.join(place, "answers"), answers)
    return root


def environment(job, place, extra):
    kept = {name: value for name, value in os.environ.items() if not name.startswith(("OMP_", "GOMP_", "LC_"))}
    kept.update(PATH=os.path.join(place, "bin") + os.pathsep + kept.get("PATH", os.defpath), LC_ALL="C", TZ="UTC",
                STAND_IN_CALLS=os.path.join(place, "calls"), OMP_NUM_THREADS=MACHINE_THREADS,
                OMP_WAIT_POLICY="passive", **extra)
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


def run_job(program, job, place, threads, limit=20.0, extra=()):
    """Run the job below the folder `place` (made anew): name -> masked content.

    Names: status, stdout, stderr (where not empty), calls (of the stand-ins), folders (the new ones, a line
    each), and every new, changed or removed file under its path.
    """
    shutil.rmtree(place, ignore_errors=True)
    os.makedirs(place)
    root = lay_out(job, place, threads)
    env = environment(job, place, dict(extra))
    earlier, begun = snapshot(root), time.time()
    status = start_and_wait(program, root, place, limit, env)
    ended, later = time.time(), snapshot(root)
    left = {"status": status.encode() + b"\n", "stdout": read(os.path.join(place, "stdout"))}
    for name in ("stderr", "calls"):
        left[name] = read_or(os.path.join(place, name), b"")
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
