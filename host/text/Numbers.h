#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Numbers as people write them. A text that is not all of it a number is none.

/// A decimal number, or a hexadecimal one of up to 32 bits after "0x" or '#'.
std::optional<int32_t> ReadInteger(std::string_view text);

/// Any number, "inf" and "nan" included.
std::optional<double> ReadNumber(std::string_view text);

/// The shortest text that reads as the number again.
std::string NumberText(double number);
std::string NumberText(float number);
