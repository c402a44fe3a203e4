"""Starts VARNOLIX in its job folder: the dialogue on the terminal, or answers from a file.

    run            asks on the terminal; what you type is saved in the job folder as answers-DATE.txt
    run ANSWERS    takes the answers from a file, one per line, in the order of the questions

Answers may also be piped in; they are read completely first. Windows line ends are accepted. A file with fewer
lines than the dialogue has questions is refused, and a run that still asks after the last line is stopped.

On a terminal, run first shows the answers for this folder, and the files in motifs/ with the number of motifs
that will be read from each. The tree of an earlier job (its files have the same names in every job) is moved to
result/earlier-DATE/ with its pages. Only one run at a time can work in a job folder.
"""
import contextlib
import errno
import fcntl
import glob
import os
import re
import resource
import selectors
import signal
import subprocess
import sys
import time
import tty

import motif_preview
from job_process import before_exec

STDIN, STDOUT = 0, 1
# The program prints this line when it has all answers.
DIALOGUE_END = b"Reading input ..."
# The number of questions without those on files, and the number for each file.
QUESTIONS, QUESTIONS_PER_FILE = 12, 2
# The answers to the first question that the program accepts: digits and points; the first number counts.
NUMBER_OF_FILES = re.compile(rb"\s*0*([1-9]\d*)[\d.]*\s*")
MOST_ANSWER_BYTES = 16 << 20
BYTE_ORDER_MARK = b"\xef\xbb\xbf"
TREE_FILES = [name for prefix in ("", "Global_Matching_")
              for name in (prefix + "Distance_Matrix.csv", prefix + "Plot_File.R", prefix + "Phylogenetic_Tree.png")]
# Tree pages refer to the picture by its bare name, so they are moved with it. A page's name may have a suffix.
TREE_PAGES = "J_*Phylogenetic_Tree.html*"
FROM_KEYBOARD = (signal.SIGINT, signal.SIGQUIT)
ENDING = (signal.SIGTERM, signal.SIGHUP, *FROM_KEYBOARD)


class Refused(Exception):
    """The reason, for the user, why there is no run or why it was stopped."""


class Interrupted(Exception):
    """A signal that arrived before the program was started."""


def lines_of_answers(content, source):
    """The answers in a file, one per line; raises Refused if the dialogue has more questions."""
    if len(content) > MOST_ANSWER_BYTES:
        raise Refused(f"{source} is too large for answers")
    lines = [line[:-1] if line.endswith(b"\r") else line
             for line in content.removeprefix(BYTE_ORDER_MARK).split(b"\n")]
    while lines and not lines[-1].strip():
        lines.pop()                     # the last answer is the path of a folder, so it is never empty
    for place, line in enumerate(lines):
        files = NUMBER_OF_FILES.fullmatch(line)
        if files:
            break
    else:
        raise Refused(f"{source} has no line that answers the first question, the number of files")
    given, needed = len(lines) - place, QUESTIONS + QUESTIONS_PER_FILE * int(files[1])
    if given < needed:
        raise Refused(f"{source} has {given} answers, but with the number of files {int(files[1])} the dialogue asks "
                      f"for {needed}; every answer needs a line of its own")
    return lines


def lock(job):
    """Locks the job folder until this process ends, however it ends."""
    held = os.open(os.path.join(job, ".lock"), os.O_RDWR | os.O_CREAT, 0o666)
    try:
        fcntl.flock(held, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except OSError as error:
        if error.errno in (errno.EWOULDBLOCK, errno.EACCES):
            raise Refused(f"another run is working in {job}; wait for its end, or make a folder of its own with "
                          "varnolix-job folder") from None
        print(f"run: {job} cannot be locked ({error.strerror}): start no second run in it", file=sys.stderr)
    return held


def unused(path, suffix=""):
    """An unused name: the path with its suffix, or with a number between the two."""
    number, name = 1, path + suffix
    while os.path.lexists(name):
        number += 1
        name = f"{path}-{number}{suffix}"
    return name


def move_trees_aside(result, date):
    """Moves existing tree files away, so that no page can show the tree of another job."""
    found = [path for path in (os.path.join(result, name) for name in TREE_FILES) if os.path.lexists(path)]
    found += glob.glob(os.path.join(glob.escape(result), TREE_PAGES))
    if found:
        aside = unused(os.path.join(result, "earlier-" + date))
        os.mkdir(aside)
        for path in found:
            os.rename(path, os.path.join(aside, os.path.basename(path)))


def write_all(out, text):
    """Writes every byte."""
    while text:
        text = text[os.write(out, text):]


class Console:
    """Passes on what the program prints, and notices when the program has run out of answers.

    At the end of its input the program prints one line for ever. While answers are left, each repeat of the line
    uses up a line or a word of them; more repeats than that can only mean that the input has ended. Repeats are
    held back until this is clear, so that the line appears only once.
    """

    def __init__(self, out):
        self.out = out
        self.in_dialogue = True
        self.rest = b""                 # an incomplete line
        self.most_reads = 0             # the most reads that the given answers allow
        self.input_ended = False
        self.previous, self.repeats = None, 0

    def given(self, text):
        """Counts the answers given to the program."""
        self.most_reads += text.count(b"\n") + len(text.split())

    def take(self, text):
        """Passes on what the program printed."""
        self.rest += text
        while self.in_dialogue and b"\n" in self.rest:
            line, _, self.rest = self.rest.partition(b"\n")
            self.take_line(line + b"\n")
        if not self.in_dialogue:
            self.flush()

    def take_line(self, line):
        """Passes on a line of the dialogue, unless it is a repeat after the end of the answers."""
        if self.input_ended and line == self.previous:
            self.repeats += 1
            if self.repeats > self.most_reads:
                self.rest, self.repeats = b"", 0
                raise Refused("the answers ended before the last question, so the program was stopped")
            return
        self.write_repeats()
        self.previous = line
        self.in_dialogue = line.strip() != DIALOGUE_END
        write_all(self.out, line)

    def write_repeats(self):
        """Passes on the repeats that were held back."""
        write_all(self.out, (self.previous or b"") * self.repeats)
        self.repeats = 0

    def flush(self):
        """Passes on everything."""
        self.write_repeats()
        write_all(self.out, self.rest)
        self.rest = b""


class Kept:
    """The typed answers, in a file in the job folder that is made when the first of them arrives."""

    def __init__(self, path):
        self.path = path
        self.file = None
        self.works = True

    def add(self, text):
        """Appends what was typed. If the folder cannot be written, the run goes on without the file."""
        if not self.works:
            return
        try:
            if self.file is None:
                self.file = open(self.path, "xb", buffering=0)
            self.file.write(text)
        except OSError as error:
            self.works = False
            print(f"run: the answers cannot be kept in {self.path}: {error.strerror}", file=sys.stderr)

    def close(self):
        """Says where the answers are, after a run that failed."""
        if self.file is not None:
            self.file.close()
            if self.works:
                print(f"run: what was typed is kept in {self.path}; mend or complete it there and start run with it",
                      file=sys.stderr)


def catch_ending(handler):
    """Sets the handler for the signals that end a run; signals that the caller ignores (nohup) stay ignored."""
    for number in ENDING:
        if signal.getsignal(number) != signal.SIG_IGN:
            signal.signal(number, handler)


def in_foreground():
    """Whether a signal from the keyboard reaches the program too, as it does in the foreground process group."""
    try:
        with open("/dev/tty", "rb", buffering=0) as terminal:
            return os.tcgetpgrp(terminal.fileno()) == os.getpgrp()
    except OSError:
        return False


class Run:
    """Runs the program and passes on its answers and its console output until it ends."""

    def __init__(self, program, job, console, kept):
        self.program, self.job, self.console, self.kept = program, job, console, kept
        self.selector = selectors.DefaultSelector()
        self.process = None
        self.pending = b""              # answers that have not been written to the program yet
        self.answers_end = self.output = None

    def start(self):
        """Starts the program with its input and output connected here; on a terminal it writes line by line."""
        program_input, self.answers_end = os.pipe()
        self.output, program_output = os.openpty() if os.isatty(self.console.out) else os.pipe()
        if os.isatty(program_output):
            tty.setraw(program_output)
        wake_read, wake_write = os.pipe()
        for end in (self.answers_end, self.output, wake_read, wake_write):
            os.set_blocking(end, False)
        signal.set_wakeup_fd(wake_write)
        signal.signal(signal.SIGCHLD, lambda *_: None)      # it only has to wake up the selector
        catch_ending(self.on_signal)
        self.process = subprocess.Popen([self.program], cwd=self.job, stdin=program_input, stdout=program_output,
                                        preexec_fn=before_exec)
        os.close(program_input)
        os.close(program_output)
        self.selector.register(self.output, selectors.EVENT_READ, self.pass_output)
        self.selector.register(wake_read, selectors.EVENT_READ, lambda: os.read(wake_read, 1 << 10))

    def on_signal(self, number, _frame):
        """Passes a signal on to the program; when the program ends, the run ends."""
        if self.process is None:
            raise Interrupted(number)
        if number not in FROM_KEYBOARD or not in_foreground():
            self.process.send_signal(number)

    def end_input(self):
        """Notes that no more answers follow."""
        self.console.input_ended = True
        self.stop_typing()
        if self.answers_end is not None and not self.pending:
            self.close_answers()

    def stop_typing(self):
        """From here on, whatever is typed stays in the terminal."""
        with contextlib.suppress(KeyError):
            self.selector.unregister(STDIN)

    def close_answers(self):
        """Ends the program's input."""
        with contextlib.suppress(KeyError):
            self.selector.unregister(self.answers_end)
        os.close(self.answers_end)
        self.answers_end = None

    def give(self, text):
        """Queues answers for the program."""
        self.console.given(text)
        if self.answers_end is None:
            return
        if not self.pending:
            self.selector.register(self.answers_end, selectors.EVENT_WRITE, self.pass_answers)
        self.pending += text

    def pass_answers(self):
        """Writes as many answers as the program's input has room for."""
        try:
            self.pending = self.pending[os.write(self.answers_end, self.pending):]
        except BlockingIOError:
            return
        except BrokenPipeError:         # the program has ended; this is noticed elsewhere
            self.pending = b""
        if not self.pending:
            self.selector.unregister(self.answers_end)
            if self.console.input_ended:
                self.close_answers()

    def pass_output(self):
        """Passes on what the program has printed; returns whether there was anything."""
        try:
            text = os.read(self.output, 1 << 16)
        except BlockingIOError:
            return False
        except OSError:                 # a terminal that was closed at its other end
            text = b""
        if not text:
            self.selector.unregister(self.output)
            return False
        self.console.take(text)
        if not self.console.in_dialogue and self.answers_end is not None:
            self.pending = b""
            self.end_input()
        return True

    def type_from_terminal(self):
        """Takes answers from the terminal, line by line."""
        typed = b""

        def take():
            nonlocal typed
            text = os.read(STDIN, 1 << 12)
            typed += text if text or not typed else b"\n"
            whole = typed[:typed.rfind(b"\n") + 1]
            if whole:
                typed = typed[len(whole):]
                self.kept.add(whole)
                self.give(whole)
            if not text:
                self.end_input()

        self.selector.register(STDIN, selectors.EVENT_READ, take)

    def to_the_end(self):
        """Passes everything on until the program ends; returns its status as subprocess gives it."""
        while self.process.poll() is None:
            for key, _ in self.selector.select():
                if key.fileobj in self.selector.get_map():
                    key.data()
        while self.output in self.selector.get_map() and self.pass_output():
            pass
        self.console.flush()
        return self.process.returncode


def run_program(program, job, answers, kept):
    """Runs the program once; returns its status as subprocess gives it."""
    run = Run(program, job, Console(STDOUT), kept)
    run.start()
    try:
        if answers is None:
            run.type_from_terminal()
        else:
            run.give(b"".join(line + b"\n" for line in answers))
            run.end_input()
        return run.to_the_end()
    except Refused:
        run.process.kill()              # it is still asking, so it has written nothing
        run.process.wait()
        raise
    except OSError as error:
        run.process.terminate()
        run.process.wait()
        if error.errno == errno.EPIPE:
            return -signal.SIGPIPE      # nothing reads the console any more
        raise Refused(f"the console cannot be written: {error.strerror}") from None


def show_folder(program, job, kept):
    """Shows the answers for this folder and the files in motifs/."""
    motifs = os.path.join(job, "motifs", "")
    companion = os.path.join(os.path.dirname(program), "varnolix-job")
    print(f"Answers for this folder:\n"
          f"  input file's location    {motifs}\n"
          f"  input file names         the bare names of files in it\n"
          f"  output file's location   {os.path.join(job, 'result', '')}")
    with contextlib.suppress(OSError):
        print("\n".join(["", *motif_preview.preview(program, motifs, companion)]))
    print(f"\nWhat you type is kept in {kept.path}\n", flush=True)


def given_answers(arguments):
    """The answers from a file or a pipe; None if they will be typed."""
    if arguments:
        source, place = arguments[0], arguments[0]
    elif os.isatty(STDIN):
        return None
    else:
        source, place = "standard input", STDIN
    try:
        with open(place, "rb", closefd=bool(arguments)) as file:
            content = file.read(MOST_ANSWER_BYTES + 1)
    except OSError as error:
        raise Refused(f"{source} cannot be read: {error.strerror}") from None
    return lines_of_answers(content, source)


def end_by(number):
    """Ends this process by a signal, without writing a core file."""
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    with contextlib.suppress(OSError):
        signal.signal(number, signal.SIG_DFL)
    os.kill(os.getpid(), number)
    return 128 + number


def interrupt(number, _frame):
    """Leaves the current work by an exception, so that it cleans up."""
    raise Interrupted(number)


def main(arguments):
    """Checks the answers, moves old trees away and runs the program; returns the program's status."""
    program, job, *arguments = arguments
    program = os.path.abspath(program)
    if arguments[:1] == ["--help"]:
        print(__doc__.strip())
        return 0
    if len(arguments) > 1:
        print(f"run: one file of answers at a time\n\n{__doc__.strip()}", file=sys.stderr)
        return 2
    if sys.stdout is None:
        print("run: standard output is closed", file=sys.stderr)
        return 1                        # a file that we open would take its place
    sys.stdout.reconfigure(errors="backslashreplace")
    catch_ending(interrupt)
    date = time.strftime("%Y-%m-%d_%H-%M-%S")
    kept = Kept(unused(os.path.join(job, "answers-" + date), ".txt"))
    status = 1
    try:
        answers = given_answers(arguments)
        held = lock(job)
        if answers is None and os.isatty(STDOUT):
            show_folder(program, job, kept)
        move_trees_aside(os.path.join(job, "result"), date)
        status = run_program(program, job, answers, kept)
        os.close(held)
    except Refused as reason:
        print(f"run: {reason}", file=sys.stderr)
    except Interrupted as cause:
        status = -cause.args[0]
    except OSError as error:
        print(f"run: {error}", file=sys.stderr)
    if status == -signal.SIGINT:
        print(file=sys.stderr)          # to start a line below the ^C
    if status != 0:
        kept.close()
    return status if status >= 0 else end_by(-status)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
