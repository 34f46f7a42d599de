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

/// A decimal number, or a hexadecimal one of up to 32 bits after "0x" or '#'.
std::optional<int32_t> ReadInteger(std::string_view text);

/// Any number, "inf" and "nan" included.
std::optional<double> ReadNumber(std::string_view text);
/// The shortest text that reads as the number again.
std::string NumberText(double number);

/// A name, a number, or several of them joined by '+', whose bits are put together.
std::optional<int32_t> ReadWords(std::string_view text, std::span<const Word> words);
/// The names of the bits joined by '+'; a number for what has no name.
std::string WordsText(int32_t value, std::span<const Word> words);
