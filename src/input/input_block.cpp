#include "input/input_block.h"

#include <sys/stat.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <utility>

#include "input/getConsensusString.h"
#include "input/getRevCompMotif.h"
#include "run/checks.h"
#include "run/system/memory_limits.h"
#include "run/system/run_limits.h"

namespace varnolix {

namespace {

constexpr std::string_view strippedAtLineEnd = " \n\r\t";

/// Most lines of motif files have no more tokens than this.
constexpr std::size_t usualTokens = 32;

constexpr bool isTokenBorder(char c) {
    return c == ' ' || c == '\t';
}

}  // namespace

Row splitTokens(std::string_view line) {
    Row tokens;
    tokens.reserve(std::min(line.size() / 2 + 1, usualTokens));
    const char* from = line.data();
    const char* const end = from + line.size();
    while ((from = std::find_if_not(from, end, isTokenBorder)) != end) {
        const char* const to = std::find_if(from, end, isTokenBorder);
        tokens.emplace_back(from, to);
        from = to;
    }
    return tokens;
}

std::string_view stripLineEnd(std::string_view line) {
    return line.substr(0, line.find_last_not_of(strippedAtLineEnd) + 1);
}

bool readWholeFile(const std::string& path, std::string& text) {
    // Check the type before opening: opening alone can have an effect on a device.
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || !(S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode))) return false;
    std::ifstream file(path, std::ios::binary);
    if (!file.is_open()) return false;
    // Leave memory for what is made from the text. While a text grows it is copied, so both copies count for a moment.
    const std::size_t most = memoryLeft() / 2;
    const auto requireMemory = [&](std::size_t size) {
        if (size > most) endForLack("the file " + path + " does not fit the memory");
    };
    text.clear();
    if (S_ISREG(status.st_mode)) {
        requireMemory(static_cast<std::size_t>(status.st_size));
        text.reserve(static_cast<std::size_t>(status.st_size));
    }
    std::vector<char> part(std::size_t{1} << 20);
    while (file.read(part.data(), static_cast<std::streamsize>(part.size())) || file.gcount() > 0) {
        const std::size_t size = text.size() + static_cast<std::size_t>(file.gcount());
        requireMemory(size > text.capacity() ? size + text.capacity() : size);
        text.append(part.data(), static_cast<std::size_t>(file.gcount()));
    }
    return true;
}

double parseNumber(std::string_view token) {
    // strtod accepts more than from_chars (signs, hexadecimal, "inf"), so only plain decimals take the fast path.
    if (checkNumeric(token)) {
        double value = 0;
        if (std::from_chars(token.data(), token.data() + token.size(), value).ec == std::errc{}) return value;
    }
    return std::strtod(std::string(token).c_str(), nullptr);
}

Column frequencies(const Column& values) {
    const double sum = values[0] + values[1] + values[2] + values[3];
    return {values[0] / sum, values[1] / sum, values[2] / sum, values[3] / sum};
}

Column frequenciesOfTokens(const Row& row, std::size_t first) {
    return frequencies({parseNumber(row[first]), parseNumber(row[first + 1]), parseNumber(row[first + 2]),
                        parseNumber(row[first + 3])});
}

bool fourNumeric(const Row& row, std::size_t first) {
    return checkNumeric(row[first]) && checkNumeric(row[first + 1]) && checkNumeric(row[first + 2]) &&
           checkNumeric(row[first + 3]);
}

std::string nameOrNA(std::string_view token) {
    return token.size() > 1 ? std::string(token.substr(1)) : std::string("NA");
}

Matrix positionsFromBaseRows(const std::array<std::vector<double>, 4>& rows) {
    Matrix matrix;
    matrix.reserve(rows[0].size());
    for (std::size_t position = 0; position < rows[0].size(); ++position) {
        Column values{};
        for (std::size_t base = 0; base < rows.size(); ++base) {
            if (position < rows[base].size()) values[base] = rows[base][position];
        }
        matrix.push_back(frequencies(values));
    }
    return matrix;
}

void deriveForms(data& motif) {
    motif.consensus = getConsensusString(motif.matrix);
    motif.revCompMatrix = getRevCompMotif(motif.matrix);
    motif.revCompConsensus = getConsensusString(motif.revCompMatrix);
}

void appendMotif(std::string name, Matrix matrix, int fileIndex) {
    requireAtMost(Datasets.size() + 1, mostMotifs, "motifs");
    requireAtMost(matrix.size(), mostColumns, "positions of a motif");
    FileNameType[static_cast<std::size_t>(fileIndex)].motifCount = mNum;
    Matrices.matrixID = matrixIDNum;
    Matrices.motifName = std::move(name);
    Matrices.datasetNum = dNum;
    Matrices.motifNum = mNum;
    Matrices.matrix = std::move(matrix);
    deriveForms(Matrices);
    Datasets.push_back(Matrices);
    ++mNum;
    ++matrixIDNum;
}

}  // namespace varnolix
