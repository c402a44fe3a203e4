#pragma once

#include <span>
#include <vector>

#include "input/input_block.h"

// The block readers, one per layout, and the pure functions that they use. block_shape.h decides which reader takes a
// block, and makes sure that the block has the rows and tokens which that reader needs; a caller of the pure functions
// has to do the same. No row is ever empty. Each reader has a source file of its own name.
//
// Every position is divided by its sum, except in consensus blocks, whose letters have fixed frequencies.

namespace varnolix {

/// Reads one block: a line with a tag and the name, then lines of 5 or 6 tokens: position number, A, C, G, T and an
/// optional letter. Other lines are skipped. Needs one row of two tokens.
/// Appends the motif to Datasets.
void readTransfacInput(const Block& rows, int fileIndex);

/// Whether the line has 5 or 6 tokens, of which the second to the fifth consist of digits and points only.
bool isTransfacPosition(const Row& row);

/// The positions among the lines, in the order of the lines. There may be no lines at all.
Matrix matrixOfTransfacLines(std::span<const Row> rows);

/// Reads one block: a row with ">" and the name, then one row each for A, C, G and T, with or without brackets.
/// Appends the motif to Datasets.
void readJasparInput(const Block& rows, int fileIndex);

/// Needs five rows. The first one, with the name, is ignored.
Matrix matrixOfJasparRows(const Block& rows);

/// The values of a row that begins with its base. Brackets and other odd characters are ignored.
std::vector<double> jasparRowValues(const Row& row);

/// Reads one block: the matrix section of a MEME report. Rows that are not four numbers, such as titles and dashes, are
/// skipped. The name is "Motif" and the id of the motif in the run.
/// Appends the motif to Datasets.
void readMEMEInput(const Block& rows, int fileIndex);

/// Reads one block: a row with the name, whose first character is dropped, then one position per row: A, C, G, T. Rows
/// that are not four numbers are skipped.
/// Appends the motif to Datasets.
void readRawPSSMInput(const Block& rows, int fileIndex);

/// One position for every row of four numbers. There may be no rows at all.
Matrix matrixOfNumericRows(const Block& rows);

/// Reads one block: a row with the name, whose first character is dropped, then IUPAC strings. Only rows of one token
/// are read. Appends the motif to Datasets.
void readConsensusInput(const Block& rows, int fileIndex);

/// One position per letter, gaps and other characters excepted. Needs one row, the one with the name, which is ignored.
Matrix matrixOfIUPAC(const Block& rows);

/// Reads one block: a row with the name, whose first character is dropped, then aligned sequences of equal length. A
/// gap does not count for any base. Appends the motif to Datasets.
void readSeqAlignInput(const Block& rows, int fileIndex);

/// Needs two rows: the one with the name, which is ignored, and at least one sequence. No sequence may be shorter than
/// the first.
Matrix matrixOfAlignment(const Block& rows);

/// Reads one block: four rows of values, for A, C, G and T, with one token per position. The name is "NA".
/// Appends the motif to Datasets.
void readMatrixHInput(const Block& rows, int fileIndex);

/// Needs four rows, none of which may be shorter than the first.
Matrix matrixOfHorizontalRows(const Block& rows);

/// Reads one block: one position per row: A, C, G, T. Rows that do not have four tokens are skipped. The name is "NA".
/// Appends the motif to Datasets.
void readMatrixVInput(const Block& rows, int fileIndex);

/// One position for every row of four tokens. There may be no rows at all.
Matrix matrixOfVerticalRows(const Block& rows);

}  // namespace varnolix
