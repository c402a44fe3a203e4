#pragma once

#include <string>

#include "run/shared_records.h"

// Logos, drawn by WebLogo: two pictures for each motif, its own and that of its reverse complement.

namespace varnolix {

/// The matrix in the layout that WebLogo reads: a head line, then number and values of each position, six significant
/// digits each.
std::string logoMatrixText(const Matrix& matrix);

/// The command that draws one logo. The reverse one is drawn from the same matrix file, by an option of WebLogo.
std::string logoCommand(const std::string& matrixFile, const std::string& logoFile, bool isReverse);

/// Draws both logos of a motif; a tool that fails is not noticed, and leaves a missing or empty picture.
/// Makes the job's picture folder. Ends the run if the matrix file cannot be written, or if a symbolic link stands
/// where the folder or a picture should be.
/// @param letter 'M' for input motifs, 'D' for reference motifs
void drawLogos(const Matrix& matrix, char letter, long id);

}  // namespace varnolix
