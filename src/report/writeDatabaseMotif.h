#pragma once

namespace varnolix {

/// Makes the logos of all reference motifs, one after the other.
void writeDatabaseMotif();

}  // namespace varnolix
