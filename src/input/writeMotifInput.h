#pragma once

namespace varnolix {

/// Writes the listing of all input motifs, "input_motifs.txt" behind the job's identity. A file that cannot be opened
/// is named on standard error and passed over; one that cannot be written whole ends the run.
void writeMotifInput();

}  // namespace varnolix
