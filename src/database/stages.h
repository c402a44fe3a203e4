#pragma once

#include "input/input_block.h"

// The stages that read the chosen reference collection into DatabaseDatasets. Each has a source file of its own name in
// stages/.

namespace varnolix {

/// Reads a TRANSFAC collection.
void readTransfacDatabase();
/// Sets DatabaseDatasets to the motifs in these rows.
void readTransfacDBMatrix(const Block& rows);
/// Reads a Jaspar collection.
void readJasparDatabase();
/// Sets DatabaseDatasets to the motifs in these rows.
void readJasparDBMatrix(const Block& rows);
/// Reads a UniPROBE collection.
void readUniprobeDatabase();
/// Sets DatabaseDatasets to the motifs in these rows.
void readUniprobeDBMatrix(const Block& rows);

}  // namespace varnolix
