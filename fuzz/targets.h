#pragma once

#include <string_view>

// The fuzz targets. Each takes any text, and ends the process with abort() if the program breaks a promise. To check a
// promise, a target finds out the same thing in a second, plain way; it does not compare with earlier output.

namespace varnolix::fuzz {

/// Recognising blocks: decisions from facts gathered row by row must equal decisions from whole blocks.
void blockShapeTarget(std::string_view text);
/// Reading a motif file: the motifs, their numbers and their lengths must match the blocks.
void readersTarget(std::string_view text);
/// Reading both layouts of collection files: the motifs, their numbers and their lengths.
void collectionsTarget(std::string_view text);
/// The answers of the dialogue, and how they are written into commands, scripts, tables and pages.
void answersTarget(std::string_view text);
/// Reading downloads in every layout: plain numbers, no motif without columns, and what is written is read back.
void downloadTarget(std::string_view text);

struct Target {
    const char* name;  ///< also the name of the folder with its stored inputs
    void (*run)(std::string_view text);
};

inline constexpr Target targets[] = {
    {"block_shape", blockShapeTarget}, {"readers", readersTarget},   {"collections", collectionsTarget},
    {"answers", answersTarget},        {"download", downloadTarget},
};

/// If the promise does not hold, prints its text and ends the process.
void require(bool holds, const char* promise);

}  // namespace varnolix::fuzz
