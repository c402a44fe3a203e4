"""Tests of the logo client and its workers with the real WebLogo and ghostscript.

VARNOLIX_LOGO_SAMPLE=N widens the sample of pictures that are compared.
"""
import os
import re
import shutil
import signal
import stat
import subprocess
import time
from pathlib import Path

from logo_case import (BAD, BUILT_CLIENT, FATAL_FOR_GHOSTSCRIPT, GOOD, HEADER, NO_PLAIN_WAY, STRANDS, ClientCase,
                       is_jpeg, is_running, sample_matrices, wait_until)
from support import TOOLS


def without_memory_figures(messages):
    """What ghostscript says, less the sizes of its memory, which differ between two runs on a busy machine."""
    return re.sub(rb"\.\.\.[ \d]+done\.", b"... done.", messages)


class PictureTest(ClientCase):
    def test_worker_draws_what_weblogo_draws(self):
        # Without its plain way the client can only give a worker's pictures.
        self.environment.update(NO_PLAIN_WAY)
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
        self.assertEqual(self.left(), [])

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
        self.environment.update(NO_PLAIN_WAY)
        status, picture, messages = self.draw(
            GOOD, environment={"VARNOLIX_LOGO_WORKER": "no"})
        self.assertEqual((status, picture), (1, b""))
        self.assertIn(b"python3-weblogo", messages)


class WorkerTest(ClientCase):
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
        self.assertEqual(len(self.sockets()), 1)
        for path in self.left():
            self.assertEqual(stat.S_IMODE(path.stat().st_mode), 0o600)

    def test_makes_a_private_folder_without_a_runtime_folder(self):
        self.runtime.chmod(0o755)   # no use: others may enter
        _, picture, _ = self.draw(GOOD, environment={"TMPDIR": str(self.holder)})
        self.assertTrue(is_jpeg(picture))
        self.assertEqual(self.left(), [])
        own = self.holder / f"varnolix-{os.getuid()}"
        self.assertEqual(stat.S_IMODE(own.stat().st_mode), 0o700)
        self.assertEqual(sorted(path.suffix for path in own.iterdir()), [".lock", ".socket"])

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
        process = self.begin(GOOD)
        time.sleep(1)   # by now it waits for the answer
        self.assertIsNone(process.poll())
        os.kill(worker, signal.SIGKILL)
        self.assertEqual(self.finish(process, None), expected)

    def test_deaf_worker_is_given_up(self):
        self.environment["VARNOLIX_LOGO_ANSWER"] = "1"
        expected = self.draw(GOOD)
        deaf = self.worker()
        os.kill(deaf, signal.SIGSTOP)
        start = time.monotonic()
        self.assertEqual(self.draw(GOOD), expected)
        self.assertLess(time.monotonic() - start, 10)
        self.assertTrue(wait_until(lambda: not is_running(deaf)))
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

    def test_asked_to_end_cleans_up(self):
        self.draw(GOOD)
        worker = self.worker()
        os.kill(worker, signal.SIGTERM)
        self.assertTrue(wait_until(lambda: not is_running(worker)))
        self.assertEqual(self.left(), [])


class ShortIdleTest(ClientCase):
    idle_seconds = 2

    def test_idle_worker_ends_and_cleans_up(self):
        self.draw(GOOD)
        worker = self.worker()
        process, = self.ghostscripts(worker)
        self.assertTrue(wait_until(lambda: not is_running(worker)))
        self.assertTrue(wait_until(lambda: not is_running(process)))
        self.assertEqual(self.left(), [])

    def test_many_callers_share_as_many_workers_as_cores(self):
        self.environment.update(NO_PLAIN_WAY)
        expected = {strand: self.draw_plainly(GOOD, strand) for strand in STRANDS}
        for cores, callers in (("2", 6), ("2", 200), ("1", 5)):
            with self.subTest(cores=cores, callers=callers):
                strands = [("forward", "reverse")[number % 2] for number in range(callers)]
                processes = [self.begin(GOOD, strand, {"VARNOLIX_LOGO_WORKERS": cores}) for strand in strands]
                most = 0
                while any(process.poll() is None for process in processes):
                    most = max(most, len(self.workers()))
                    time.sleep(0.05)
                self.assertEqual([self.finish(process, None) for process in processes],
                                 [expected[strand] for strand in strands])
                self.assertLessEqual(most, int(cores))
                self.assertTrue(wait_until(lambda: self.left() == []))
                self.assertTrue(wait_until(lambda: self.workers() == []))

    def test_two_at_once_have_a_worker_each(self):
        self.environment.update(NO_PLAIN_WAY, VARNOLIX_LOGO_WORKERS="2")
        for _ in range(2):
            processes = [self.begin(GOOD), self.begin(GOOD)]
            for process in processes:
                self.assertEqual(self.finish(process, None)[0], 0)
        self.assertEqual(len(self.workers()), 2)

    def test_call_at_the_end_of_the_idle_time_is_answered(self):
        self.environment.update(NO_PLAIN_WAY, VARNOLIX_LOGO_IDLE="0.05")
        expected = self.draw(GOOD)
        for number in range(15):
            time.sleep(0.04 + 0.002 * number)   # around the moment when the worker goes
            self.assertEqual(self.draw(GOOD), expected)

    def test_killed_callers_leave_nothing(self):
        self.draw(GOOD)
        for way in (signal.SIGKILL, signal.SIGINT, signal.SIGTERM):
            for delay in (0, 0.005, 0.02):
                with self.subTest(way=way, delay=delay):
                    process = self.begin(GOOD)
                    time.sleep(delay)
                    os.killpg(process.pid, way)
                    self.finish(process, None)
        self.assertTrue(is_jpeg(self.draw(GOOD, environment=NO_PLAIN_WAY)[1]))
        self.assertTrue(wait_until(lambda: self.workers() == []))
        self.assertEqual(self.left(), [])

    def test_caller_killed_while_its_worker_starts_leaves_nothing(self):
        for delay in (0.02, 0.1, 0.3):
            with self.subTest(delay=delay):
                process = self.begin(GOOD)
                time.sleep(delay)
                os.killpg(process.pid, signal.SIGKILL)
                self.finish(process, None)
                self.assertTrue(is_jpeg(self.draw(GOOD)[1]))
                self.assertTrue(wait_until(lambda: self.workers() == []))
                self.assertTrue(wait_until(lambda: self.left() == []))


class LauncherTest(ClientCase):
    """tools/weblogo-3.4/weblogo, which stands in where a job folder was made before the program was built."""

    def call(self, launcher):
        """Exit status, picture and messages."""
        run = subprocess.run(f"'{launcher}' {STRANDS['reverse']}", shell=True, input=GOOD,
                             env={**self.environment, **NO_PLAIN_WAY}, capture_output=True, timeout=60)
        return run.returncode, run.stdout, run.stderr

    def test_draws_plainly_where_nothing_is_built(self):
        shutil.copytree(TOOLS / "weblogo-3.4", self.holder / "tools/weblogo-3.4")
        self.assertEqual(self.call(self.holder / "tools/weblogo-3.4/weblogo"), self.draw_plainly(GOOD, "reverse"))
        self.assertEqual(self.left(), [])

    def test_hands_on_to_the_client(self):
        shutil.copytree(TOOLS / "weblogo-3.4", self.holder / "tools/weblogo-3.4")
        shutil.copytree(BUILT_CLIENT, self.holder / "build/release/weblogo-3.4")
        (self.folder / "linked").symlink_to(self.holder / "tools/weblogo-3.4")
        run = subprocess.run(f"linked/weblogo {STRANDS['reverse']}", shell=True, input=GOOD, cwd=self.folder,
                             env={**self.environment, **NO_PLAIN_WAY}, capture_output=True, timeout=60)
        self.assertEqual((run.returncode, run.stdout, run.stderr), self.draw_plainly(GOOD, "reverse"))
        self.assertEqual(len(self.sockets()), 1)
