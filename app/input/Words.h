#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// A number with a name, as scripts and records write it.
struct Word {
    std::string_view m_Name;
    int32_t m_Value;
};

/// A name, a number, or several of them joined by '+', whose bits are put together.
std::optional<int32_t> ReadWords(std::string_view text, std::span<const Word> words);
/// The names of the bits joined by '+'; a number for what has no name.
std::string WordsText(int32_t value, std::span<const Word> words);
