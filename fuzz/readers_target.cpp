#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <string>

#include "fuzz/targets.h"
#include "input/stages.h"
#include "plain/plain_blocks.h"
#include "run/shared_records.h"

namespace varnolix::fuzz {

namespace {

/// A file in memory that can be opened by a path.
class MemoryFile {
  public:
    explicit MemoryFile(std::string_view text) : number_(memfd_create("motifs", 0)) {
        require(number_ >= 0, "a file in memory can be made");
        while (!text.empty()) {
            const ssize_t written = write(number_, text.data(), text.size());
            require(written > 0, "a file in memory takes the text");
            text.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    ~MemoryFile() { close(number_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    static const char* folder() { return "/proc/self/fd/"; }
    std::string name() const { return std::to_string(number_); }

  private:
    int number_;
};

bool allNumbers(const Row& row, std::size_t first, std::size_t count) {
    const auto tokens = row.begin() + static_cast<std::ptrdiff_t>(first);
    return std::all_of(tokens, tokens + static_cast<std::ptrdiff_t>(count), [](std::string_view token) {
        return plain::isNumber(token, 0, static_cast<int>(token.size()));
    });
}

template <class Test>
std::size_t countRows(const Block& rows, Test test) {
    return static_cast<std::size_t>(std::count_if(rows.begin(), rows.end(), test));
}

/// The number of values in a row of a Jaspar block: its tokens that contain a digit or a point.
std::size_t jasparValues(const Row& row) {
    return static_cast<std::size_t>(std::count_if(row.begin(), row.end(), [](std::string_view token) {
        return std::any_of(token.begin(), token.end(),
                           [](char c) { return std::string_view("0123456789.").find(c) != std::string_view::npos; });
    }));
}

std::size_t consensusLetters(const Row& row) {
    return static_cast<std::size_t>(std::count_if(row[0].begin(), row[0].end(), [](char c) { return c != '-'; }));
}

/// The number of positions that a block gives.
std::size_t positionsOf(const plain::Decision& block) {
    const Block& rows = block.rows;
    switch (block.outcome) {
        case BlockOutcome::transfac:
            return countRows(
                rows, [](const Row& row) { return (row.size() == 5 || row.size() == 6) && allNumbers(row, 1, 4); });
        case BlockOutcome::jaspar:
            return jasparValues(rows[1]);
        case BlockOutcome::matrixH:
            return rows[0].size();
        case BlockOutcome::matrixV:
            return countRows(rows, [](const Row& row) { return row.size() == 4; });
        case BlockOutcome::rawPSSM:
        case BlockOutcome::meme:
            return countRows(rows, [](const Row& row) { return row.size() == 4 && allNumbers(row, 0, 4); });
        case BlockOutcome::consensus:
            return consensusLetters(rows[1]);
        case BlockOutcome::seqAlign:
            return rows[1][0].size();
        case BlockOutcome::nothing:
        case BlockOutcome::hold:
            break;
    }
    return 0;
}

void startFile(const MemoryFile& file) {
    Datasets.clear();
    Matrices = {};
    FileNameType.assign(1, {file.name(), 10, 0, 1});
    dNum = mNum = matrixIDNum = 1;
    inputPath = MemoryFile::folder();
}

void checkMotif(const data& motif, const plain::Decision& block, std::size_t number) {
    require(motif.matrixID == static_cast<int>(number) && motif.motifNum == motif.matrixID && motif.datasetNum == 1,
            "motifs are numbered from 1 without gaps");
    require(motif.matrix.size() == positionsOf(block), "a motif has the positions of its block");
    require(motif.revCompMatrix.size() == motif.matrix.size(), "the reverse complement is as long as the motif");
    require(motif.consensus.size() <= motif.matrix.size(), "a position gives at most one letter");
    require(motif.revCompConsensus.size() == motif.consensus.size() || block.outcome == BlockOutcome::matrixV ||
                block.outcome == BlockOutcome::matrixH,
            "shares of 0 to 1 give as many letters on both strands");
}

}  // namespace

void readersTarget(std::string_view text) {
    const MemoryFile file(text);
    startFile(file);
    readInputFile(file.name(), 0);

    std::size_t count = 0;
    for (const plain::Decision& block : plain::decisionsOver(text)) {
        if (block.outcome == BlockOutcome::nothing || block.outcome == BlockOutcome::hold) continue;
        require(count < Datasets.size(), "every block that a reader takes gives a motif");
        checkMotif(Datasets[count], block, count + 1);
        ++count;
    }
    require(count == Datasets.size(), "only blocks that a reader takes give a motif");
    require(FileNameType[0].motifCount == static_cast<int>(count), "the count of the file is that of its motifs");
    require(dNum == 2 && mNum == 1, "the next file is numbered 2 and its motifs begin at 1");
}

}  // namespace varnolix::fuzz
