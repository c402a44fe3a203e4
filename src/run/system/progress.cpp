#include "run/system/progress.h"

#include <unistd.h>

#include <cmath>
#include <iostream>

// The line is written over with blanks, and the cursor waits at its end: that needs nothing but a carriage return of
// the terminal. Tested by progress_test.cpp and tests/nasty/test_progress.py.

namespace varnolix {

namespace {

constexpr std::chrono::milliseconds shortestPause{100};
constexpr double leastSeconds = 1;  // before the time left is told
constexpr double longInSeconds = 100;

std::string grouped(std::size_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t place = digits.size(); place > 3;) digits.insert(place -= 3, 1, ',');
    return digits;
}

std::string timeText(double seconds) {
    if (seconds < longInSeconds) return std::to_string(std::lround(std::ceil(seconds))) + " s left";
    return std::to_string(std::lround(std::ceil(seconds / 60))) + " min left";
}

void writeToTerminal(const std::string& text) {
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text.data(), text.size());
}

}  // namespace

std::string progressText(std::string_view what, std::size_t done, std::size_t total,
                         std::optional<double> secondsLeft) {
    std::string text = std::string(what) + " " + grouped(done) + " of " + grouped(total);
    if (secondsLeft) text += ", " + timeText(*secondsLeft);
    return text;
}

std::optional<double> secondsLeft(std::size_t done, std::size_t total, double secondsSoFar) {
    if (done == 0 || secondsSoFar < leastSeconds) return std::nullopt;
    return secondsSoFar / static_cast<double>(done) * static_cast<double>(total - done);
}

Progress::Progress(std::string_view what, std::size_t total, Time time)
    : isShown_(total > 0 && isatty(STDERR_FILENO) == 1), what_(what), total_(total), time_(time) {
    if (!isShown_) return;
    // Our own text comes first.
    std::cout.flush();
    draw();
}

Progress::~Progress() {
    clear();
}

void Progress::add(std::size_t parts) {
    if (!isShown_) return;
    const std::lock_guard lock(guard_);
    done_ += parts;
    if (width_ == 0 || Clock::now() - drawn_ >= shortestPause) draw();
}

void Progress::clear() {
    if (!isShown_) return;
    const std::lock_guard lock(guard_);
    erase();
}

void Progress::draw() {
    const auto now = Clock::now();
    const std::optional<double> left =
        time_ == Time::estimated ? secondsLeft(done_, total_, std::chrono::duration<double>(now - begin_).count())
                                 : std::nullopt;
    const std::string text = progressText(what_, done_, total_, left);
    const std::string rest(width_ > text.size() ? width_ - text.size() : 0, ' ');
    writeToTerminal("\r" + text + rest + std::string(rest.size(), '\b'));
    width_ = text.size();
    drawn_ = now;
}

void Progress::erase() {
    if (width_ == 0) return;
    writeToTerminal("\r" + std::string(width_, ' ') + "\r");
    width_ = 0;
}

}  // namespace varnolix
