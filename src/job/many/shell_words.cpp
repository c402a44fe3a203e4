#include "job/many/shell_words.h"

namespace varnolix::job {

std::optional<std::vector<std::string>> shellWords(std::string_view text) {
    std::vector<std::string> words;
    std::string word;
    bool isInWord = false;
    char quote = 0;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char c = text[place];
        if (quote == 0 && (c == ' ' || c == '\t')) {
            if (isInWord) words.push_back(word);
            word.clear();
            isInWord = false;
            continue;
        }
        isInWord = true;
        if (c == quote) {
            quote = 0;
        } else if (quote == 0 && (c == '\'' || c == '"')) {
            quote = c;
        } else if (c == '\\' && quote != '\'') {
            if (++place == text.size()) return std::nullopt;
            // Between double quotes a backslash stands for itself, unless it protects one of these two.
            if (quote == '"' && text[place] != '"' && text[place] != '\\') word += c;
            word += text[place];
        } else {
            word += c;
        }
    }
    if (quote != 0) return std::nullopt;
    if (isInWord) words.push_back(word);
    return words;
}

}  // namespace varnolix::job
