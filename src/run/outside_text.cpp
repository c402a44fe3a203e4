#include "run/outside_text.h"

namespace varnolix {

std::string shellWord(const std::string& path) {
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-./+,:@%^";
    if (path.find_first_not_of(plain) == std::string::npos) return path;
    std::string quoted = "'";
    for (const char c : path) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    return quoted + "'";
}

std::string insideQuotes(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '\\' || c == '\'') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

}  // namespace varnolix
