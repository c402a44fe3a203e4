#include "input/readJasparInput.h"

#include "input/removeSpecialCharacters.h"

namespace varnolix {

std::vector<double> jasparRowValues(const Row& row) {
    std::string cleaned;
    for (const std::string_view token : row) {
        if (token.size() == 1 && std::string_view("ACGT[]").find(token[0]) != std::string_view::npos) continue;
        cleaned += removeSpecialCharacters(token);
        cleaned += ' ';
    }
    std::vector<double> values;
    for (const std::string_view token : splitTokens(cleaned)) values.push_back(parseNumber(token));
    return values;
}

Matrix matrixOfJasparRows(const Block& rows) {
    return positionsFromBaseRows(
        {jasparRowValues(rows[1]), jasparRowValues(rows[2]), jasparRowValues(rows[3]), jasparRowValues(rows[4])});
}

void readJasparInput(const Block& rows, int fileIndex) {
    appendMotif(std::string(rows[0][0].substr(1)), matrixOfJasparRows(rows), fileIndex);
}

}  // namespace varnolix
