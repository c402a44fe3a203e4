#include "input/readers.h"

#include "input/removeSpecialCharacters.h"

namespace varnolix {

std::vector<double> jasparRowValues(const Row& row) {
    std::vector<double> values;
    values.reserve(row.size());
    for (const std::string_view token : row) {
        // Nothing is left of a lone bracket or base, or of any other token without a digit or point.
        const std::string cleaned = removeSpecialCharacters(token);
        if (!cleaned.empty()) values.push_back(parseNumber(cleaned));
    }
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
