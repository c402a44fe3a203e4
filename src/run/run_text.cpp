#include "run/run_text.h"

#include <unistd.h>

#include <array>
#include <charconv>
#include <cstdlib>
#include <ctime>
#include <iostream>

namespace varnolix {

namespace {

std::string currentTime(const char* format) {
    std::array<char, 100> buffer{};
    const std::time_t now = std::time(nullptr);
    const std::size_t length = std::strftime(buffer.data(), buffer.size(), format, std::localtime(&now));
    return {buffer.data(), length};
}

}  // namespace

std::string numberToString(double number) {
    std::array<char, 32> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general, 6).ptr;
    return {buffer.data(), end};
}

std::string getCurrDateTime() {
    return currentTime("%m-%d-%Y %X");
}

std::string getCurrDateTimeFormat() {
    return currentTime("%Y-%m-%d_%H-%M-%S");
}

std::string getCurrentDirectory() {
    std::array<char, 4096> buffer{};
    return getcwd(buffer.data(), buffer.size()) != nullptr ? buffer.data() : "";
}

void endRun(const char* message) {
    std::cout << message << std::flush;
    std::exit(EXIT_FAILURE);
}

}  // namespace varnolix
