#pragma once

#include <sys/types.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstddef>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

// Calls of the outside tools. How a tool ends is never looked at, with one exception: an interrupt ends the run.

namespace varnolix {

/// What the signal handlers and the threads that wait for tools share.
struct RunningTools {
    static constexpr std::size_t mostTools = 256;
    /// The tools that run, each by the number of its process group; 0 is a free place, -1 one that is about to be used.
    std::array<std::atomic<pid_t>, mostTools> groups{};
    std::atomic<int> endingSignal{0};     ///< the signal that ends the run; 0 is none
    std::atomic<bool> areGivenUp{false};  ///< the run is about to end without a signal
    std::mutex guard;                     ///< of what stands below
    int works = 0;                        ///< ToolWork objects alive
    std::vector<std::pair<int, struct sigaction>> actionsBefore;
};

/// What a tool prints, kept until it can be shown without getting mixed with what other tools print at the same time.
class CapturedConsole {
  public:
    CapturedConsole();
    ~CapturedConsole();
    CapturedConsole(const CapturedConsole&) = delete;
    CapturedConsole& operator=(const CapturedConsole&) = delete;

    int output() const { return output_; }  ///< descriptor for the tool's standard output
    int errors() const { return errors_; }  ///< the same for its standard error

    bool isEmpty() const;
    /// Copies it to our own standard output and standard error.
    void print() const;

  private:
    int output_;
    int errors_;
};

/// A piece of work that outside tools do for us, such as the two logos of a motif. While one lives, SIGINT, SIGQUIT,
/// SIGTERM and SIGHUP are passed on to the tools that run; then, when these have ended (or were killed, after some
/// seconds), unfinished files are removed and the process ends by that signal. A tool that was itself ended by SIGINT
/// or SIGQUIT has the same effect. Several threads may have a work at the same time.
class ToolWork {
  public:
    /// @param files what must not be left when a signal ends the run: files that only serve this work
    explicit ToolWork(std::vector<std::string> files);
    ~ToolWork();
    ToolWork(const ToolWork&) = delete;
    ToolWork& operator=(const ToolWork&) = delete;

    /// Runs the command by "/bin/sh -c", as `system` does but in a process group of its own, and waits for its end.
    /// @param product what the tool writes: not left half-written when the run ends
    /// @param console takes what the tool prints; without one it goes to our own console
    /// @return false if the tool was given up
    bool run(const std::string& command, const std::string& product, const CapturedConsole* console = nullptr);

    /// Ends the tools of all threads, whose products go, and starts no other: the run is about to end.
    static void giveUpAll();

  private:
    /// Removes the files and never comes back.
    [[noreturn]] void stop();

    std::vector<std::string> files_;
};

/// The signal if a status of `waitpid` says that SIGINT or SIGQUIT ended the tool, directly or within the shell; else
/// 0.
int interruptOf(int status);

}  // namespace varnolix
