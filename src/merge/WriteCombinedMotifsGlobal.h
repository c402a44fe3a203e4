#pragma once

namespace varnolix {

/// Appends the merged groups of the matching across files to their combined report.
void WriteCombinedMotifsGlobal();

}  // namespace varnolix
