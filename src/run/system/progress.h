#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

// How far long work is: one line on standard error, drawn over itself, where that is a terminal.

namespace varnolix {

/// The line, such as "logos 812 of 2,482, 31 s left".
/// @param secondsLeft nothing where it is not known
std::string progressText(std::string_view what, std::size_t done, std::size_t total, std::optional<double> secondsLeft);

/// How long the rest takes if it goes on as it has; nothing where too little is done to tell.
std::optional<double> secondsLeft(std::size_t done, std::size_t total, double secondsSoFar);

/// Shows the line from its construction to its end, or to `clear`. Where standard error is no terminal it writes
/// nothing at all. Several threads may use it.
class Progress {
  public:
    /// Whether the parts take about equally long, so that the time left can be told.
    enum class Time { untold, estimated };

    Progress(std::string_view what, std::size_t total, Time time);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// So many more parts are done.
    void add(std::size_t parts);
    /// Takes the line away, to make room for other text; the next part shows it again.
    void clear();

  private:
    using Clock = std::chrono::steady_clock;

    void draw();
    void erase();

    const bool isShown_;
    const std::string what_;
    const std::size_t total_;
    const Time time_;
    const Clock::time_point begin_ = Clock::now();
    std::mutex guard_;  // of what stands below
    std::size_t done_ = 0;
    std::size_t width_ = 0;  // of the line that stands there
    Clock::time_point drawn_;
};

}  // namespace varnolix
