#pragma once

namespace varnolix {

/// Makes the logos of all input motifs, one after the other.
void writeMotif();

}  // namespace varnolix
