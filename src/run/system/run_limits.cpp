#include "run/system/run_limits.h"

#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <stdexcept>

namespace varnolix {

namespace {

/// Allocates nothing, so it works when memory has run out.
[[noreturn]] void endWithText(const char* text) noexcept {
    // This cannot deadlock: only the main thread prints, and never while others work, so no other thread
    // holds the lock of the stream.
    std::fflush(stdout);
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, std::strlen(text));
    std::_Exit(EXIT_FAILURE);
}

[[noreturn]] void endWithoutMemory() noexcept {
    endWithText("Error: not enough memory for this job.\n");
}

/// Also covers length_error: containers throw it for sizes that no memory could hold, without trying to allocate.
[[noreturn]] void endUncaught() noexcept {
    if (const std::exception_ptr thrown = std::current_exception()) {
        try {
            std::rethrow_exception(thrown);
        } catch (const std::bad_alloc&) {
            endWithoutMemory();
        } catch (const std::length_error&) {
            endWithoutMemory();
        } catch (...) {
            std::abort();
        }
    }
    std::abort();
}

}  // namespace

void endForLack(const std::string& what) noexcept {
    std::array<char, 1024> text{};
    std::snprintf(text.data(), text.size(), "Error: %s.\n", what.c_str());
    endWithText(text.data());
}

void endWhereMemoryEnds() {
    std::set_new_handler(endWithoutMemory);
    std::set_terminate(endUncaught);
}

}  // namespace varnolix
