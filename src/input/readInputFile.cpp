#include "input/stages.h"

#include <utility>

#include "input/block_shape.h"
#include "input/readers.h"
#include "run/run_text.h"

namespace varnolix {

namespace {

constexpr int mostBlockLines = 31;

using Reader = void (*)(const Block&, int);

/// The reader for an outcome, or nullptr if the block is held or empty.
Reader readerFor(BlockOutcome outcome) {
    switch (outcome) {
        case BlockOutcome::transfac:
            return readTransfacInput;
        case BlockOutcome::jaspar:
            return readJasparInput;
        case BlockOutcome::matrixH:
            return readMatrixHInput;
        case BlockOutcome::matrixV:
            return readMatrixVInput;
        case BlockOutcome::rawPSSM:
            return readRawPSSMInput;
        case BlockOutcome::meme:
            return readMEMEInput;
        case BlockOutcome::consensus:
            return readConsensusInput;
        case BlockOutcome::seqAlign:
            return readSeqAlignInput;
        case BlockOutcome::nothing:
        case BlockOutcome::hold:
            break;
    }
    return nullptr;
}

}  // namespace

void readInputFile(const std::string& fileName, int fileIndex) {
    std::string text;
    if (!readWholeFile(inputPath + fileName, text)) endRun(invalidInputPathMessage);

    BlockShape block;
    BlockClassifier classifier;
    int blockLineCount = 0;
    forEachLine(text, [&](std::string_view rawLine) {
        const std::string_view line = stripLineEnd(rawLine);
        if (!line.empty() && blockLineCount < mostBlockLines) {
            block.addRow(splitTokens(line));
            ++blockLineCount;
            return;
        }
        // The line that closes a block is dropped, whatever it contains.
        blockLineCount = 0;
        if (const Reader read = readerFor(classifier.classify(block))) {
            read(block.rows(), fileIndex);
            block.clear();
        }
    });
    ++dNum;
    mNum = 1;
}

}  // namespace varnolix
