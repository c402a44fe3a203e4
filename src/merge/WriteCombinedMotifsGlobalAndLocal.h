#pragma once

namespace varnolix {

/// Appends the merged groups of the matching within and across files to their combined report.
void WriteCombinedMotifsGlobalAndLocal();

}  // namespace varnolix
