#include "run/system/outside_tool.h"

#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <thread>

#include "run/shared_records.h"

// Each tool has a process group of its own. So whatever it starts can be reached at once, and an interrupt from the
// terminal, which goes to the group of the program, reaches the tool once, through us, and not twice.
//
// A handler does no more than note the first signal, pass it on to all groups and set an alarm, whose handler kills
// them. The threads are in a plain wait for their tool, which thereby ends. Each then clears up; the last one ends the
// process. A tool that starts at this very moment either is in the table when the handler walks it, or its thread sees
// the noted signal right behind the start.
//
// A run that ends for another reason has all threads come back, as the main thread still has something to say.
//
// Tested by outside_tool_test.cpp and tests/nasty/test_interrupts.py.

namespace varnolix {

namespace {

constexpr unsigned patienceSeconds = 5;
constexpr std::chrono::milliseconds pollInterval{10};
constexpr int shellSignalStatus = 128;

void sendToTools(int number) {
    for (const std::atomic<pid_t>& group : runningTools.groups) {
        if (const pid_t leader = group; leader > 0) kill(-leader, number);
    }
}

/// Notes the signal and passes it on, unless there was one before.
void endToolsBy(int number) {
    int none = 0;
    if (!runningTools.endingSignal.compare_exchange_strong(none, number)) return;
    sendToTools(number);
    alarm(patienceSeconds);
}

void onEndingSignal(int number) {
    const int before = errno;
    endToolsBy(number);
    errno = before;
}

void onAlarm(int /*number*/) {
    const int before = errno;
    sendToTools(SIGKILL);
    errno = before;
}

void setAction(int number, void (*handler)(int)) {
    struct sigaction action {};
    struct sigaction before {};
    // Calls that are interrupted go on: a write of a report must not fail for it.
    action.sa_flags = SA_RESTART;
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    sigaction(number, nullptr, &before);
    // What the caller wants ignored, as `nohup` does, stays so, here and in the tools.
    if (before.sa_handler == SIG_IGN) return;
    sigaction(number, &action, nullptr);
    runningTools.actionsBefore.emplace_back(number, before);
}

void catchSignals() {
    for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) setAction(number, onEndingSignal);
    setAction(SIGALRM, onAlarm);
    // A tool is in the background of the terminal, where these would stop it.
    for (const int number : {SIGTTIN, SIGTTOU}) setAction(number, SIG_IGN);
}

void releaseSignals() {
    for (const auto& [number, action] : runningTools.actionsBefore) sigaction(number, &action, nullptr);
    runningTools.actionsBefore.clear();
    // The one of tools that were given up would now end the process.
    if (runningTools.areGivenUp) alarm(0);
}

[[noreturn]] void endBySignal(int number) {
    std::cout.flush();
    signal(number, SIG_DFL);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, number);
    pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
    raise(number);
    _exit(shellSignalStatus + number);
}

/// The last work that ends takes the process with it.
[[noreturn]] void waitForTheEnd() {
    while (true) pause();
}

std::atomic<pid_t>& freePlace() {
    while (true) {
        for (std::atomic<pid_t>& group : runningTools.groups) {
            pid_t none = 0;
            if (group.compare_exchange_strong(none, -1)) return group;
        }
        std::this_thread::yield();
    }
}

/// Starts the shell on the command; the number of its process, or 0.
pid_t startShell(const std::string& command, const CapturedConsole* console) {
    std::string shell = "sh";
    std::string option = "-c";
    std::string text = command;
    char* const arguments[] = {shell.data(), option.data(), text.data(), nullptr};
    posix_spawnattr_t attributes;
    if (posix_spawnattr_init(&attributes) != 0) return 0;
    // Ours alone: we ignore it so that writes fail instead.
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGXFSZ);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF);
    posix_spawn_file_actions_t actions;
    if (posix_spawn_file_actions_init(&actions) != 0) {
        posix_spawnattr_destroy(&attributes);
        return 0;
    }
    if (console != nullptr && console->output() >= 0 && console->errors() >= 0) {
        posix_spawn_file_actions_adddup2(&actions, console->output(), STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, console->errors(), STDERR_FILENO);
    }
    pid_t child = 0;
    const int error = posix_spawn(&child, "/bin/sh", &actions, &attributes, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    return error == 0 ? child : 0;
}

/// Waits for the child and takes it out of the table before its number can be another's.
int waitForShell(pid_t child, std::atomic<pid_t>& place) {
    siginfo_t information{};
    while (waitid(P_PID, static_cast<id_t>(child), &information, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
    }
    place = 0;
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

/// Whether all processes of the group end within so many seconds.
bool endsWithin(pid_t group, unsigned seconds) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (kill(-group, 0) == 0) {
        if (std::chrono::steady_clock::now() > limit) return false;
        // As the first process of a container we are the parent of what others leave.
        while (waitpid(-group, nullptr, WNOHANG) > 0) {
        }
        std::this_thread::sleep_for(pollInterval);
    }
    return true;
}

/// Ends what a tool has left of its group. The shell starts background processes deaf to interrupts, so they get
/// SIGTERM when they stay for a second.
void clearGroup(pid_t group, int number) {
    kill(-group, number);
    if (endsWithin(group, 1)) return;
    kill(-group, SIGTERM);
    if (!endsWithin(group, patienceSeconds)) kill(-group, SIGKILL);
}

/// All that stands in the file of the descriptor.
std::string contentOf(int descriptor) {
    std::string content;
    std::array<char, 4096> buffer{};
    while (true) {
        const ssize_t count = pread(descriptor, buffer.data(), buffer.size(), static_cast<off_t>(content.size()));
        if (count <= 0) return content;
        content.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

}  // namespace

// Files in memory, as a tool may print more than a pipe holds. Where there are none the tool prints past us.
CapturedConsole::CapturedConsole()
    : output_(memfd_create("output", MFD_CLOEXEC)), errors_(memfd_create("errors", MFD_CLOEXEC)) {}

CapturedConsole::~CapturedConsole() {
    for (const int descriptor : {output_, errors_}) {
        if (descriptor >= 0) close(descriptor);
    }
}

bool CapturedConsole::isEmpty() const {
    return contentOf(output_).empty() && contentOf(errors_).empty();
}

void CapturedConsole::print() const {
    std::cout << contentOf(output_) << std::flush;
    std::cerr << contentOf(errors_);
}

int interruptOf(int status) {
    for (const int number : {SIGINT, SIGQUIT}) {
        if (WIFSIGNALED(status) && WTERMSIG(status) == number) return number;
        if (WIFEXITED(status) && WEXITSTATUS(status) == shellSignalStatus + number) return number;
    }
    return 0;
}

ToolWork::ToolWork(std::vector<std::string> files) : files_(std::move(files)) {
    {
        const std::lock_guard lock(runningTools.guard);
        if (runningTools.endingSignal == 0) {
            if (runningTools.works++ == 0) catchSignals();
            return;
        }
    }
    waitForTheEnd();
}

ToolWork::~ToolWork() {
    {
        const std::lock_guard lock(runningTools.guard);
        if (--runningTools.works == 0) {
            // In this order: a signal from here on acts by itself, and one from before is noted.
            releaseSignals();
            if (const int number = runningTools.endingSignal; number != 0) endBySignal(number);
        }
        if (runningTools.endingSignal == 0) return;
    }
    waitForTheEnd();
}

void ToolWork::stop() {
    for (const std::string& file : files_) std::remove(file.c_str());
    {
        const std::lock_guard lock(runningTools.guard);
        if (--runningTools.works == 0) endBySignal(runningTools.endingSignal);
    }
    waitForTheEnd();
}

bool ToolWork::run(const std::string& command, const std::string& product, const CapturedConsole* console) {
    if (runningTools.endingSignal != 0) stop();
    if (runningTools.areGivenUp) return false;
    std::atomic<pid_t>& place = freePlace();
    const pid_t child = startShell(command, console);
    place = child;
    if (child == 0) return true;
    if (runningTools.endingSignal != 0 || runningTools.areGivenUp) kill(-child, SIGKILL);
    if (const int number = interruptOf(waitForShell(child, place)); number != 0) endToolsBy(number);
    if (const int number = runningTools.endingSignal; number != 0) {
        clearGroup(child, number);
        files_.push_back(product);
        stop();
    }
    if (!runningTools.areGivenUp) return true;
    clearGroup(child, SIGTERM);
    std::remove(product.c_str());
    return false;
}

void ToolWork::giveUpAll() {
    if (runningTools.areGivenUp.exchange(true)) return;
    sendToTools(SIGTERM);
    // Only where its handler is there, and with it somebody to take it back.
    const std::lock_guard lock(runningTools.guard);
    if (runningTools.works > 0) alarm(patienceSeconds);
}

}  // namespace varnolix
