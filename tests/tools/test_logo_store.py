"""Tests of the store of finished logos, with the real WebLogo and ghostscript."""
import os
import random
import shutil
import signal
import stat
import subprocess
import time

from logo_case import BAD, GOOD, NO_PLAIN_WAY, STRANDS, ClientCase, is_jpeg, sample_matrices, wait_until

# Nothing draws: what comes then comes out of the store.
NO_DRAWING = {**NO_PLAIN_WAY, "VARNOLIX_LOGO_WORKER": "no"}


class StoreCase(ClientCase):
    """The client with a store of the test's own."""

    def setUp(self):
        super().setUp()
        del self.environment["VARNOLIX_LOGO_STORE"]
        self.store = self.cache / "varnolix/logos"

    def entries(self):
        """The files of the store."""
        return sorted(path for path in self.store.rglob("*") if path.is_file())

    def stored(self, matrix=GOOD, strand="forward"):
        """The picture of the store; None where nothing is kept."""
        status, picture, _ = self.draw(matrix, strand, NO_DRAWING)
        return picture if status == 0 else None


class StoreTest(StoreCase):
    def test_picture_of_the_store_is_weblogos(self):
        for number, matrix in enumerate([GOOD, *sample_matrices(3)]):
            for strand in STRANDS:
                with self.subTest(number=number, strand=strand):
                    self.assertIsNone(self.stored(matrix, strand))
                    expected = self.draw_plainly(matrix, strand)
                    self.assertTrue(is_jpeg(expected[1]))
                    self.assertEqual(self.draw(matrix, strand), expected)
                    self.assertEqual(self.draw(matrix, strand, NO_DRAWING), expected)
        self.assertEqual(len(self.entries()), 8)

    def test_is_for_the_user_alone(self):
        self.draw(GOOD)
        for path in (self.cache / "varnolix", self.store, *self.store.rglob("*")):
            self.assertEqual(stat.S_IMODE(path.stat().st_mode) & 0o077, 0, path)

    def test_lies_in_the_home_folder_without_a_cache_folder(self):
        for cache in ("", "relative"):
            with self.subTest(cache):
                home = self.holder / f"home{cache}"
                home.mkdir()
                self.draw(GOOD, environment={"XDG_CACHE_HOME": cache, "HOME": str(home)})
                self.assertEqual(len([path for path in (home / ".cache/varnolix/logos").rglob("*") if path.is_file()]), 1)

    def test_without_any_folder_logos_are_drawn(self):
        status, picture, _ = self.draw(GOOD, environment={"XDG_CACHE_HOME": ""})   # and no HOME
        self.assertEqual((status, picture), self.draw_plainly(GOOD)[:2])

    def test_turned_off_it_is_neither_filled_nor_asked(self):
        off = {"VARNOLIX_LOGO_STORE": "no"}
        self.draw(GOOD, environment=off)
        self.assertEqual(list(self.cache.iterdir()), [])
        self.draw(GOOD)
        self.assertIsNotNone(self.stored())
        self.assertEqual(self.draw(GOOD, environment={**NO_DRAWING, **off})[0], 1)

    def test_damaged_entry_is_drawn_anew(self):
        expected = self.draw(GOOD)
        entry, = self.entries()
        whole = entry.read_bytes()
        flipped = bytearray(whole)
        flipped[-200] ^= 0x10
        for damaged in (whole[:len(whole) // 2], bytes(flipped), b"", b"\xff" * len(whole)):
            entry.write_bytes(damaged)
            self.assertIsNone(self.stored())
            self.assertEqual(self.draw(GOOD), expected)
            self.assertEqual(self.entries(), [entry])
            self.assertEqual(entry.read_bytes(), whole)
            self.assertEqual(self.stored(), expected[1])

    def test_entry_of_another_matrix_is_not_taken(self):
        other, = sample_matrices(1)
        self.draw(GOOD)
        entry, = self.entries()
        self.draw(other)
        theirs, = set(self.entries()) - {entry}
        shutil.copy(theirs, entry)
        self.assertIsNone(self.stored())
        self.assertEqual(self.draw(GOOD), self.draw_plainly(GOOD))

    def test_what_weblogo_refuses_is_not_kept(self):
        for name in ("infinite", "minus infinite"):   # no picture; a picture with a warning
            status, _, messages = self.draw(BAD[name])
            self.assertNotEqual((status, messages), (0, b""))
            self.assertEqual(self.entries(), [])

    def test_folder_that_others_may_enter_is_not_used(self):
        self.store.mkdir(parents=True)
        self.store.chmod(0o755)
        self.assertTrue(is_jpeg(self.draw(GOOD)[1]))
        self.assertEqual(self.entries(), [])

    def test_link_to_a_folder_is_not_used(self):
        elsewhere = self.holder / "elsewhere"
        elsewhere.mkdir(mode=0o700)
        self.store.parent.mkdir()
        self.store.symlink_to(elsewhere)
        self.assertTrue(is_jpeg(self.draw(GOOD)[1]))
        self.assertEqual(list(elsewhere.iterdir()), [])

    def test_bound_is_kept(self):
        generator = random.Random(5)
        for number in range(30):
            matrix = b"PO A C G T \n" + b"".join(
                b"%d %d %d 3 4 \n" % (row, generator.randint(0, 99), number) for row in range(1, 9))
            self.draw(matrix, environment={"VARNOLIX_LOGO_STORE_MB": "2"})
        used = sum(path.stat().st_blocks * 512 for path in self.entries())
        self.assertLessEqual(used, 2 * 1024 * 1024)
        self.assertGreater(used, 100 * 1024)
        self.draw(GOOD, environment={"VARNOLIX_LOGO_STORE_MB": "0"})
        self.assertIsNone(self.stored())


class UnwritableStoreTest(StoreCase):
    """As another user or on another file system, which takes root."""

    def setUp(self):
        super().setUp()
        if os.getuid() != 0:
            self.skipTest("needs root")

    def test_read_only_folder(self):
        self.draw(GOOD)
        self.end_workers()
        nobody = 65534
        self.holder.chmod(0o711)
        for path in (self.cache, self.runtime, *self.cache.rglob("*"), self.folder):
            os.chown(path, nobody, nobody)
        expected = self.draw_plainly(GOOD)
        other, = sample_matrices(1)
        for path in (path for path in (self.store, *self.store.rglob("*")) if path.is_dir()):
            path.chmod(0o500)
        before = self.entries()
        client = self.holder / "client"
        shutil.copytree((self.folder / "weblogo-3.4").resolve(), client)
        run = []
        for matrix in (other, GOOD):
            run.append(subprocess.run(f"'{client}/weblogo' {STRANDS['forward']}", shell=True, input=matrix,
                                      env=self.environment, cwd="/", capture_output=True, timeout=60, user=nobody,
                                      group=nobody, extra_groups=[]))
        self.assertEqual((run[0].returncode, run[0].stdout, run[0].stderr), self.draw_plainly(other))
        self.assertEqual((run[1].returncode, run[1].stdout, run[1].stderr), expected)
        self.assertEqual(self.entries(), before)

    def test_folder_of_another_user(self):
        self.store.mkdir(parents=True, mode=0o700)
        self.store.chmod(0o700)
        os.chown(self.store, 65534, 65534)
        self.assertTrue(is_jpeg(self.draw(GOOD)[1]))
        self.assertEqual(self.entries(), [])

    def test_home_of_another_user(self):
        home = self.holder / "home"
        home.mkdir()
        os.chown(home, 65534, 65534)
        self.assertTrue(is_jpeg(self.draw(GOOD, environment={"XDG_CACHE_HOME": "", "HOME": str(home)})[1]))
        self.assertEqual(list(home.iterdir()), [])

    def test_full_folder(self):
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k,mode=700", "none", self.cache],
                                 capture_output=True, check=False)
        if mounted.returncode != 0:
            self.skipTest("cannot mount a small file system")
        self.addCleanup(subprocess.run, ["umount", "-l", self.cache], check=True)
        self.draw(GOOD)
        self.assertIsNotNone(self.stored())
        with open(self.cache / "rest", "wb", buffering=0) as rest:
            try:
                while True:
                    rest.write(b"x" * 1024)
            except OSError:
                pass
        before = self.entries()
        other, = sample_matrices(1)
        self.assertEqual(self.draw(other), self.draw_plainly(other))
        self.assertEqual(self.entries(), before)
        self.assertIsNone(self.stored(other))
        self.assertIsNotNone(self.stored())   # what was kept before still serves


class TogetherTest(StoreCase):
    idle_seconds = 2

    def test_two_jobs_at_once(self):
        matrices = list(sample_matrices(6))
        expected = [self.draw_plainly(matrix, strand) for matrix in matrices for strand in STRANDS]
        for _ in range(2):   # drawn, then out of the store
            jobs = [[self.begin(matrix, strand, NO_PLAIN_WAY) for matrix in matrices for strand in STRANDS]
                    for _ in range(2)]
            for job in jobs:
                self.assertEqual([self.finish(process, None) for process in job], expected)
        self.assertEqual(len(self.entries()), 12)
        self.assertTrue(wait_until(lambda: self.left() == [] and self.workers() == []))

    def test_killed_callers_leave_no_half_entry(self):
        expected = self.draw(GOOD)
        entry, = self.entries()
        for way in (signal.SIGKILL, signal.SIGINT):
            for step in range(20):
                entry.unlink(missing_ok=True)
                process = self.begin(GOOD)
                time.sleep(0.002 * step)
                os.killpg(process.pid, way)
                self.finish(process, None)
                if entry.exists():
                    self.assertEqual(self.stored(), expected[1])
        self.assertEqual(self.draw(GOOD, environment=NO_PLAIN_WAY), expected)
        self.assertEqual(self.stored(), expected[1])
        self.assertTrue(wait_until(lambda: self.left() == [] and self.workers() == []))
