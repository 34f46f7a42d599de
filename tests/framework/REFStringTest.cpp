#include "tests/framework/FrameworkTest.h"

namespace {

constexpr int32_t kFail = E_FAIL;

using Operation = int32_t (*)(CREFString& text, CREFString* out, bool remove, bool drop);
#define OPERATION(call)                                                                            \
    [](auto& text, auto* out, bool remove, [[maybe_unused]] bool drop) { return text.call; }
const Operation kLine = OPERATION(GetLine(out, remove, L'/', drop));
const Operation kBreak = OPERATION(GetLineCRLF(out, drop, remove));
const Operation kHead = OPERATION(GetReverseLine(out, L'/', remove, drop));
const Operation kCrop = OPERATION(Crop(out, L'.', remove, drop));
const Operation kRight = OPERATION(GetLineRight(out, L'.', remove, drop, false));
const Operation kWhole = OPERATION(GetLineRight(out, L'.', remove, drop, true));
const Operation kToken = OPERATION(GetFirstWord(out, remove));
const Operation kSplit = OPERATION(Split(out, &text, CREFString(L",;"), remove));
const Operation kComma = OPERATION(Split(out, &text, GuardedText(L",").Ref(), remove));
const Operation kWord = OPERATION(GetWord(out, remove, GuardedText(L";,").Ref()));

/// What an operation does to a text; `out` is "?" where the out reference is left alone.
using Case =
    std::tuple<Operation, bool, bool, const wchar_t*, int32_t, const wchar_t*, const wchar_t*>;

/// Checks operations with an out reference and (where it may be null) without one.
void Check(std::initializer_list<Case> cases) {
    for (const auto& [operation, remove, drop, text, result, out, left] : cases) {
        const GuardedText heap(text);
        CREFString taken(L"?");
        for (CREFString* const given : {&taken, operation == kToken ? &taken : nullptr}) {
            CREFString reference = heap.Ref();
            const int32_t status = operation(reference, given, remove, drop);
            EXPECT_EQ(std::tuple(status, Text(taken), Text(reference)),
                std::tuple(result, std::wstring(out), std::wstring(left)))
                << testing::PrintToString(text) << remove << drop;
        }
    }
}

} // namespace

TEST(REFString, LinesEndAtTheFirstDelimiterOrMixedBreak) {
    Check({{kLine, 0, 0, L"a/b", S_OK, L"a/", L"a/b"}, {kLine, 0, 0, L"a/", kFail, L"a/", L"a/"},
        {kLine, 0, 1, L"a/b", S_OK, L"a", L"a/b"}, {kLine, 1, 0, L"a/", S_FALSE, L"a/", L""},
        {kLine, 1, 1, L"", kFail, L"", L""}, {kLine, 1, 1, L"//", S_OK, L"", L"/"},
        {kLine, 1, 1, L"ab", S_FALSE, L"ab", L""}, {kBreak, 1, 0, L"x\r\ny", S_OK, L"x\r\n", L"y"},
        {kBreak, 1, 0, L"x\n\ny", S_OK, L"x\n", L"\ny"},
        {kBreak, 1, 0, L"x\r", S_FALSE, L"x\r", L""}, {kBreak, 1, 1, L"", kFail, L"", L""},
        {kBreak, 1, 1, L"\n\ry", S_OK, L"", L"y"}, {kBreak, 1, 1, L"x", S_FALSE, L"x", L""},
        {kBreak, 0, 1, L"x\ny", S_OK, L"x", L"x\ny"}});
}

TEST(REFString, PartsEndAtTheLastDelimiter) {
    Check({{kHead, 0, 1, L"/a/b", S_OK, L"/a", L"/a/b"}, {kHead, 1, 0, L"/a/b", S_OK, L"/a", L"/b"},
        {kHead, 1, 1, L"a/", S_OK, L"a", L""}, {kHead, 1, 1, L"", kFail, L"", L""},
        {kHead, 1, 1, L"/b", kFail, L"", L"/b"}, {kCrop, 1, 1, L"abc", kFail, L"", L"abc"},
        {kCrop, 1, 1, L"", kFail, L"", L""}, {kRight, 1, 1, L"abc", kFail, L"", L"abc"},
        {kRight, 1, 1, L"", kFail, L"?", L""}, {kWhole, 0, 1, L"abc", S_OK, L"abc", L"abc"},
        {kWhole, 1, 1, L"abc", S_OK, L"abc", L""}});
    for (const Operation tail : {kCrop, kRight, kWhole}) {
        Check({{tail, 1, 0, L"a.b.c", S_OK, L".c", L"a.b."},
            {tail, 0, 1, L"a.b.c", S_OK, L"c", L"a.b.c"},
            {tail, 1, 1, L"a.b.c", S_OK, L"c", L"a.b"}, {tail, 1, 1, L".", S_OK, L"", L""}});
    }
}

TEST(REFString, WordsEndAtADelimiterOrWithTheirToken) {
    Check({{kWord, 1, 0, L"ab,c", 3, L"ab", L",c"}, {kWord, 1, 0, L",c", 1, L"", L",c"},
        {kWord, 1, 0, L"abc", 0, L"abc", L""}, {kWord, 1, 0, L"a", 0, L"a", L""},
        {kWord, 1, 0, L"", kFail, L"", L""}, {kWord, 0, 0, L"ab,c", 3, L"ab", L"ab,c"},
        {kSplit, 0, 0, L"a;b,c", S_OK, L"a", L";b,c"}, {kSplit, 0, 0, L",", S_OK, L"", L","},
        {kSplit, 1, 0, L"a\tb,c", S_OK, L"a", L"\tb,c"},
        {kSplit, 0, 0, L"a\tb,", S_OK, L"a\tb", L","}, {kSplit, 1, 0, L"a b", kFail, L"a b", L""},
        {kSplit, 1, 0, L"", kFail, L"", L""}, {kComma, 0, 0, L"a;b,c", S_OK, L"a;b", L",c"}});
    const std::tuple<const wchar_t*, int32_t, const wchar_t*, const wchar_t*> tokens[] = {
        {L"-12.5e+3x", S_OK, L"-12.5e+3", L"x"}, {L"12.x", S_OK, L"12", L".x"},
        {L"1e+5", S_OK, L"1", L"e+5"}, {L"1.5E-07", S_OK, L"1.5E-07", L""},
        {L"1.5e+", S_OK, L"1.5", L"e+"}, {L"1.5e", S_OK, L"1.5", L"e"}, {L"-x", kFail, L"?", L"-x"},
        {L" a", kFail, L"?", L" a"}, {L"", kFail, L"", L""},
        {L"foo_bar baz", S_OK, L"foo_bar", L" baz"}, {L"a1-b", S_OK, L"a1", L"-b"},
        {L"\"ab\"c", S_OK, L"ab", L"\"c"}, {L"\"ab", S_OK, L"\"ab", L""},
        {L"\"\"x", S_OK, L"", L"\"x"}, {L"\"", S_OK, L"\"", L""}};
    for (const auto& [text, result, out, left] : tokens) {
        Check({{kToken, 1, 0, text, result, out, left}, {kToken, 0, 0, text, result, out, text}});
    }
}

TEST(REFString, SearchesAndComparisonsStayInsideTheText) {
    const std::tuple<const wchar_t*, const wchar_t*, int32_t, int32_t> cases[] = {
        {L"xab", L"ab", 1, 1}, {L"aab", L"ab", kFail, 0}, // a mismatch is not tried as a new start
        {L"acab", L"ab", 2, 0}, {L"ab", L"abc", kFail, 0}, {L"ab", L"xb", kFail, 1},
        {L"ab", L"xyz", kFail, kFail}, {L"ab", L"b", 1, 1}, {L"ab", L"", kFail, kFail},
        {L"", L"ab", kFail, kFail}};
    for (const auto& [text, sought, asText, asSet] : cases) {
        const GuardedText heap(text), other(sought);
        EXPECT_EQ(heap.Ref().Contains(other.Ref()), asText) << testing::PrintToString(text);
        EXPECT_EQ(heap.Ref().ContainsChar(other.Ref()), asSet) << testing::PrintToString(text);
    }
    CREFString negative(L"ab");
    negative.m_Length = -1;
    EXPECT_EQ(negative.ContainsChar(CREFString(L"\x10FFFE")), kFail);
    EXPECT_FALSE(IsEqual(CREFString(L"Tree"), CREFString(L"tree")));
    EXPECT_TRUE(IsEqualIgnoringCase(GuardedText(L"Tree").Ref(), GuardedText(L"tree").Ref()));
}
