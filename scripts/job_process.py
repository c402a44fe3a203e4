"""How the job folder's launcher starts the program: it must not outlive the launcher."""
import ctypes
import signal

PR_SET_PDEATHSIG = 1
C_LIBRARY = ctypes.CDLL(None)


def before_exec():
    """In the new process: a launcher that is killed takes the program along, which would ask for ever otherwise."""
    C_LIBRARY.prctl(PR_SET_PDEATHSIG, signal.SIGTERM)
