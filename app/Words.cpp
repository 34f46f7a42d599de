#include "app/Words.h"

#include <algorithm>
#include <charconv>

namespace {

template <class Number, class... Format>
std::optional<Number> ReadAll(std::string_view text, Format... format) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [after, error] = std::from_chars(text.data(), end, number, format...);
    return error == std::errc() && after == end ? std::optional(number) : std::nullopt;
}

std::optional<int32_t> ReadWord(std::string_view text, std::span<const Word> words) {
    const auto named =
        std::find_if(words.begin(), words.end(), [&](const Word& w) { return w.m_Name == text; });
    return named != words.end() ? named->m_Value : ReadInteger(text);
}

} // namespace

std::optional<int32_t> ReadInteger(std::string_view text) {
    const size_t prefix = text.starts_with("0x") ? 2 : text.starts_with('#') ? 1 : 0;
    if (prefix == 0) {
        return ReadAll<int32_t>(text);
    }
    const auto bits = ReadAll<uint32_t>(text.substr(prefix), 16);
    return bits ? std::optional(static_cast<int32_t>(*bits)) : std::nullopt;
}

std::optional<double> ReadNumber(std::string_view text) {
    return ReadAll<double>(text);
}

std::string NumberText(double number) {
    char text[32];
    return {text, std::to_chars(std::begin(text), std::end(text), number).ptr};
}

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
