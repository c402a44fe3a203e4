#pragma once

#include <string_view>
#include <vector>

#include "input/block_shape.h"

// Blocks of a motif file found the slow way: every decision looks at the whole block anew and nothing is gathered
// beforehand. Shares the record of rows and the names of the outcomes with the program, but none of its code.

namespace varnolix::fuzz {

/// One decision over a block.
struct PlainDecision {
    BlockOutcome outcome;
    Block rows;  ///< as they stood at the decision
};

/// All decisions over a motif file, in their order. The rows point into `text`.
std::vector<PlainDecision> plainDecisions(std::string_view text);

/// Tokens of every line that holds any, blocks or not. The rows point into `text`.
Block plainRows(std::string_view text);

/// True when the token holds only digits and points, and at least `least` and at most `most` points.
bool isNumber(std::string_view token, int least, int most);

}  // namespace varnolix::fuzz
