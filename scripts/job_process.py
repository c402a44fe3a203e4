"""How the job folder's launcher starts the program: it must not outlive the launcher."""
import ctypes
import signal

PR_SET_PDEATHSIG = 1
C_LIBRARY = ctypes.CDLL(None)


def before_exec():
    """Runs in the new process: if the launcher is killed, the program ends too; it might ask for ever otherwise."""
    C_LIBRARY.prctl(PR_SET_PDEATHSIG, signal.SIGTERM)
