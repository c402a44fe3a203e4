#pragma once

#include <string_view>
#include <vector>

#include "input/input_block.h"
#include "run/shared_records.h"

// The two layouts of collection files: headers with four rows of values (Jaspar, UniPROBE), and TRANSFAC entries. Real
// downloads hold thousands of entries in a row, with or without empty lines between them, so blocks are told by their
// content. Reference motifs are numbered from 1 within the collection.

namespace varnolix {

/// The motifs of a file of headers (">", id, name) and rows that begin with A, C, G, T; the T row closes a motif.
/// Brackets may stand apart, touch the numbers, or be absent.
/// @param taxon stored in every motif; where it is empty, the header's tokens from the third on are
std::vector<data> motifsOfBaseRows(const Block& rows, std::string_view taxon);

/// The motifs of a file of TRANSFAC entries. An entry ends at "//", at the first AC, ID, NA or DE line behind its
/// position lines, or at the end of the file. The id is that of the AC line, else the name; the name that of the NA,
/// else the ID, else the DE line. Entries without positions, such as a file's preamble, are no motifs.
std::vector<data> motifsOfTransfacEntries(const Block& rows);

/// Reads the file of the collection that DBName tells, cut into rows of tokens, and hands the rows over. Ends the
/// process if the file cannot be opened.
void readCollection(void (*readMatrices)(const Block& rows));

}  // namespace varnolix
