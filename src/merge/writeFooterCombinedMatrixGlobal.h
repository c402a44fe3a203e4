#pragma once

namespace varnolix {

/// Appends the footer to the combined report of the matching across files.
void writeFooterCombinedMatrixGlobal();

}  // namespace varnolix
