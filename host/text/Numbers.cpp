#include "host/text/Numbers.h"

#include <charconv>
#include <iterator>

namespace {

template <class Number, class... Format>
std::optional<Number> ReadAll(std::string_view text, Format... format) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [after, error] = std::from_chars(text.data(), end, number, format...);
    return error == std::errc() && after == end ? std::optional(number) : std::nullopt;
}

template <class Number>
std::string ShortestText(Number number) {
    char text[32];
    return {text, std::to_chars(std::begin(text), std::end(text), number).ptr};
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
    return ShortestText(number);
}

std::string NumberText(float number) {
    return ShortestText(number);
}
