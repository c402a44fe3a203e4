#pragma once

#include <string>
#include <string_view>

// Numbers of downloads as plain decimal text: digits with at most one point, so that no digit is lost on the way.

namespace varnolix::job {

/// Whether the text is meant as a number, taken or not: it begins like one, or is "nan" or "inf".
bool looksLikeNumber(std::string_view token);

/// Writes the number in plain notation: "+1" as "1", "1." as "1", ".5" as "0.5", "2.5e-1" as "0.25". A number that is
/// plain already keeps its text.
/// @return why it is not taken, or an empty text. Numbers below 0 are not, nor are those that an exponent makes longer
/// than any count or frequency.
std::string plainNumber(std::string_view token, std::string& plain);

}  // namespace varnolix::job
