#pragma once

namespace varnolix {

/// Appends the footer to the combined report of the matching within and across files.
void writeFooterCombinedMatrixGlobalAndLocal();

}  // namespace varnolix
