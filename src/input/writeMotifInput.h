#pragma once

namespace varnolix {

/// Writes the listing of all input motifs, "input_motifs.txt" behind the job's identity. A file that cannot be opened
/// is passed over without a message.
void writeMotifInput();

}  // namespace varnolix
