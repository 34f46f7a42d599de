#include "tests/framework/FailingNew.h"
#include "tests/framework/FrameworkTest.h"

#include <cmath>
#include <limits>

namespace {

using ValuesTest = HostTest;

constexpr int kLeast = std::numeric_limits<int>::min();

} // namespace

TEST(Format, TextThatDoesNotFitLeavesTheBufferEmpty) {
    wchar_t buffer[] = L"####";
    EXPECT_EQ(_swprintf(buffer, 4, L"%d", 123), 3);
    EXPECT_STREQ(buffer, L"123");
    EXPECT_LT(_swprintf(buffer, 4, L"%d", 1234), 0);
    EXPECT_STREQ(buffer, L"");
}

TEST_F(ValuesTest, NumbersAndTextsBecomeHostStrings) {
    const HeapText heap(L"abc");
    const std::pair<ICreatableString*, const wchar_t*> cases[] = {{ISCreate(42), L"42"},
        {ISCreate(kLeast), L"-2147483648"}, {ISCreateHex(0), L"#000000"},
        {ISCreateHex(0xFF80), L"#00FF80"}, {ISCreateHex(0xFFFFFF), L"#FFFFFF"},
        {ISCreateHex(0x1000000), L"#1000000"}, {ISCreateHex(-1), L"#FFFFFFFF"},
        {ISCreate(2.0), L"2.000000"}, {ISCreate(-0.25), L"-0.250000"},
        {ISCreate(2e248), L""}, // 256 characters are one too many
        {ISCreate(heap.Ref()), L"abc"}, {ISCreate(L"wide"), L"wide"},
        {ISCreate(static_cast<const wchar_t*>(nullptr)), L""},
        {ISCreateName("Registry"), L"Registry"}};
    for (const auto& [made, text] : cases) {
        EXPECT_EQ(Text(Adopt(made).Get()), text);
    }
    EXPECT_EQ(Text(Adopt(ISCreate(9e247)).Get()).size(), 255U);
}

TEST_F(ValuesTest, FactoriesRecoverFromAShortageOfMemory) {
    void* made[2] = {};
    {
        const FailingNew noMemory;
        made[0] = CREFString::CreateString();
        made[1] = CREFString::CreateVariant();
    }
    EXPECT_EQ(made[0], nullptr);
    EXPECT_EQ(made[1], nullptr);
    EXPECT_TRUE(Adopt(CREFString::CreateString()));
    EXPECT_TRUE(Adopt(CREFString::CreateVariant()));
}

TEST(Values, IntegersEndAtTheFirstCharacterThatDoesNotFit) {
    const std::tuple<const wchar_t*, int, int> cases[] = {{L"42", 10, 42}, {L"-42", 10, -42},
        {L"+7", 10, 7}, {L"#ff", 10, 255}, {L"12ab", 10, 12}, {L"", 10, 0}, {L"-", 10, 0},
        {L"#", 10, 0}, {L" 5", 10, 0}, {L"--5", 10, 0}, {L"-#5", 10, 0}, {L"#-5", 10, 0},
        {L"#FFFFFFFF", 10, -1}, {L"#123456789", 10, 0x23456789}, {L"4294967295", 10, -1},
        {L"-2147483648", 10, kLeast}, {L"2147483648", 10, kLeast}, {L"9", 8, 9}, {L"a", 10, 0},
        {L"F", 11, 15}, {L"fg", 16, 15}, {L"f", 17, 0}, {L"1\x0661", 10, 1}};
    for (const auto& [text, radix, value] : cases) {
        EXPECT_EQ(_IS2Integer(HeapText(text).Ref(), radix), value) << testing::PrintToString(text);
    }
}

TEST(Values, ColoursExchangeRedAndBlue) {
    const std::pair<const wchar_t*, int> cases[] = {{L"#FF0000", 0x0000FF}, {L"#00FF00", 0x00FF00},
        {L"#123456", 0x563412}, {L"#FF123456", 0x563412}, {L"255", 0xFF0000}};
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(_IS2Color(HeapText(text).Ref(), 10), value) << testing::PrintToString(text);
    }
}

TEST(Values, DoublesHaveAPointAndNoExponent) {
    const std::pair<const wchar_t*, double> cases[] = {{L"3.25", 3.25}, {L"-0.5", -0.5}, {L"+7", 7},
        {L"7.", 7}, {L".5", 0.5}, {L"1.2.3", 1.2}, {L"2a5", 2.5}, {L"1/5", 1.5}, {L"1:5", 1.5},
        {L"1.5e3", 1.5}, {L"1e3", 1.3}, {L"1,5", 1}, {L"1-5", 1}, {L"1.5 6", 1.5}, {L" 5", 0},
        {L"", 0}, {L"--5", 0}, {L"#10", 16}, {L"#FFFFFFFF", -1}, {L"#", 0},
        {L"0.00000000000000000199", 0.000000000000000001}, // 18 digits of the fraction count
        {L"9223372036854775808", -9223372036854775808.0}}; // wraps at 64 bits
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(_IS2Double(HeapText(text).Ref()), value) << testing::PrintToString(text);
    }
    EXPECT_TRUE(std::signbit(_IS2Double(CREFString(L"-"))));
    EXPECT_TRUE(std::signbit(_IS2Double(CREFString(L"-0"))));
}
