#include "run/run_limits.h"

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

/// Takes no memory.
[[noreturn]] void endWithText(const char* text) noexcept {
    // Only the main thread prints, and not while others work, so nobody holds the lock of the stream but us.
    std::fflush(stdout);
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, std::strlen(text));
    std::_Exit(EXIT_FAILURE);
}

[[noreturn]] void endWithoutMemory() noexcept {
    endWithText("Error: not enough memory for this job.\n");
}

/// Containers refuse sizes that no memory could hold without asking for it.
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
