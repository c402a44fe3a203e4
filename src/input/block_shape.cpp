#include "input/block_shape.h"

#include <algorithm>

#include "run/checks.h"

namespace varnolix {

namespace {

constexpr std::size_t leastTransfacRows = 6;
constexpr std::size_t jasparRows = 5;
constexpr std::size_t horizontalRows = 4;

bool startsWithBases(const Block& rows) {
    constexpr std::string_view bases[] = {"A", "C", "G", "T"};
    for (std::size_t base = 0; base < std::size(bases); ++base) {
        if (rows[base + 1][0] != bases[base]) return false;
    }
    return true;
}

}  // namespace

void NumberScan::add(const Row& row) {
    started = true;
    if (stopped) return;
    // checkDouble implies checkNumeric, so this one test covers both.
    const auto odd = std::find_if_not(row.begin(), row.end(), checkDouble);
    if (odd == row.end()) return;
    stopped = true;
    numericAtStop = checkNumeric(*odd);
}

void BlockShape::addRow(Row row) {
    const std::size_t place = rows_.size();
    allRows_.add(row);
    if (place >= 1) secondOnNucleotides_ = secondOnNucleotides_ && checkNucleotide(row[0]);
    if (place >= 2) {
        thirdOnHaveOneToken_ = thirdOnHaveOneToken_ && row.size() == 1;
        thirdOnHaveFourTokens_ = thirdOnHaveFourTokens_ && row.size() == 4;
        thirdOnAsLongAsSecond_ = thirdOnAsLongAsSecond_ && row[0].size() == rows_[1][0].size();
    }
    if (place >= 4) {
        fifthOnHaveFourTokens_ = fifthOnHaveFourTokens_ && row.size() == 4;
        rowsFromFifth_.add(row);
    }
    rows_.push_back(std::move(row));
}

void BlockClassifier::take(const NumberScan& scan) {
    if (!scan.started) return;
    numericSeen_ = !scan.stopped || scan.numericAtStop;
    decimalSeen_ = !scan.stopped;
}

BlockOutcome BlockClassifier::hold(bool held) {
    blockHeld_ = held;
    return BlockOutcome::hold;
}

BlockOutcome BlockClassifier::rawPSSM() {
    blockHeld_ = false;
    return BlockOutcome::rawPSSM;
}

BlockOutcome BlockClassifier::classify(const BlockShape& block) {
    const Block& rows = block.rows_;
    if (rows.empty()) return BlockOutcome::nothing;
    const std::size_t count = rows.size();
    const std::size_t tokens = rows[0].size();
    if (tokens == 2 && count >= leastTransfacRows) return BlockOutcome::transfac;
    if (tokens <= 2 && count == jasparRows && startsWithBases(rows)) return BlockOutcome::jaspar;
    if (tokens != 1) return classifyNumbers(block);
    if (count == 2) {
        const bool consensus = rows[1].size() == 1 && checkIUPAC(rows[1][0]);
        return consensus ? BlockOutcome::consensus : BlockOutcome::hold;
    }
    if (count >= 4 && rows[2].size() == 1 && rows[3][0] == "letter-probability") return classifyMEME(block);
    if (count == 1) return blockHeld_ ? BlockOutcome::hold : rawPSSM();
    return classifySequences(block);
}

BlockOutcome BlockClassifier::classifyNumbers(const BlockShape& block) {
    take(block.allRows_);
    if (block.allRows_.stopped && noNumberSeen()) return BlockOutcome::hold;
    const Block& rows = block.rows_;
    // Exactly four rows are always a horizontal matrix, even if a vertical one of four positions was meant.
    if (rows.size() != horizontalRows) return BlockOutcome::matrixV;
    const bool sameLength =
        std::all_of(rows.begin(), rows.end(), [&](const Row& row) { return row.size() == rows[0].size(); });
    if (!sameLength) return hold(false);
    blockHeld_ = true;
    return BlockOutcome::matrixH;
}

BlockOutcome BlockClassifier::classifyMEME(const BlockShape& block) {
    const bool shaped = block.rows_.size() > 4 && block.fifthOnHaveFourTokens_;
    if (shaped) take(block.rowsFromFifth_);
    const bool numbers = shaped && !block.rowsFromFifth_.stopped;
    return !numbers && noNumberSeen() ? BlockOutcome::hold : BlockOutcome::meme;
}

BlockOutcome BlockClassifier::classifySequences(const BlockShape& block) {
    const std::size_t secondTokens = block.rows_[1].size();
    if (secondTokens == 4 && block.thirdOnHaveFourTokens_) return rawPSSM();
    if (secondTokens != 1 || !block.thirdOnHaveOneToken_) return hold(false);
    if (!block.thirdOnAsLongAsSecond_ || !block.secondOnNucleotides_) return hold(true);
    blockHeld_ = false;
    return BlockOutcome::seqAlign;
}

}  // namespace varnolix
