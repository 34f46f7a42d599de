#include "tests/framework/FrameworkTest.h"

#include <cmath>

using ValuesTest = HostedTest;

TEST_F(ValuesTest, NumbersAndTextsBecomeHostStrings) {
    const std::pair<ICreatableString*, std::wstring> cases[] = {
        {ISCreate(INT32_MIN), L"-2147483648"}, {ISCreateHex(0), L"#000000"},
        {ISCreateHex(0xFFFFFF), L"#FFFFFF"}, {ISCreateHex(0x1000000), L"#1000000"},
        {ISCreateHex(-1), L"#FFFFFFFF"}, {ISCreate(-0.25), L"-0.250000"},
        {ISCreate(2e248), L""}, // 256 characters are one too many
        {ISCreate(GuardedText(L"abc").Ref()), L"abc"},
        {ISCreate(static_cast<const wchar_t*>(nullptr)), L""},
        {ISCreateName("Registry"), L"Registry"}};
    for (const auto& [made, text] : cases) {
        EXPECT_EQ(Text(Adopt(made).Get()), text);
    }
    EXPECT_EQ(Text(Adopt(ISCreate(9e247)).Get()).size(), 255U);
}

TEST(Values, IntegersEndAtTheFirstCharacterThatDoesNotFit) {
    const std::tuple<const wchar_t*, int, int> cases[] = {{L"-42", 10, -42}, {L"+7", 10, 7},
        {L"#ff", 10, 255}, {L"12ab", 10, 12}, {L"", 10, 0}, {L" 5", 10, 0}, {L"-#5", 10, 0},
        {L"#-5", 10, 0}, {L"#FFFFFFFF", 10, -1}, {L"#123456789", 10, 0x23456789},
        {L"4294967295", 10, -1}, {L"-2147483648", 10, INT32_MIN}, {L"9", 8, 9}, {L"a", 10, 0},
        {L"F", 11, 15}, {L"fg", 16, 15}, {L"f", 17, 0}, {L"1\x0661", 10, 1}};
    for (const auto& [text, radix, value] : cases) {
        EXPECT_EQ(_IS2Integer(GuardedText(text).Ref(), radix), value)
            << testing::PrintToString(text);
    }
    EXPECT_EQ(_IS2Color(GuardedText(L"#FF123456").Ref(), 10), 0x563412);
    EXPECT_EQ(_IS2Color(GuardedText(L"255").Ref(), 10), 0xFF0000);
}

TEST(Values, DoublesHaveAPointAndNoExponent) {
    const std::pair<const wchar_t*, double> cases[] = {{L"9.95", 9.95}, {L"5", 5}, {L"-0.5", -0.5},
        {L"7.", 7}, {L".5", 0.5}, {L"1.2.3", 1.2}, {L"2a5", 2.5}, {L"1.5e3", 1.5}, {L"1e3", 1.3},
        {L"1,5", 1}, {L"1-5", 1}, {L" 5", 0}, {L"", 0}, {L"--5", 0}, {L"#10", 16},
        {L"#FFFFFFFF", -1}, {L"#", 0},
        {L"0.00000000000000000199", 0.000000000000000001}, // 18 digits of the fraction count
        {L"9223372036854775808", -9223372036854775808.0}}; // wraps at 64 bits
    for (const auto& [text, value] : cases) {
        EXPECT_EQ(_IS2Double(GuardedText(text).Ref()), value) << testing::PrintToString(text);
    }
    EXPECT_TRUE(std::signbit(_IS2Double(CREFString(L"-0"))));
}
