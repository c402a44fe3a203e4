#pragma once

#include <string_view>
#include <vector>

#include "input/block_shape.h"

// Blocks of a motif file found the slow way: every decision looks at the whole block anew and nothing is gathered
// beforehand. Shares the record of rows and the names of the outcomes with the program, but none of its code.

namespace varnolix::plain {

/// What one decision leaves to the next.
struct Marks {
    bool held = false;
    bool numeric = false;
    bool decimal = false;
};

/// The decision over a block.
BlockOutcome classify(const Block& rows, Marks& marks);

/// One decision over a block.
struct Decision {
    BlockOutcome outcome;
    Block rows;  ///< as they stood at the decision
};

/// All decisions over a motif file, in their order. The rows point into `text`.
std::vector<Decision> decisionsOver(std::string_view text);

/// Tokens of every line that holds any, blocks or not. The rows point into `text`.
Block rowsOf(std::string_view text);

/// True when the token holds only digits and points, and at least `least` and at most `most` points.
bool isNumber(std::string_view token, int least, int most);

}  // namespace varnolix::plain
