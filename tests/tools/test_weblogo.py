"""Tests of tools/weblogo-3.4 with the real WebLogo and ghostscript.

VARNOLIX_LOGO_SAMPLE=N widens the sample of pictures that are compared.
"""
import contextlib
import os
import random
import re
import shutil
import signal
import socket
import stat
import subprocess
import time
from pathlib import Path

from support import TOOLS, ToolCase

HEAD = ("--format jpeg --sequence-type dna --units bits --composition none "
        "--first-index 1 ")
TAIL = ("--size medium --stacks-per-line 80 --show-xaxis YES --show-yaxis YES "
        "--ticmarks 1.0 --errorbars NO --stack-width 20 --resolution 96 "
        "--scale-width yes --color-scheme classic --color green A 'Adenine' "
        "--color blue C 'Cytosine' --color orange G 'Guanine' "
        "--color red T 'Thymine'")
STRANDS = {"forward": HEAD + TAIL, "reverse": HEAD + "--revcomp " + TAIL}
GHOSTSCRIPT_OPTIONS = "-dDisableFAPI=true -dNOCACHE"

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


def without_memory_figures(messages):
    """What ghostscript says, less the sizes of its memory, which differ between two runs on a busy machine."""
    return re.sub(rb"\.\.\.[ \d]+done\.", b"... done.", messages)


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


class LauncherCase(ToolCase):
    """The launcher as a job folder has it, with workers of the test's own."""
    needs = {"/usr/bin/weblogo": "python3-weblogo", "gs": "ghostscript"}
    idle_seconds = 20

    def setUp(self):
        super().setUp()
        self.runtime = self.holder / "runtime"
        self.runtime.mkdir(mode=0o700)
        (self.folder / "weblogo-3.4").symlink_to(TOOLS / "weblogo-3.4")
        self.environment = {"PATH": os.environ["PATH"],
                            "XDG_RUNTIME_DIR": str(self.runtime),
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

    def own_copy(self, **constants):
        """Puts a copy of the launcher in the job folder, with constants changed."""
        place = self.folder / "weblogo-3.4"
        place.unlink()
        shutil.copytree(TOOLS / "weblogo-3.4", place)
        launcher = place / "weblogo"
        lines = launcher.read_text().splitlines(keepends=True)
        for name, value in constants.items():
            index, = [i for i, line in enumerate(lines)
                      if line.startswith(f"{name} = ")]
            lines[index] = f"{name} = {value!r}\n"
        launcher.write_text("".join(lines))

    def start(self, strand="forward", environment=None, **streams):
        """Starts the launcher through the shell, as the program does."""
        return subprocess.Popen(
            f"weblogo-3.4/weblogo {STRANDS[strand]}", shell=True, cwd=self.folder,
            env={**self.environment, **(environment or {})}, stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE, **streams)

    def finish(self, process, matrix):
        """Exit status, picture and messages of a started launcher."""
        picture, messages = process.communicate(matrix, timeout=60)
        return process.returncode, picture, messages

    def draw(self, matrix, strand="forward", environment=None):
        """Exit status, picture and messages of one call of the launcher."""
        return self.finish(self.start(strand, environment), matrix)

    def draw_plainly(self, matrix, strand="forward"):
        """The same by WebLogo's own command."""
        run = subprocess.run(
            f"/usr/bin/weblogo {STRANDS[strand]}", shell=True, input=matrix,
            env={"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                 "GS_OPTIONS": GHOSTSCRIPT_OPTIONS},
            capture_output=True, timeout=60)
        return run.returncode, run.stdout, run.stderr

    def sockets(self):
        """What lies in the runtime folder."""
        return list(self.runtime.iterdir())

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


class PictureTest(LauncherCase):
    def test_worker_draws_what_weblogo_draws(self):
        # Without its plain way the launcher can only give a worker's pictures.
        self.own_copy(WEBLOGO="/nowhere/weblogo")
        count = int(os.environ.get("VARNOLIX_LOGO_SAMPLE", "4"))
        for number, matrix in enumerate([GOOD, *sample_matrices(count)]):
            for strand in STRANDS:
                with self.subTest(number=number, strand=strand):
                    expected = self.draw_plainly(matrix, strand)
                    self.assertTrue(is_jpeg(expected[1]))
                    self.assertEqual(self.draw(matrix, strand), expected)

    def test_strands_differ(self):
        self.assertNotEqual(self.draw(GOOD)[1], self.draw(GOOD, "reverse")[1])

    def test_plain_way_draws_what_weblogo_draws(self):
        status, picture, messages = self.draw(
            GOOD, environment={"VARNOLIX_LOGO_WORKER": "no"})
        self.assertEqual((status, picture, messages), self.draw_plainly(GOOD))
        self.assertEqual(self.sockets(), [])

    def test_bad_matrices_end_as_with_weblogo(self):
        for name, matrix in BAD.items():
            with self.subTest(name):
                expected = self.draw_plainly(matrix, "reverse")
                self.assertNotEqual((expected[0], expected[2]), (0, b""))
                drawn = self.draw(matrix, "reverse")
                self.assertEqual(drawn[:2], expected[:2])
                self.assertEqual(without_memory_figures(drawn[2]), without_memory_figures(expected[2]))

    def test_header_alone_is_an_error_without_picture(self):
        # WebLogo would draw the letters of the header.
        self.assertTrue(is_jpeg(self.draw_plainly(HEADER)[1]))
        for matrix in (HEADER, b"PO", HEADER + b"\n \n"):
            for worker in ("yes", "no"):
                with self.subTest(matrix=matrix, worker=worker):
                    self.assertEqual(
                        self.draw(matrix, environment={"VARNOLIX_LOGO_WORKER": worker}),
                        (2, b"", b"Error: the matrix has a header and no rows\n"))

    def test_other_calls_are_weblogos_own(self):
        run = subprocess.run([self.folder / "weblogo-3.4/weblogo", "--version"],
                             capture_output=True, timeout=60)
        plain = subprocess.run(["/usr/bin/weblogo", "--version"],
                               capture_output=True, timeout=60)
        self.assertEqual((run.returncode, run.stdout), (0, plain.stdout))

    def test_missing_weblogo_is_an_error_without_picture(self):
        self.own_copy(WEBLOGO="/nowhere/weblogo")
        status, picture, messages = self.draw(
            GOOD, environment={"VARNOLIX_LOGO_WORKER": "no"})
        self.assertEqual((status, picture), (1, b""))
        self.assertIn(b"python3-weblogo", messages)


class WorkerTest(LauncherCase):
    def test_leaves_the_caller_and_its_descriptors(self):
        reading, writing = os.pipe()
        self.addCleanup(os.close, reading)
        self.finish(self.start(pass_fds=[writing]), GOOD)
        os.close(writing)
        self.assertEqual(os.read(reading, 1), b"", "the worker holds the pipe open")
        worker = self.worker()
        self.assertEqual(os.getsid(worker), worker)
        self.assertEqual(os.readlink(f"/proc/{worker}/cwd"), "/")
        for descriptor in range(3):
            self.assertEqual(os.readlink(f"/proc/{worker}/fd/{descriptor}"), "/dev/null")

    def test_socket_is_for_the_user_alone(self):
        self.draw(GOOD)
        address, = self.sockets()
        self.assertTrue(stat.S_ISSOCK(address.stat().st_mode))
        self.assertEqual(stat.S_IMODE(address.stat().st_mode), 0o600)

    def test_makes_a_private_folder_without_a_runtime_folder(self):
        self.runtime.chmod(0o755)   # no use: others may enter
        _, picture, _ = self.draw(GOOD, environment={"TMPDIR": str(self.holder)})
        self.assertTrue(is_jpeg(picture))
        self.assertEqual(self.sockets(), [])
        own = self.holder / f"varnolix-{os.getuid()}"
        self.assertEqual(stat.S_IMODE(own.stat().st_mode), 0o700)
        self.assertEqual(len(list(own.iterdir())), 1)

    def test_no_worker_in_a_folder_that_others_may_enter(self):
        self.runtime.chmod(0o755)
        own = self.holder / f"varnolix-{os.getuid()}"
        own.mkdir()
        own.chmod(0o755)
        _, picture, _ = self.draw(GOOD, environment={"TMPDIR": str(self.holder)})
        self.assertTrue(is_jpeg(picture))
        self.assertEqual(list(own.iterdir()) + self.workers(), [])

    def test_no_worker_where_the_address_is_too_long(self):
        deep = self.holder / ("x" * 100)
        deep.mkdir(mode=0o700)
        _, picture, _ = self.draw(GOOD, environment={"XDG_RUNTIME_DIR": str(deep)})
        self.assertTrue(is_jpeg(picture))
        self.assertEqual(list(deep.iterdir()) + self.workers(), [])

    def test_ghostscript_is_kept_and_thrown_away_after_an_error(self):
        expected = self.draw(GOOD)
        first = self.ghostscripts(self.worker())
        self.assertEqual(self.draw(GOOD), expected)
        self.assertEqual(self.ghostscripts(self.worker()), first)
        self.assertEqual(self.draw(FATAL_FOR_GHOSTSCRIPT)[0], 1)
        self.assertEqual(self.draw(GOOD), expected)
        self.assertNotEqual(self.ghostscripts(self.worker()), first)

    def test_survives_the_loss_of_its_ghostscript(self):
        expected = self.draw(GOOD)
        worker = self.worker()
        process, = self.ghostscripts(worker)
        os.kill(int(process), signal.SIGKILL)
        self.assertEqual(self.draw(GOOD), expected)   # the plain way
        self.assertEqual(self.draw(GOOD), expected)
        self.assertEqual(self.worker(), worker)

    def test_killed_over_a_request_is_made_good_plainly(self):
        expected = self.draw(GOOD)
        worker = self.worker()
        os.kill(worker, signal.SIGSTOP)
        process = self.start()
        process.stdin.write(GOOD)
        process.stdin.close()
        process.stdin = None
        time.sleep(1)   # by now it waits for the answer
        self.assertIsNone(process.poll())
        os.kill(worker, signal.SIGKILL)
        self.assertEqual(self.finish(process, None), expected)

    def test_deaf_worker_is_given_up(self):
        self.own_copy(ANSWER_SECONDS=1)
        expected = self.draw(GOOD)
        deaf = self.worker()
        os.kill(deaf, signal.SIGSTOP)
        start = time.monotonic()
        self.assertEqual(self.draw(GOOD), expected)
        self.assertLess(time.monotonic() - start, 10)
        self.assertEqual(self.sockets(), [])
        self.assertEqual(self.draw(GOOD), expected)   # by a new worker
        self.assertNotEqual(self.worker(), deaf)

    def test_left_over_socket_is_replaced(self):
        self.draw(GOOD)
        dead = self.worker()
        os.kill(dead, signal.SIGKILL)
        self.assertTrue(wait_until(lambda: not is_running(dead)))
        self.assertEqual(len(self.sockets()), 1)
        self.assertEqual(self.draw(GOOD)[0], 0)
        self.assertNotEqual(self.worker(), dead)

    def test_interrupted_call_leaves_nothing(self):
        """No picture, no traceback; a worker that it was starting goes with it or ends by itself."""
        for is_starting_worker in (False, True):
            for number in (signal.SIGINT, signal.SIGTERM):
                with self.subTest(f"{is_starting_worker} {number}"):
                    process = self.start(
                        start_new_session=True, environment={"VARNOLIX_LOGO_IDLE": "0.5"},
                        preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))
                    process.stdin.write(GOOD)
                    process.stdin.flush()
                    if is_starting_worker:
                        process.stdin.close()
                        self.assertTrue(wait_until(self.workers))
                    else:
                        time.sleep(0.5)     # it waits for the rest of the matrix
                    os.killpg(process.pid, number)
                    picture, messages = process.stdout.read(), process.stderr.read()
                    process.wait(20)
                    for stream in (process.stdin, process.stdout, process.stderr):
                        with contextlib.suppress(OSError):
                            stream.close()
                    self.assertEqual((process.returncode, picture), (-number, b""))
                    if not is_starting_worker:      # that may say that it was interrupted
                        self.assertEqual(messages, b"")
                    self.assertTrue(wait_until(lambda: not self.workers(), 10))
                    self.assertEqual(list(self.runtime.iterdir()), [])

    def test_asked_to_end_cleans_up(self):
        self.draw(GOOD)
        worker = self.worker()
        os.kill(worker, signal.SIGTERM)
        self.assertTrue(wait_until(lambda: not is_running(worker)))
        self.assertEqual(self.sockets(), [])


class ShortIdleTest(LauncherCase):
    idle_seconds = 2

    def test_idle_worker_ends_and_cleans_up(self):
        self.draw(GOOD)
        worker = self.worker()
        process, = self.ghostscripts(worker)
        self.assertTrue(wait_until(lambda: not is_running(worker)))
        self.assertTrue(wait_until(lambda: not is_running(process)))
        self.assertEqual(self.sockets(), [])

    def test_starters_at_once_all_get_their_picture(self):
        self.own_copy(WEBLOGO="/nowhere/weblogo")
        strands = ["forward", "reverse"] * 3
        processes = [self.start(strand) for strand in strands]
        drawn = [self.finish(process, GOOD) for process in processes]
        self.assertEqual(drawn, [self.draw_plainly(GOOD, strand) for strand in strands])
        self.assertTrue(wait_until(lambda: not any(map(is_running, self.workers()))))
        self.assertEqual(self.sockets(), [])
