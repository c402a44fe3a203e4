#pragma once

#include <string_view>

namespace varnolix {

/// Only digits and points. Several points are fine, and so is the empty text.
bool checkNumeric(std::string_view text);
/// Only digits and exactly one point: "1" fails, ".5" passes, and so does a lone ".".
bool checkDouble(std::string_view text);
/// Only the digits 1 to 9, so 10 and 20 are refused. The empty text passes.
bool checkNumThreads(std::string_view text);
/// Contains no blank.
bool checkSpace(std::string_view text);
/// Only upper-case IUPAC letters and "-". The empty text passes.
bool checkIUPAC(std::string_view text);
/// Only A, C, G, T and "-". The empty text passes.
bool checkNucleotide(std::string_view text);
/// Whether the path exists and its mode has the directory bit.
bool isValidPath(const char* path);

}  // namespace varnolix
