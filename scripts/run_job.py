"""Starts VARNOLIX in its job folder: the dialogue on the terminal, or answers from a file.

    run            asks on the terminal; what is typed is kept in the job folder as answers-DATE.txt
    run ANSWERS    takes the answers from a file, one a line, in the order of the questions

Answers may be piped in as well; they are read to their end first. A file may have line ends of Windows. One
that has fewer lines than the dialogue has questions is refused, and a run that asks on behind the last line
is stopped.

On a terminal the answers of this folder and the files in motifs/ are shown first, with the number of motifs
that will be read from each. The tree of an earlier job (its files have bare names) is moved to
result/earlier-DATE/ with its pages. One run at a time works in a job folder.
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
# The line that the program prints when it has all answers.
DIALOGUE_END = b"Reading input ..."
# Questions whatever the number of files, and for each file.
QUESTIONS, QUESTIONS_PER_FILE = 12, 2
# The answer to the first question as the program takes it: digits and points, of which the first number counts.
NUMBER_OF_FILES = re.compile(rb"\s*0*([1-9]\d*)[\d.]*\s*")
MOST_ANSWER_BYTES = 16 << 20
BYTE_ORDER_MARK = b"\xef\xbb\xbf"
TREE_FILES = [name for prefix in ("", "Global_Matching_")
              for name in (prefix + "Distance_Matrix.csv", prefix + "Plot_File.R", prefix + "Phylogenetic_Tree.png")]
# Tree pages show the picture by its bare name, so they go where it goes. A page may have a suffix behind its name.
TREE_PAGES = "J_*Phylogenetic_Tree.html*"
FROM_KEYBOARD = (signal.SIGINT, signal.SIGQUIT)
ENDING = (signal.SIGTERM, signal.SIGHUP, *FROM_KEYBOARD)


class Refused(Exception):
    """Why there is no run, or why it was stopped, in words for the user."""


class Interrupted(Exception):
    """A signal that came before the program was started."""


def lines_of_answers(content, source):
    """The answers of a file, one a line; Refused if the dialogue has more questions."""
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
    """Holds the job folder until this process ends, however it ends."""
    held = os.open(os.path.join(job, ".lock"), os.O_RDWR | os.O_CREAT, 0o666)
    try:
        fcntl.flock(held, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except OSError as error:
        if error.errno in (errno.EWOULDBLOCK, errno.EACCES):
            raise Refused(f"another run is working in {job}; wait for its end, or make a folder of its own with "
                          f"new-job.sh") from None
        print(f"run: {job} cannot be locked ({error.strerror}): start no second run in it", file=sys.stderr)
    return held


def unused(path, suffix=""):
    """A name at which nothing lies: the path with its suffix, or with a number between them."""
    number, name = 1, path + suffix
    while os.path.lexists(name):
        number += 1
        name = f"{path}-{number}{suffix}"
    return name


def move_trees_aside(result, date):
    """Clears the bare names of the tree files, so that no page can show the tree of another job."""
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
    """Passes on what the program prints, and knows when it asks for answers that are not there.

    At the end of its input the program prints one line for ever. While answers are left, each repeat takes up
    a line or a word of them; more repeats than that can only come from behind the end. Repeats are held back
    meanwhile, so that the line appears once.
    """

    def __init__(self, out):
        self.out = out
        self.in_dialogue = True
        self.rest = b""                 # a line whose end has not come
        self.most_reads = 0             # how often the given answers can be read at most
        self.input_ended = False
        self.previous, self.repeats = None, 0

    def given(self, text):
        """Counts answers that the program gets."""
        self.most_reads += text.count(b"\n") + len(text.split())

    def take(self, text):
        """Passes on what was printed."""
        self.rest += text
        while self.in_dialogue and b"\n" in self.rest:
            line, _, self.rest = self.rest.partition(b"\n")
            self.take_line(line + b"\n")
        if not self.in_dialogue:
            self.flush()

    def take_line(self, line):
        """Passes on a line of the dialogue, unless it is a repeat behind the end of the answers."""
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
        """Passes on what was held back."""
        write_all(self.out, (self.previous or b"") * self.repeats)
        self.repeats = 0

    def flush(self):
        """Passes on everything."""
        self.write_repeats()
        write_all(self.out, self.rest)
        self.rest = b""


class Kept:
    """The typed answers, in a file of the job folder that appears with the first of them."""

    def __init__(self, path):
        self.path = path
        self.file = None
        self.works = True

    def add(self, text):
        """Appends what was typed. A folder that cannot be written does not keep anybody from the run."""
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
        """Says where the answers are, for a run that did not end well."""
        if self.file is not None:
            self.file.close()
            if self.works:
                print(f"run: what was typed is kept in {self.path}; mend or complete it there and start run with it",
                      file=sys.stderr)


def catch_ending(handler):
    """Sets the handler for the signals that end a run; what the caller ignores (nohup) stays ignored."""
    for number in ENDING:
        if signal.getsignal(number) != signal.SIG_IGN:
            signal.signal(number, handler)


def in_foreground():
    """Whether a key that sends a signal sends it to the program as well: to the whole group in the foreground."""
    try:
        with open("/dev/tty", "rb", buffering=0) as terminal:
            return os.tcgetpgrp(terminal.fileno()) == os.getpgrp()
    except OSError:
        return False


class Run:
    """The program, with its answers and its console going through here until it ends."""

    def __init__(self, program, job, console, kept):
        self.program, self.job, self.console, self.kept = program, job, console, kept
        self.selector = selectors.DefaultSelector()
        self.process = None
        self.pending = b""              # answers that the program has had no room for yet
        self.answers_end = self.output = None

    def start(self):
        """Starts the program with its input and output here; on a terminal it keeps writing line by line."""
        program_input, self.answers_end = os.pipe()
        self.output, program_output = os.openpty() if os.isatty(self.console.out) else os.pipe()
        if os.isatty(program_output):
            tty.setraw(program_output)
        wake_read, wake_write = os.pipe()
        for end in (self.answers_end, self.output, wake_read, wake_write):
            os.set_blocking(end, False)
        signal.set_wakeup_fd(wake_write)
        signal.signal(signal.SIGCHLD, lambda *_: None)      # what matters is that the selector wakes up
        catch_ending(self.on_signal)
        self.process = subprocess.Popen([self.program], cwd=self.job, stdin=program_input, stdout=program_output,
                                        preexec_fn=before_exec)
        os.close(program_input)
        os.close(program_output)
        self.selector.register(self.output, selectors.EVENT_READ, self.pass_output)
        self.selector.register(wake_read, selectors.EVENT_READ, lambda: os.read(wake_read, 1 << 10))

    def on_signal(self, number, _frame):
        """Hands a signal on to the program, whose end then is the end of the run."""
        if self.process is None:
            raise Interrupted(number)
        if number not in FROM_KEYBOARD or not in_foreground():
            self.process.send_signal(number)

    def end_input(self):
        """No answer follows."""
        self.console.input_ended = True
        self.stop_typing()
        if self.answers_end is not None and not self.pending:
            self.close_answers()

    def stop_typing(self):
        """What is typed from here on stays in the terminal."""
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
        """Gives the program as much as it has room for."""
        try:
            self.pending = self.pending[os.write(self.answers_end, self.pending):]
        except BlockingIOError:
            return
        except BrokenPipeError:         # it has ended; that is seen elsewhere
            self.pending = b""
        if not self.pending:
            self.selector.unregister(self.answers_end)
            if self.console.input_ended:
                self.close_answers()

    def pass_output(self):
        """Passes on what the program has printed; answers whether there was any."""
        try:
            text = os.read(self.output, 1 << 16)
        except BlockingIOError:
            return False
        except OSError:                 # a terminal whose other end is closed
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
        """Answers come from the terminal, line by line."""
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
        """Carries everything until the program ends; answers its status as subprocess has it."""
        while self.process.poll() is None:
            for key, _ in self.selector.select():
                if key.fileobj in self.selector.get_map():
                    key.data()
        while self.output in self.selector.get_map() and self.pass_output():
            pass
        self.console.flush()
        return self.process.returncode


def run_program(program, job, answers, kept):
    """One run; answers the status as subprocess has it."""
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
        run.process.kill()              # it is asking, so it has written nothing
        run.process.wait()
        raise
    except OSError as error:
        run.process.terminate()
        run.process.wait()
        if error.errno == errno.EPIPE:
            return -signal.SIGPIPE      # nobody reads the console any more
        raise Refused(f"the console cannot be written: {error.strerror}") from None


def show_folder(program, job, kept):
    """The answers of this folder and what lies in motifs/."""
    motifs = os.path.join(job, "motifs", "")
    converter = os.path.join(os.path.dirname(os.path.abspath(__file__)), "convert_collection.py")
    print(f"Answers for this folder:\n"
          f"  input file's location    {motifs}\n"
          f"  input file names         the bare names of files in it\n"
          f"  output file's location   {os.path.join(job, 'result', '')}")
    with contextlib.suppress(OSError):
        print("\n".join(["", *motif_preview.preview(program, motifs, converter)]))
    print(f"\nWhat you type is kept in {kept.path}\n", flush=True)


def given_answers(arguments):
    """The answers of a file or of a pipe; None where they are typed."""
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
    """Ends this process by a signal, without a core file of its own."""
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    with contextlib.suppress(OSError):
        signal.signal(number, signal.SIG_DFL)
    os.kill(os.getpid(), number)
    return 128 + number


def interrupt(number, _frame):
    """Leaves what is going on, so that it cleans up behind it."""
    raise Interrupted(number)


def main(arguments):
    """Checks, clears, and runs; the run's status is the program's."""
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
        return 1                        # a file of ours would be opened in its place
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
        print(file=sys.stderr)          # below the ^C
    if status != 0:
        kept.close()
    return status if status >= 0 else end_by(-status)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
