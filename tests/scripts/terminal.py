"""A person at a terminal: a program started on a pseudo-terminal, typed to line by line."""
import os
import pty
import select
import signal
import time

END_OF_INPUT = b"\x04"
INTERRUPT = b"\x03"
LIMIT = 60                              # seconds for one session


class Terminal:
    """One session. Everything that appears on the terminal is in `seen`, with the line ends of text files."""

    def __init__(self, *command, env=None, cwd="/"):
        self.seen = ""
        self.process, self.end = pty.fork()
        if self.process == 0:
            os.chdir(cwd)
            os.execve(command[0], command, env or os.environ)
        self.until = time.monotonic() + LIMIT
        self.status = None

    def read_some(self):
        """Takes in what appears; false when the program has gone."""
        if not select.select([self.end], [], [], max(0.0, self.until - time.monotonic()))[0]:
            self.kill()
            raise TimeoutError(self.seen)
        try:
            text = os.read(self.end, 1 << 16)
        except OSError:
            return False
        self.seen += text.decode(errors="replace").replace("\r\n", "\n")
        return bool(text)

    def wait_for(self, text, times=1):
        """Reads until the text has appeared so many times."""
        while self.seen.count(text) < times:
            if not self.read_some():
                raise AssertionError(f"it ended without {text!r}: {self.seen}")

    def type(self, line):
        """Types a line."""
        os.write(self.end, line.encode() + b"\n")

    def press(self, key):
        """Presses a key alone."""
        os.write(self.end, key)

    def kill(self):
        """Ends the program by force."""
        os.kill(self.process, signal.SIGKILL)

    def finish(self):
        """Reads to the end; answers the exit status, below 0 for a signal."""
        while self.read_some():
            pass
        os.close(self.end)
        _, status = os.waitpid(self.process, 0)
        self.status = os.waitstatus_to_exitcode(status)
        return self.status
