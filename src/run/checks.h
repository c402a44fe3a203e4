#pragma once

#include <string_view>

namespace varnolix {

/// Only digits and points; several points pass, and so does the empty text.
bool checkNumeric(std::string_view text);
/// Not empty, only digits and points, exactly one point: "1" fails, ".5" passes.
bool checkDouble(std::string_view text);
/// Only the digits 1 to 9, so that 10 and 20 are refused; the empty text passes.
bool checkNumThreads(std::string_view text);
/// No blank.
bool checkSpace(std::string_view text);
/// Only upper-case IUPAC letters and "-"; the empty text passes.
bool checkIUPAC(std::string_view text);
/// Only A, C, G, T and "-"; the empty text passes.
bool checkNucleotide(std::string_view text);
/// True when the path exists and its mode has the directory bit.
bool isValidPath(const char* path);

}  // namespace varnolix
