#pragma once

#include "input/input_block.h"

// The stages that read the chosen reference collection into DatabaseDatasets. Each has a unit of its own name in
// stages/.

namespace varnolix {

/// Reads a TRANSFAC collection.
void readTransfacDatabase();
/// Appends the motifs of its lines.
void readTransfacDBMatrix(const Block& rows);
/// Reads a Jaspar collection.
void readJasparDatabase();
/// Appends the motifs of its lines.
void readJasparDBMatrix(const Block& rows);
/// Reads a UniPROBE collection.
void readUniprobeDatabase();
/// Appends the motifs of its lines.
void readUniprobeDBMatrix(const Block& rows);

}  // namespace varnolix
