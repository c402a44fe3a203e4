#include "job/tables/pair_placement.h"

#include <algorithm>

#include "input/getConsensusString.h"

namespace varnolix::job {

namespace {

std::string framed(const std::string& letters, int before, std::size_t length) {
    std::string line(static_cast<std::size_t>(before), '-');
    line += letters;
    line.resize(length, '-');
    return line;
}

}  // namespace

std::string columnLetters(const data& motif, MatchingFormat format) {
    const std::string& consensus = format == MatchingFormat::originalMotif ? motif.consensus : motif.revCompConsensus;
    const Matrix& matrix = strandOf(motif, format);
    return consensus.size() == matrix.size() ? consensus : columnLetters(matrix);
}

std::string columnLetters(const Matrix& matrix) {
    std::string letters;
    for (const Column& column : matrix) {
        const std::string letter = getConsensusString({column});
        letters += letter.empty() ? "N" : letter;
    }
    return letters;
}

FramedLetters framedLetters(const std::string& query, const std::string& target, int targetOffset) {
    const int beforeQuery = std::max(0, -targetOffset);
    const int beforeTarget = std::max(0, targetOffset);
    const std::size_t length = std::max(query.size() + static_cast<std::size_t>(beforeQuery),
                                        target.size() + static_cast<std::size_t>(beforeTarget));
    return {framed(query, beforeQuery, length), framed(target, beforeTarget, length)};
}

}  // namespace varnolix::job
