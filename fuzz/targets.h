#pragma once

#include <string_view>

// The fuzz targets: each takes any text and ends the process by abort() where the program breaks a promise. A target
// states the promise by a plain second way of finding the same thing, not by what the program gave once.

namespace varnolix::fuzz {

/// Recognition of blocks: decisions over the facts gathered row by row equal those over whole blocks.
void blockShapeTarget(std::string_view text);
/// Reading a motif file: motifs, their numbers and their lengths are those that the blocks tell.
void readersTarget(std::string_view text);
/// Both layouts of collection files: motifs, their numbers and their lengths.
void collectionsTarget(std::string_view text);
/// Answers of the dialogue, and the texts that carry them into commands, scripts, tables and pages.
void answersTarget(std::string_view text);

struct Target {
    const char* name;  ///< also the folder of its stored inputs
    void (*run)(std::string_view text);
};

inline constexpr Target targets[] = {
    {"block_shape", blockShapeTarget},
    {"readers", readersTarget},
    {"collections", collectionsTarget},
    {"answers", answersTarget},
};

/// Ends the process with the text of the promise if it does not hold.
void require(bool holds, const char* promise);

}  // namespace varnolix::fuzz
