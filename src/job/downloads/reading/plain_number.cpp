#include "job/downloads/reading/plain_number.h"

#include <algorithm>
#include <charconv>

#include "job/downloads/reading/source_lines.h"

namespace varnolix::job {

namespace {

/// The most digits before or behind the point of a number that an exponent makes. More cannot be a count or frequency.
constexpr long mostDigits = 300;

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isZero(std::string_view digits) {
    return digits.find_first_not_of('0') == std::string_view::npos;
}

/// The parts of a number.
struct NumberParts {
    bool isNegative = false;
    bool hasExponent = false;
    std::string_view whole;     ///< digits before the point
    std::string_view fraction;  ///< digits behind it
    long exponent = 0;          ///< far too great ones are cut
};

std::string_view takeDigits(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const std::string_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

/// Removes a sign. Returns whether it was a minus.
bool takeSign(std::string_view& text) {
    const bool isMinus = text.starts_with('-');
    if (isMinus || text.starts_with('+')) text.remove_prefix(1);
    return isMinus;
}

bool splitNumber(std::string_view text, NumberParts& parts) {
    parts.isNegative = takeSign(text);
    parts.whole = takeDigits(text);
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        parts.fraction = takeDigits(text);
    }
    if (parts.whole.empty() && parts.fraction.empty()) return false;
    if (text.empty()) return true;
    if (text[0] != 'e' && text[0] != 'E') return false;
    text.remove_prefix(1);
    parts.hasExponent = true;
    const bool isBelow = takeSign(text);
    const std::string_view digits = takeDigits(text);
    if (digits.empty() || !text.empty()) return false;
    constexpr long farTooGreat = 1'000'000'000'000;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), parts.exponent).ec != std::errc()) {
        parts.exponent = farTooGreat;
    }
    parts.exponent = std::min(parts.exponent, farTooGreat);
    if (isBelow) parts.exponent = -parts.exponent;
    return true;
}

/// The exponent that the number would have if it was written with one digit before the point.
long scientificExponent(const NumberParts& parts) {
    const std::string digits = std::string(parts.whole) + std::string(parts.fraction);
    return static_cast<long>(parts.whole.size()) - 1 - static_cast<long>(digits.find_first_not_of('0')) +
           parts.exponent;
}

/// Small numbers are in range if they are written out already.
bool isInRange(const NumberParts& parts) {
    const long exponent = scientificExponent(parts);
    return exponent <= mostDigits && (exponent >= -mostDigits || !parts.hasExponent);
}

/// The number with its point moved by the exponent, which has to be small.
std::string withoutExponent(const NumberParts& parts) {
    std::string digits = std::string(parts.whole) + std::string(parts.fraction);
    long point = static_cast<long>(parts.whole.size()) + parts.exponent;
    if (point < 1) {
        digits.insert(0, static_cast<std::size_t>(1 - point), '0');
        point = 1;
    }
    if (const auto length = static_cast<long>(digits.size()); point > length) {
        digits.append(static_cast<std::size_t>(point - length), '0');
    }
    const auto at = static_cast<std::size_t>(point);
    const std::string fraction = digits.substr(at);
    digits.erase(at);
    digits.erase(0, std::min(digits.find_first_not_of('0'), at - 1));
    return fraction.empty() ? digits : digits + "." + fraction;
}

}  // namespace

bool looksLikeNumber(std::string_view token) {
    takeSign(token);
    const std::string_view rest = token.starts_with('.') ? token.substr(1) : token;
    if (!rest.empty() && isDigit(rest[0])) return true;
    const std::string word = lowered(token);
    return word == "nan" || word == "inf" || word == "infinity";
}

std::string plainNumber(std::string_view token, std::string& plain) {
    NumberParts parts;
    if (!splitNumber(token, parts)) return '"' + shown(token) + "\" is no number";
    const bool valueIsZero = isZero(parts.whole) && isZero(parts.fraction);
    if (parts.isNegative && !valueIsZero) {
        return shown(token) + " is below 0; counts or frequencies are needed, no log-odds";
    }
    const bool mayBeTooLong = parts.hasExponent || parts.whole.size() > mostDigits;
    if (mayBeTooLong && !valueIsZero && !isInRange(parts)) return shown(token) + " is no count or frequency";
    if (!parts.hasExponent) {
        plain = parts.whole.empty() ? "0" : std::string(parts.whole);
        if (!parts.fraction.empty()) plain.append(".").append(parts.fraction);
        return "";
    }
    if (valueIsZero) {
        plain = "0";
        return "";
    }
    plain = withoutExponent(parts);
    return "";
}

}  // namespace varnolix::job
