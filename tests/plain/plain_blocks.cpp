#include "plain/plain_blocks.h"

#include <climits>
#include <cstring>

namespace varnolix::plain {

namespace {

bool isOneOf(char c, const char* set) {
    return c != '\0' && std::strchr(set, c) != nullptr;
}

bool allOf(std::string_view token, const char* set) {
    for (const char c : token) {
        if (!isOneOf(c, set)) return false;
    }
    return true;
}

Row tokensOf(std::string_view line) {
    Row tokens;
    std::size_t at = 0;
    while (at < line.size()) {
        std::size_t end = at;
        while (end < line.size() && !isOneOf(line[end], " \t")) ++end;
        if (end > at) tokens.push_back(line.substr(at, end - at));
        at = end + 1;
    }
    return tokens;
}

/// The lines of a text, the one behind the last line end included, without blanks and the like at their ends.
std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t begin = 0;
    for (std::size_t at = 0; at <= text.size(); ++at) {
        if (at < text.size() && text[at] != '\n') continue;
        std::size_t end = at;
        while (end > begin && isOneOf(text[end - 1], " \r\t")) --end;
        lines.push_back(text.substr(begin, end - begin));
        begin = at + 1;
    }
    return lines;
}

bool rowsHaveTokens(const Block& rows, std::size_t first, std::size_t count) {
    for (std::size_t row = first; row < rows.size(); ++row) {
        if (rows[row].size() != count) return false;
    }
    return true;
}

/// Tests the tokens of the rows from `first` on; true when all are numbers with exactly one point.
bool testTokens(const Block& rows, std::size_t first, Marks& marks) {
    for (std::size_t row = first; row < rows.size(); ++row) {
        for (const std::string_view token : rows[row]) {
            marks.numeric = isNumber(token, 0, INT_MAX);
            marks.decimal = isNumber(token, 1, 1);
            if (!marks.numeric || !marks.decimal) return false;
        }
        marks.numeric = true;
    }
    return true;
}

BlockOutcome classifyNumbers(const Block& rows, Marks& marks) {
    const bool all = testTokens(rows, 0, marks);
    if (!all && !marks.numeric && !marks.decimal) return BlockOutcome::hold;
    if (rows.size() != 4) return BlockOutcome::matrixV;
    marks.held = rowsHaveTokens(rows, 1, rows[0].size());
    return marks.held ? BlockOutcome::matrixH : BlockOutcome::hold;
}

BlockOutcome classifyMEME(const Block& rows, Marks& marks) {
    const bool shaped = rows.size() > 4 && rowsHaveTokens(rows, 4, 4);
    const bool numbers = shaped && testTokens(rows, 4, marks);
    return !numbers && !marks.numeric && !marks.decimal ? BlockOutcome::hold : BlockOutcome::meme;
}

BlockOutcome classifySequences(const Block& rows, Marks& marks) {
    marks.held = false;
    if (!rowsHaveTokens(rows, 2, 1)) return BlockOutcome::hold;
    marks.held = true;
    for (std::size_t row = 1; row < rows.size(); ++row) {
        if (rows[row][0].size() != rows[1][0].size()) return BlockOutcome::hold;
        if (!allOf(rows[row][0], "-ACGT")) return BlockOutcome::hold;
    }
    marks.held = false;
    return BlockOutcome::seqAlign;
}

}  // namespace

bool isNumber(std::string_view token, int least, int most) {
    int points = 0;
    for (const char c : token) points += c == '.' ? 1 : 0;
    return allOf(token, "0123456789.") && points >= least && points <= most;
}

BlockOutcome classify(const Block& rows, Marks& marks) {
    const std::size_t count = rows.size();
    if (count == 0) return BlockOutcome::nothing;
    const std::size_t tokens = rows[0].size();
    if (tokens == 2 && count >= 6) return BlockOutcome::transfac;
    if (tokens <= 2 && count == 5 && rows[1][0] == "A" && rows[2][0] == "C" && rows[3][0] == "G" && rows[4][0] == "T") {
        return BlockOutcome::jaspar;
    }
    if (tokens != 1) return classifyNumbers(rows, marks);
    if (count == 2) {
        const bool letters = rows[1].size() == 1 && allOf(rows[1][0], "-ABCDGHKMNRSTVWY");
        return letters ? BlockOutcome::consensus : BlockOutcome::hold;
    }
    if (count > 3 && rows[2].size() == 1 && rows[3][0] == "letter-probability") return classifyMEME(rows, marks);
    if (count == 1 && marks.held) return BlockOutcome::hold;
    if (count >= 3 && rows[1].size() == 1) return classifySequences(rows, marks);
    marks.held = false;
    const bool raw = count == 1 || (rows[1].size() == 4 && rowsHaveTokens(rows, 2, 4));
    return raw ? BlockOutcome::rawPSSM : BlockOutcome::hold;
}

std::vector<Decision> decisionsOver(std::string_view text) {
    constexpr int sliceLines = 31;
    std::vector<Decision> decisions;
    Marks marks;
    Block rows;
    int lines = 0;
    for (const std::string_view line : linesOf(text)) {
        if (!line.empty() && lines < sliceLines) {
            rows.push_back(tokensOf(line));
            ++lines;
            continue;
        }
        lines = 0;
        const BlockOutcome outcome = classify(rows, marks);
        decisions.push_back({outcome, rows});
        if (outcome != BlockOutcome::hold) rows.clear();
    }
    return decisions;
}

Block rowsOf(std::string_view text) {
    Block rows;
    for (const std::string_view line : linesOf(text)) {
        if (!line.empty()) rows.push_back(tokensOf(line));
    }
    return rows;
}

}  // namespace varnolix::plain
