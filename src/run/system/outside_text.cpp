#include "run/system/outside_text.h"

namespace varnolix {

namespace {

/// A tool would take a relative path that begins with "-" for an option.
bool looksLikeOption(std::string_view path) {
    return path.starts_with('-');
}

}  // namespace

std::string shellWord(const std::string& path) {
    if (looksLikeOption(path)) return shellWord("./" + path);
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-./+,:@%^";
    if (path.find_first_not_of(plain) == std::string::npos) return path;
    return singleQuoted(path);
}

std::string singleQuoted(std::string_view text) {
    std::string quoted = "'";
    for (const char c : text) {
        if (c == '\'') {
            quoted += "'\\''";
        } else {
            quoted += c;
        }
    }
    return quoted + "'";
}

std::string insideQuotes(std::string_view path) {
    std::string escaped = looksLikeOption(path) ? "./" : "";
    for (const char c : path) {
        if (c == '\\' || c == '\'') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

}  // namespace varnolix
