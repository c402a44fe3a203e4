#pragma once

#include <string_view>
#include <vector>

#include "input/input_block.h"
#include "run/shared_records.h"

// The two layouts of collection files: headers with four rows of values (Jaspar, UniPROBE), and TRANSFAC entries. Real
// downloads contain thousands of entries, with or without empty lines between them, so entries are recognised by their
// content. Reference motifs are numbered from 1 within the collection.

namespace varnolix {

/// The motifs of a file with headers (">", id, name) and rows that begin with A, C, G and T. The T row closes a motif.
/// Brackets may be separate tokens, touch the numbers, or be absent.
/// @param taxon stored in every motif; if it is empty, the header's tokens from the third one on are stored instead
std::vector<data> motifsOfBaseRows(const Block& rows, std::string_view taxon);

/// The motifs of a file of TRANSFAC entries. An entry ends at "//", at the first AC, ID, NA or DE line after its
/// position lines, or at the end of the file. The name is taken from the NA line or, failing that, the ID or the DE
/// line; the id from the AC line, or else it is the name. Entries without positions, such as the preamble of a file,
/// are skipped.
std::vector<data> motifsOfTransfacEntries(const Block& rows);

/// Reads the file of the collection named by DBName, splits it into rows of tokens and passes these on. Ends the run if
/// the file cannot be opened.
void readCollection(void (*readMatrices)(const Block& rows));

}  // namespace varnolix
