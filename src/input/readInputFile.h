#pragma once

#include <string>

namespace varnolix {

/// Reads one motif file: cuts it into blocks, at empty lines or after 31 lines, and hands each to the reader for its
/// shape. Blocks that no reader takes are held, joined by the lines behind them, and lost at the end of the file. A
/// last line without a line end is not read, as blocks are closed by a line.
/// Appends to: Datasets. Ends the process if the file cannot be opened.
/// @param fileIndex 0-based place of the file in FileNameType
void readInputFile(const std::string& fileName, int fileIndex);

}  // namespace varnolix
