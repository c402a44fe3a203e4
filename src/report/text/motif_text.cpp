#include "report/text/motif_text.h"

#include "report/text/text_columns.h"

namespace varnolix {

std::string matrixRows(const Matrix& matrix) {
    constexpr std::size_t cellWidth = 12;
    std::string rows;
    std::string cell;
    for (const Column& column : matrix) {
        for (const double value : column) {
            cell.clear();
            appendFixed(cell, value);
            appendPadded(rows, cell, cellWidth);
        }
        rows += '\n';
    }
    return rows;
}

std::string matrixBlock(const data& motif, const char* reverseTitle) {
    return "Original motif\n" + matrixRows(motif.matrix) + "Consensus sequence: " + motif.consensus + "\n\n" +
           reverseTitle + "\n" + matrixRows(motif.revCompMatrix) + "Consensus sequence: " + motif.revCompConsensus +
           "\n";
}

const std::string& keptMatrixBlock(const std::vector<data>& motifs, const data& motif,
                                   std::vector<std::string>& texts) {
    texts.resize(motifs.size());
    std::string& text = texts[static_cast<std::size_t>(&motif - motifs.data())];
    if (text.empty()) text = matrixBlock(motif);
    return text;
}

std::string consensusBlock(const data& motif) {
    return "Consensus sequence (original motif): " + motif.consensus +
           "\nConsensus sequence (reverse complement motif): " + motif.revCompConsensus + "\n";
}

}  // namespace varnolix
