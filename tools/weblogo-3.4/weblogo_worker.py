"""Keeps WebLogo and ghostscript loaded and draws logos for the client beside it.

Started by the client (logo_client): weblogo_worker.py SOCKET IDLE_SECONDS READY_DESCRIPTOR

Only the holder of the lock of a worker's slot, a file beside the worker's socket, may
talk to the worker. So there is never more than one request at a time, and a worker
takes the lock itself before it ends after its idle time.

WebLogo's own command line code runs here for every request, with the options,
the input and the output of that request in place of the process's own. There is
one change: instead of starting a ghostscript for every picture, it uses one that
keeps running and gets one picture after the other on its standard input.

A request consists of the options, separated by null bytes, two null bytes, and
the matrix; it ends when the client stops sending. The answer is the length of the
picture, a newline and the picture. If there is no picture, or WebLogo printed any
message, the answer is empty: the client then runs WebLogo's own command, which
repeats the error with the right text and status.

Tested by tests/tools/test_weblogo.py.
"""
import contextlib
import fcntl
import io
import os
import signal
import socket
import subprocess
import sys
import warnings

REQUEST_SECONDS = 8   # less than the client waits for an answer
PAGE_WIDTH = "-dDEVICEWIDTHPOINTS="
PAGE_HEIGHT = "-dDEVICEHEIGHTPOINTS="
JPEG_END = b"\xff\xd9"   # cannot occur inside the encoded picture


class Stopped(BaseException):
    """A request to end; a KeyboardInterrupt would be handled by WebLogo."""


class KeptGhostscript:
    """Takes the place of `subprocess.Popen` where WebLogo starts ghostscript.

    The arguments are WebLogo's own. The process is kept for the next picture if that
    picture has the same arguments, apart from the page size, which is set in the
    PostScript text instead.
    """
    kept = None
    kept_arguments = None
    returncode = 0   # never read after a failure

    def __init__(self, arguments, **_pipes):
        self.width, self.height = (
            next(argument[len(name):] for argument in arguments
                 if argument.startswith(name))
            for name in (PAGE_WIDTH, PAGE_HEIGHT))
        arguments = [argument for argument in arguments
                     if not argument.startswith((PAGE_WIDTH, PAGE_HEIGHT))]
        if arguments != KeptGhostscript.kept_arguments:
            KeptGhostscript.throw_away()
            KeptGhostscript.kept = subprocess.Popen(
                arguments, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                stderr=subprocess.DEVNULL)
            KeptGhostscript.kept_arguments = arguments

    def communicate(self, postscript):
        """The picture of one page; a process that fails is thrown away."""
        try:
            return self._draw(KeptGhostscript.kept, postscript), b""
        except BaseException:
            KeptGhostscript.throw_away()
            raise

    def _draw(self, process, postscript):
        """Writes the page and reads up to the end of its picture."""
        # WebLogo's text has no showpage: at the end of a file ghostscript adds it.
        process.stdin.write(
            b"<< /PageSize [%s %s] >> setpagedevice save\n%s\nshowpage restore\n"
            % (self.width.encode(), self.height.encode(), postscript))
        process.stdin.flush()
        picture = bytearray()
        while not picture.endswith(JPEG_END):
            piece = os.read(process.stdout.fileno(), 65536)
            if not piece:
                raise OSError("ghostscript has ended")
            picture += piece
        return bytes(picture)

    @classmethod
    def throw_away(cls):
        """Kills the kept process, whatever its state."""
        if cls.kept:
            cls.kept.kill()
            cls.kept.wait()
        cls.kept = cls.kept_arguments = None


def leave_caller():
    """Detaches from the caller's session, folder, files and terminal."""
    os.setsid()
    os.chdir("/")
    os.umask(0o077)
    nothing = os.open(os.devnull, os.O_RDWR)
    for descriptor in range(3):
        os.dup2(nothing, descriptor)
    os.close(nothing)


def close_all_but(ready):
    """Closes every inherited descriptor except the standard ones and `ready`."""
    os.closerange(3, ready)
    os.closerange(ready + 1, os.sysconf("SC_OPEN_MAX"))


def listen(address):
    """A listening socket at `address`; it listens before it appears there.

    It replaces a socket that a killed worker left behind.
    """
    listener = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
    newborn = f"{address}.{os.getpid()}"
    listener.bind(newborn)
    os.chmod(newborn, 0o600)
    listener.listen()
    os.rename(newborn, address)
    return listener


def draw(options, matrix, weblogo_main):
    """Standard output of WebLogo; on any error empty, or an exception is raised."""
    sys.argv = ["weblogo"] + options
    sys.stdin = io.TextIOWrapper(io.BytesIO(matrix), "utf-8", "surrogateescape")
    output = io.TextIOWrapper(io.BytesIO(), "utf-8")
    messages = io.StringIO()
    with contextlib.redirect_stdout(output), contextlib.redirect_stderr(messages):
        weblogo_main()
        output.flush()
    return b"" if messages.getvalue() else output.buffer.getvalue()


def receive_all(connection):
    """Everything until the other side stops sending."""
    pieces = []
    while piece := connection.recv(65536):
        pieces.append(piece)
    return b"".join(pieces)


def answer(connection, weblogo_main):
    """Serves one request within its time; on any error sends no answer."""
    signal.alarm(REQUEST_SECONDS)
    try:
        options, _, matrix = receive_all(connection).partition(b"\0\0")
        picture = draw(options.decode().split("\0"), matrix, weblogo_main)
        if picture:
            connection.sendall(b"%d\n%s" % (len(picture), picture))
    except (Exception, SystemExit):
        pass   # WebLogo exits on wrong input
    finally:
        signal.alarm(0)


def serve(listener, may_end, idle_seconds, weblogo_main):
    """Answers requests until none arrives for `idle_seconds` and `may_end()` is true."""
    listener.settimeout(idle_seconds)
    while True:
        try:
            connection, _ = listener.accept()
        except TimeoutError:
            if may_end():
                return
            continue
        with connection:
            connection.settimeout(None)   # the alarm limits the whole request
            answer(connection, weblogo_main)


def lock_of(address):
    """The lock file of the slot whose socket is at `address`."""
    return os.path.splitext(address)[0] + ".lock"


def remove_own(address, listener_inode):
    """Removes the socket file unless it belongs to another worker by now."""
    with contextlib.suppress(FileNotFoundError):
        if os.stat(address).st_ino == listener_inode:
            os.unlink(address)


def clear_away(address, listener_inode):
    """Removes socket and lock of the slot; false if a caller has the slot by now."""
    try:
        lock = os.open(lock_of(address), os.O_RDWR | os.O_NOFOLLOW)
    except FileNotFoundError:
        remove_own(address, listener_inode)   # somebody removed the lock
        return True
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        remove_own(address, listener_inode)
        with contextlib.suppress(FileNotFoundError):
            if os.path.samestat(os.fstat(lock), os.stat(lock_of(address))):
                os.unlink(lock_of(address))
        return True
    except BlockingIOError:
        return False
    finally:
        os.close(lock)


def stop(_signal, _frame):
    """Ends the process, with its clean-up."""
    raise Stopped


def out_of_time(_signal, _frame):
    """Ends the current request."""
    raise TimeoutError


def main():
    """Loads everything, listens, notifies the starter, serves requests, cleans up."""
    address, idle_seconds, ready = sys.argv[1], float(sys.argv[2]), int(sys.argv[3])
    leave_caller()
    close_all_but(ready)

    from weblogo import _cli, logo_formatter
    logo_formatter.Popen = KeptGhostscript
    warnings.simplefilter("always")   # so that every drawing shows its warnings

    signal.signal(signal.SIGALRM, out_of_time)
    signal.signal(signal.SIGTERM, stop)
    listener = listen(address)
    inode = os.stat(address).st_ino
    try:
        os.write(ready, b"!")
        os.close(ready)
        serve(listener, lambda: clear_away(address, inode), idle_seconds, _cli.main)
    except (Stopped, BrokenPipeError):   # asked to end, or the starter has ended
        if not clear_away(address, inode):
            remove_own(address, inode)
    finally:
        KeptGhostscript.throw_away()


if __name__ == "__main__":
    main()
