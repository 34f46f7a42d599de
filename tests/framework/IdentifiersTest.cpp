#include "tests/framework/FrameworkTest.h"

#include <cstring>
#include <set>

namespace {

/// The bytes in memory order as hexadecimal digits, without the zeros at the end.
std::string Hex(const IID& identifier) {
    unsigned char bytes[sizeof(IID)];
    std::memcpy(bytes, &identifier, sizeof(IID));
    std::string hex;
    for (const unsigned char byte : bytes) {
        hex += "0123456789abcdef"[byte >> 4];
        hex += "0123456789abcdef"[byte & 0xF];
    }
    while (hex.ends_with("00")) {
        hex.resize(hex.size() - 2);
    }
    return hex;
}

} // namespace

TEST(Identifiers, NamesGiveWhatEveryHostDerivesFromThem) {
    const std::pair<const char*, const char*> cases[] = {{"", ""}, {"A", "01"}, {"4", "20"},
        {"4A", "20"}, // the 4 already sets the bit of the A
        {"I5", "6903"}, {"I_", "6903"}, {"I9", "6903"}, {"I\xE9", "6903"},
        {"IUITree", "a9262a4b01"}, {"IUITREE", "a9262a4b01"}, {"iuitree", "a9262a4b01"},
        {"IUnknown", "a9bae5de75"}, {"_IUIContainerEvents", "3bd5349ea321b9228b2d8e4e"},
        {"IComponentCollection", "69bc069f2b8e8ec75819343d07"},
        {"ICreatableSimpleCollectio", "69c8126810acccd4202be33156064d0f"},
        {"ICreatableSimpleCollection", "69c8126810acccd4202be33156064d0f"},
        {"4444444444444444444444444", "20841042082184104208218410420821"}};
    for (const auto& [name, hex] : cases) {
        EXPECT_EQ(Hex(__IIDOfc(name)), hex) << name;
    }
}

TEST(Identifiers, EveryInterfaceHasOneOfItsOwnAfterLoading) {
#define IDENTIFIER_ENTRY(name) Hex(IID_##name),
    const std::set<std::string> all = {FRAMEWORK_INTERFACE_NAMES(IDENTIFIER_ENTRY)};
#undef IDENTIFIER_ENTRY
    EXPECT_EQ(all.size(), 110U);
    EXPECT_FALSE(all.contains(Hex(IID_NULL)));
    EXPECT_EQ(Hex(IID_IUITree), "a9262a4b01");
    EXPECT_EQ(Hex(IID_IUnknown), "0000000000000000c000000000000046");
    EXPECT_EQ(Hex(IID_NULL), "");
}
