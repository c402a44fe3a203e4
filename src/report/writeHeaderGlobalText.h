#pragma once

namespace varnolix {

/// Empties the text report of the global matching and writes its header.
void writeHeaderGlobalText();

}  // namespace varnolix
