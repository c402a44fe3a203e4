#pragma once

#include "input/input_block.h"

// Decides which reader takes a block of lines. A block is classified whenever an empty line or the thirty-second line
// closes it. A block that no reader takes is held: more lines are added to it, and it is classified again. The facts
// that decide are therefore gathered as rows are added, once per row, so that a decision costs the same however long
// the block has become. Tested by block_shape_test.cpp.

namespace varnolix {

/// What happens to a block: nothing as it is empty, it is held, or this reader takes it.
enum class BlockOutcome { nothing, hold, transfac, jaspar, matrixH, matrixV, rawPSSM, meme, consensus, seqAlign };

/// Tests tokens in reading order, and stops at the first one that is not a number with exactly one point.
struct NumberScan {
    bool started = false;
    bool stopped = false;
    bool numericAtStop = false;  ///< the token that stopped the scan consists of digits and points, too

    void add(const Row& row);
};

/// The rows of the current block, and the facts gathered from them.
class BlockShape {
  public:
    void addRow(Row row);
    void clear() { *this = BlockShape(); }
    const Block& rows() const { return rows_; }

  private:
    friend class BlockClassifier;

    Block rows_;
    NumberScan allRows_;
    NumberScan rowsFromFifth_;
    bool fifthOnHaveFourTokens_ = true;
    bool thirdOnHaveOneToken_ = true;
    bool thirdOnHaveFourTokens_ = true;
    bool thirdOnAsLongAsSecond_ = true;
    bool secondOnNucleotides_ = true;
};

/// Classifies the blocks of one file in turn. A decision sets marks that influence later decisions.
class BlockClassifier {
  public:
    BlockOutcome classify(const BlockShape& block);

  private:
    BlockOutcome classifyNumbers(const BlockShape& block);
    BlockOutcome classifyMEME(const BlockShape& block);
    BlockOutcome classifySequences(const BlockShape& block);
    BlockOutcome rawPSSM();
    BlockOutcome hold(bool held);
    void take(const NumberScan& scan);
    bool noNumberSeen() const { return !numericSeen_ && !decimalSeen_; }

    bool blockHeld_ = false;
    bool numericSeen_ = false;
    bool decimalSeen_ = false;
};

}  // namespace varnolix
