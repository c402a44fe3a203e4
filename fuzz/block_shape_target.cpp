#include "fuzz/plain_blocks.h"
#include "fuzz/targets.h"

namespace varnolix::fuzz {

void blockShapeTarget(std::string_view text) {
    BlockShape block;
    BlockClassifier classifier;
    for (const PlainDecision& plain : plainDecisions(text)) {
        // A held block grows: only its new rows are added.
        for (std::size_t row = block.rows().size(); row < plain.rows.size(); ++row) block.addRow(plain.rows[row]);
        require(block.rows() == plain.rows, "a block holds the rows that were added");
        const BlockOutcome outcome = classifier.classify(block);
        require(outcome == plain.outcome, "a decision over gathered facts is the one over the whole block");
        if (outcome != BlockOutcome::hold) block.clear();
    }
}

}  // namespace varnolix::fuzz
