#pragma once

#include <optional>
#include <span>
#include <string>

#include "run/shared_records.h"
#include "run/system/output_file.h"

// Logos, drawn by WebLogo: two pictures for each motif, its own and that of its reverse complement.

namespace varnolix {

/// The matrix in the layout that WebLogo reads: a head line, then number and values of each position, six significant
/// digits each.
std::string logoMatrixText(const Matrix& matrix);

/// The command that draws one logo. The reverse one is drawn from the same matrix file, by an option of WebLogo.
std::string logoCommand(const std::string& matrixFile, const std::string& logoFile, bool isReverse);

/// Draws both logos of a motif; a tool that fails is not noticed, and leaves a missing or empty picture.
/// Makes the job's picture folder. Several threads may draw logos of different motifs.
/// @param letter 'M' for input motifs, 'D' for reference motifs
/// @return trouble if the matrix file cannot be written, or if a symbolic link stands where the folder or a picture
/// should be
std::optional<OutputTrouble> drawLogos(const Matrix& matrix, char letter, long id);

/// Draws the logos of all motifs in their order and shows how far it is: motifs on all threads if the file
/// "calls-may-overlap" stands beside WebLogo (see `callsAtOnce`), otherwise one after the other. If several motifs have
/// the same number, the last one keeps its pictures. Ends the run on trouble.
/// @param drawBoth draws the logos of one motif
void drawAllLogos(std::span<const data> motifs,
                  std::optional<OutputTrouble> (*drawBoth)(const Matrix& matrix, long id));

}  // namespace varnolix
