#include "tests/framework/FrameworkTest.h"

#include <span>

/// The bytes in memory order as hexadecimal digits, without the zeros at the end.
static std::string Hex(const IID& identifier) {
    std::string hex;
    for (const auto each : std::as_bytes(std::span(&identifier, 1))) {
        const auto byte = std::to_integer<size_t>(each);
        hex += {"0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 0xF]};
    }
    return hex.erase(hex.find_last_not_of('0') + 1);
}

TEST(Identifiers, NamesGiveWhatEveryHostDerivesFromThem) {
    const std::pair<const char*, const char*> cases[] = {{"", ""}, {"A", "01"}, {"4", "2"},
        {"4A", "2"}, // the 4 already sets the bit of the A
        {"I5", "6903"}, {"I_", "6903"}, {"I\xE9", "6903"}, {"IUITree", "a9262a4b01"},
        {"iuitree", "a9262a4b01"}, {"_IUIContainerEvents", "3bd5349ea321b9228b2d8e4e"},
        {"ICreatableSimpleCollectio", "69c8126810acccd4202be33156064d0f"},
        {"ICreatableSimpleCollection", "69c8126810acccd4202be33156064d0f"},
        {"4444444444444444444444444", "20841042082184104208218410420821"}};
    for (const auto& [name, hex] : cases) {
        EXPECT_EQ(Hex(__IIDOfc(name)), hex) << name;
    }
    EXPECT_EQ(Hex(IID_IUnknown), "0000000000000000c000000000000046");
}
