#include "app/input/Words.h"

#include "host/text/Numbers.h"

#include <algorithm>

namespace {

std::optional<int32_t> ReadWord(std::string_view text, std::span<const Word> words) {
    const auto named =
        std::find_if(words.begin(), words.end(), [&](const Word& w) { return w.m_Name == text; });
    return named != words.end() ? named->m_Value : ReadInteger(text);
}

} // namespace

std::optional<int32_t> ReadWords(std::string_view text, std::span<const Word> words) {
    int32_t value = 0;
    for (;;) {
        const size_t length = std::min(text.find('+'), text.size());
        const auto part = ReadWord(text.substr(0, length), words);
        if (!part) {
            return std::nullopt;
        }
        value |= *part;
        if (length == text.size()) {
            return value;
        }
        text.remove_prefix(length + 1);
    }
}

std::string WordsText(int32_t value, std::span<const Word> words) {
    std::string text;
    for (const Word& word : words) {
        if (word.m_Value != 0 && (value & word.m_Value) == word.m_Value) {
            text += (text.empty() ? "" : "+") + std::string(word.m_Name);
            value &= ~word.m_Value;
        }
    }
    const bool isRest = value != 0 || text.empty();
    return isRest ? text + (text.empty() ? "" : "+") + std::to_string(value) : text;
}
