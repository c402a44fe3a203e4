"""What the tests of the logos share: matrices, and the built client in a job folder of its own."""
import contextlib
import os
import random
import signal
import socket
import stat
import subprocess
import time
from pathlib import Path

from support import ROOT, ToolCase

HEAD = ("--format jpeg --sequence-type dna --units bits --composition none "
        "--first-index 1 ")
TAIL = ("--size medium --stacks-per-line 80 --show-xaxis YES --show-yaxis YES "
        "--ticmarks 1.0 --errorbars NO --stack-width 20 --resolution 96 "
        "--scale-width yes --color-scheme classic --color green A 'Adenine' "
        "--color blue C 'Cytosine' --color orange G 'Guanine' "
        "--color red T 'Thymine'")
STRANDS = {"forward": HEAD + TAIL, "reverse": HEAD + "--revcomp " + TAIL}
GHOSTSCRIPT_OPTIONS = "-dDisableFAPI=true -dNOCACHE"
PROGRAM = Path(os.environ.get("VARNOLIX_PROGRAM") or ROOT / "build/release/varnolix")
BUILT_CLIENT = PROGRAM.resolve().parent / "weblogo-3.4"   # the folder
NO_PLAIN_WAY = {"VARNOLIX_LOGO_WEBLOGO": "/nowhere/weblogo"}

HEADER = b"PO A C G T \n"
GOOD = HEADER + b"1 10 0 1 3 \n2 0 5 5 0 \n3 0.25 0.25 0.25 0.25 \n"
FATAL_FOR_GHOSTSCRIPT = HEADER + b"1 inf 0 0 0 \n"
BAD = {
    "empty": b"",
    "garbage": b"\x00\xff garbage\n",
    "not numbers": HEADER + b"1 a b c d \n",
    "rows without values": HEADER + b"1 \n2 \n",
    "a short row": HEADER + b"1 1 2 3 4 \n2 1 2 \n",
    "infinite": FATAL_FOR_GHOSTSCRIPT,
    "minus infinite": HEADER + b"1 -inf 1 1 1 \n",   # a picture and a warning
    "no number in one row": HEADER + b"1 1 2 3 4 \n2 nan 0 0 0 \n",
    "all zero": HEADER + b"1 0 0 0 0 \n",
}


def sample_matrices(count):
    """Matrices of counts and of frequencies, from one to thirty positions."""
    generator = random.Random(20)
    for number in range(count):
        lines = [HEADER.decode()]
        for position in range(1, generator.randint(1, 30) + 1):
            counts = [generator.choice([0, 0, 1, 7, 40, 300]) for _ in range(3)]
            counts.insert(generator.randrange(4), generator.randint(1, 500))
            scale = sum(counts) if number % 2 else 1
            values = " ".join(f"{value / scale:g}" for value in counts)
            lines.append(f"{position} {values} \n")
        yield "".join(lines).encode()


def is_jpeg(content):
    """Whether `content` has the first and the last mark of a JPEG picture."""
    return content.startswith(b"\xff\xd8\xff") and content.endswith(b"\xff\xd9")


def is_running(pid):
    """Whether the process is there and has not ended."""
    try:
        return Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[0] != "Z"
    except FileNotFoundError:
        return False


def wait_until(condition, seconds=15):
    """Whether `condition` comes true in time."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if condition():
            return True
        time.sleep(0.05)
    return bool(condition())


class ClientCase(ToolCase):
    """The built client as a job folder has it, with workers of the test's own and no store."""
    needs = {"/usr/bin/weblogo": "python3-weblogo", "gs": "ghostscript"}
    idle_seconds = 20

    def setUp(self):
        super().setUp()
        self.runtime = self.holder / "runtime"
        self.runtime.mkdir(mode=0o700)
        self.cache = self.holder / "cache"
        self.cache.mkdir()
        if not os.access(BUILT_CLIENT / "weblogo", os.X_OK):
            self.fail(f"{BUILT_CLIENT}/weblogo is not built")
        (self.folder / "weblogo-3.4").symlink_to(BUILT_CLIENT)
        self.environment = {"PATH": os.environ["PATH"],
                            "XDG_RUNTIME_DIR": str(self.runtime),
                            "XDG_CACHE_HOME": str(self.cache),
                            "VARNOLIX_LOGO_STORE": "no",
                            "VARNOLIX_LOGO_IDLE": str(self.idle_seconds)}
        self.addCleanup(self.end_workers)

    def end_workers(self):
        """Ends every worker that listens, or has listened, in this test's folder."""
        for pid in self.workers():
            with contextlib.suppress(ProcessLookupError):
                os.kill(pid, signal.SIGKILL)

    def workers(self):
        """The process numbers of this test's workers."""
        found = []
        for entry in Path("/proc").iterdir():
            if entry.name.isdigit():
                with contextlib.suppress(OSError):
                    command = (entry / "cmdline").read_bytes()
                    if (b"weblogo_worker.py" in command
                            and bytes(self.holder) in command):
                        found.append(int(entry.name))
        return found

    def start(self, strand="forward", environment=None, **streams):
        """Starts the client through the shell, as the program does."""
        return subprocess.Popen(
            f"weblogo-3.4/weblogo {STRANDS[strand]}", shell=True, cwd=self.folder,
            env={**self.environment, **(environment or {})}, stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, **streams)

    def begin(self, matrix, strand="forward", environment=None):
        """Starts a call that has its whole matrix, in a process group of its own."""
        process = self.start(strand, environment, start_new_session=True)
        process.stdin.write(matrix)
        process.stdin.close()
        process.stdin = None
        return process

    def finish(self, process, matrix):
        """Exit status, picture and messages of a started client."""
        picture, messages = process.communicate(matrix, timeout=60)
        return process.returncode, picture, messages

    def draw(self, matrix, strand="forward", environment=None):
        """Exit status, picture and messages of one call of the client."""
        return self.finish(self.start(strand, environment), matrix)

    def draw_plainly(self, matrix, strand="forward"):
        """The same by WebLogo's own command."""
        run = subprocess.run(
            f"/usr/bin/weblogo {STRANDS[strand]}", shell=True, input=matrix,
            env={"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                 "GS_OPTIONS": GHOSTSCRIPT_OPTIONS},
            capture_output=True, timeout=60)
        return run.returncode, run.stdout, run.stderr

    def left(self):
        """What lies in the runtime folder."""
        return sorted(self.runtime.iterdir())

    def sockets(self):
        """The sockets there."""
        return [path for path in self.left() if stat.S_ISSOCK(path.lstat().st_mode)]

    def worker(self):
        """The process number of the one that listens at the socket."""
        address, = self.sockets()
        with socket.socket(socket.AF_UNIX) as connection:
            connection.connect(str(address))
            credentials = connection.getsockopt(socket.SOL_SOCKET,
                                                socket.SO_PEERCRED, 12)
        return int.from_bytes(credentials[:4], "little")

    def ghostscripts(self, worker):
        """The process numbers of a worker's ghostscripts."""
        return Path(f"/proc/{worker}/task/{worker}/children").read_text().split()
