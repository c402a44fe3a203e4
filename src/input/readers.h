#pragma once

#include <span>
#include <vector>

#include "input/input_block.h"

// The readers of blocks, one for each layout, and the pure functions below them. block_shape.h tells which reader takes
// a block. Each has a unit of its own name.

namespace varnolix {

/// Reads one block: a line of tag and name, then lines of 5 or 6 tokens: position number, A, C, G, T and
/// an optional letter; other lines are skipped.
/// Appends the motif to Datasets.
void readTransfacInput(const Block& rows, int fileIndex);

/// True for a line of 5 or 6 tokens whose tokens 2 to 5 hold only digits and points.
bool isTransfacPosition(const Row& row);

/// The positions among the lines, in their order.
Matrix matrixOfTransfacLines(std::span<const Row> rows);

/// Reads one block: a row with the name behind ">", then the rows of A, C, G, T with or without brackets.
/// Appends the motif to Datasets.
void readJasparInput(const Block& rows, int fileIndex);

Matrix matrixOfJasparRows(const Block& rows);

/// The values of a row that begins with its base: brackets and other odd characters are dropped.
std::vector<double> jasparRowValues(const Row& row);

/// Reads one block: the matrix section of a MEME report; rows that are not four numbers are skipped, titles and
/// dashes among them; the name is "Motif" and the id of the motif in the run.
/// Appends the motif to Datasets.
void readMEMEInput(const Block& rows, int fileIndex);

/// Reads one block: a name row (its first character is dropped), then one position per row, A C G T;
/// any row that is not four numbers is skipped.
/// Appends the motif to Datasets.
void readRawPSSMInput(const Block& rows, int fileIndex);

Matrix matrixOfNumericRows(const Block& rows);

/// Reads one block: a name row (its first character is dropped), then one IUPAC string per row of one token.
/// Appends the motif to Datasets.
void readConsensusInput(const Block& rows, int fileIndex);

Matrix matrixOfIUPAC(const Block& rows);

/// Reads one block: a name row (its first character is dropped), then aligned sequences of one length; gaps
/// count for no base.
/// Appends the motif to Datasets.
void readSeqAlignInput(const Block& rows, int fileIndex);

Matrix matrixOfAlignment(const Block& rows);

/// Reads one block: four rows of values, for A, C, G, T, one token per position; the name is "NA".
/// Appends the motif to Datasets.
void readMatrixHInput(const Block& rows, int fileIndex);

Matrix matrixOfHorizontalRows(const Block& rows);

/// Reads one block: one position per row, A C G T; rows of another token count are skipped; the name is "NA".
/// Appends the motif to Datasets.
void readMatrixVInput(const Block& rows, int fileIndex);

Matrix matrixOfVerticalRows(const Block& rows);

}  // namespace varnolix
