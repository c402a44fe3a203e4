#include "fuzz/targets.h"
#include "plain/plain_blocks.h"

namespace varnolix::fuzz {

void blockShapeTarget(std::string_view text) {
    BlockShape block;
    BlockClassifier classifier;
    for (const plain::Decision& expected : plain::decisionsOver(text)) {
        // A held block grows: only its new rows are added.
        for (std::size_t row = block.rows().size(); row < expected.rows.size(); ++row) block.addRow(expected.rows[row]);
        require(block.rows() == expected.rows, "a block holds the rows that were added");
        const BlockOutcome outcome = classifier.classify(block);
        require(outcome == expected.outcome, "a decision over gathered facts is the one over the whole block");
        if (outcome != BlockOutcome::hold) block.clear();
    }
}

}  // namespace varnolix::fuzz
