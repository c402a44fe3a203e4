#pragma once

namespace varnolix {

/// Appends the footer to the text report of the global matching.
void writeFooterGlobalText();

}  // namespace varnolix
