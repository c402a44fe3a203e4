#pragma once

#include "input/input_block.h"

// Which reader takes a block of lines. A block is looked at whenever an empty line or the thirty-second line closes it;
// one that no reader takes is held and grows, and is looked at again and again. The facts that decide are therefore
// gathered while rows are added, each row once, so that a decision costs the same however long the block has become.
// Tested by block_shape_test.cpp.

namespace varnolix {

/// What becomes of a block.
enum class BlockOutcome { nothing, hold, transfac, jaspar, matrixH, matrixV, rawPSSM, meme, consensus, seqAlign };

/// A test of tokens in reading order that stops at the first one that is no number with exactly one point.
struct NumberScan {
    bool started = false;
    bool stopped = false;
    bool numericAtStop = false;  ///< the token that stopped the scan was digits and points all the same

    void add(const Row& row);
};

/// The rows of the block under work and the facts gathered from them.
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

/// Decides over the blocks of one file in turn. The marks that a decision leaves behind count for the later ones.
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
