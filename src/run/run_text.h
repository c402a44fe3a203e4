#pragma once

#include <string>

// Small texts of the run: numbers, dates, the working directory, and the messages that end a run early.

namespace varnolix {

/// The number as a stream prints it by default: six significant digits, general notation.
std::string numberToString(double number);
/// Local time as "%m-%d-%Y %X".
std::string getCurrDateTime();
/// Local time as "%Y-%m-%d_%H-%M-%S".
std::string getCurrDateTimeFormat();
/// The working directory without a slash at its end; empty if it cannot be determined.
std::string getCurrentDirectory();

/// Prints the message to standard output and ends the process with exit status 1.
[[noreturn]] void endRun(const char* message);

inline constexpr const char* invalidInputPathMessage = "Invalid input path or file name.\n";
inline constexpr const char* invalidOutputPathMessage = "Invalid output path or output filename.";

}  // namespace varnolix
