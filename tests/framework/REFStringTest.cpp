#include "tests/framework/FrameworkTest.h"

namespace {

constexpr int32_t kFail = E_FAIL;
const wchar_t kMark[] = L"?";

using Operation = std::function<int32_t(CREFString& reference, CREFString* out)>;

/// What an operation does to a text; `out` is "?" where the out reference is left alone.
struct Case {
    const wchar_t* text;
    int32_t result;
    const wchar_t* out;
    const wchar_t* left;
};

/// Checks an operation with an out reference and (where it may be null) without one.
void Check(
    const Operation& operation, std::initializer_list<Case> cases, bool outRequired = false) {
    for (const auto& [text, result, out, left] : cases) {
        SCOPED_TRACE(testing::PrintToString(text));
        const HeapText heap(text);
        CREFString reference = heap.Ref();
        CREFString taken(kMark);
        EXPECT_EQ(operation(reference, &taken), result);
        EXPECT_EQ(Text(taken), out);
        EXPECT_EQ(Text(reference), left);
        CREFString again = heap.Ref();
        EXPECT_EQ(operation(again, outRequired ? &taken : nullptr), result);
        EXPECT_EQ(Text(again), left);
    }
}

} // namespace

TEST(REFString, GetLineTakesUpToTheDelimiter) {
    const auto line = [](bool remove, bool drop) {
        return [=](auto& text, auto* out) { return text.GetLine(out, remove, L'\n', drop); };
    };
    Check(line(false, false), {{L"a\nb", S_OK, L"a\n", L"a\nb"}, {L"a\n", kFail, L"a\n", L"a\n"}});
    Check(line(false, true), {{L"a\nb", S_OK, L"a", L"a\nb"}, {L"ab", kFail, L"ab", L"ab"}});
    Check(line(true, false), {{L"a\n", S_FALSE, L"a\n", L""}});
    Check(line(true, true), {{L"", kFail, L"", L""}, {L"a\nb", S_OK, L"a", L"b"},
                                {L"\n\n", S_OK, L"", L"\n"}, {L"ab", S_FALSE, L"ab", L""}});
}

TEST(REFString, GetLineCRLFCountsAMixedPairAsOneBreak) {
    const auto line = [](bool drop, bool remove) {
        return [=](auto& text, auto* out) { return text.GetLineCRLF(out, drop, remove); };
    };
    Check(line(false, true), {{L"x\r\ny", S_OK, L"x\r\n", L"y"}, {L"x\n\ny", S_OK, L"x\n", L"\ny"},
                                 {L"x\r", S_FALSE, L"x\r", L""}});
    Check(line(true, true),
        {{L"", kFail, L"", L""}, {L"x\n\ry", S_OK, L"x", L"y"}, {L"\r\ry", S_OK, L"", L"\ry"},
            {L"x\r\n", S_FALSE, L"x", L""}, {L"x", S_FALSE, L"x", L""}});
    Check(line(true, false), {{L"xy", S_OK, L"xy", L"xy"}, {L"x\ny", S_OK, L"x", L"x\ny"}});
}

TEST(REFString, GetReverseLineTakesTheHeadBeforeTheLastDelimiter) {
    const auto head = [](bool remove, bool skip) {
        return [=](auto& text, auto* out) { return text.GetReverseLine(out, L'/', remove, skip); };
    };
    Check(head(false, true), {{L"/a/b", S_OK, L"/a", L"/a/b"}});
    Check(head(true, false), {{L"/a/b", S_OK, L"/a", L"/b"}});
    Check(head(true, true),
        {{L"", kFail, L"", L""}, {L"ab", kFail, L"", L"ab"}, {L"/b", kFail, L"", L"/b"},
            {L"/a/b", S_OK, L"/a", L"b"}, {L"a/", S_OK, L"a", L""}});
}

TEST(REFString, GetLineRightAndCropTakeTheTailFromTheLastDelimiter) {
    for (const bool cropping : {false, true}) {
        const auto tail = [&](bool remove, bool drop) {
            return [=](auto& text, auto* out) {
                return cropping ? text.Crop(out, L'.', remove, drop)
                                : text.GetLineRight(out, L'.', remove, drop, false);
            };
        };
        Check(tail(true, false), {{L"a.b.c", S_OK, L".c", L"a.b."}});
        Check(tail(false, true), {{L"a.b.c", S_OK, L"c", L"a.b.c"}});
        Check(tail(true, true),
            {{L"a.b.c", S_OK, L"c", L"a.b"}, {L".", S_OK, L"", L""}, {L"abc", kFail, L"", L"abc"},
                {L"", kFail, cropping ? L"" : kMark, L""}});
    }
    const auto whole = [](bool remove) {
        return
            [=](auto& text, auto* out) { return text.GetLineRight(out, L'.', remove, true, true); };
    };
    Check(whole(false), {{L"abc", S_OK, L"abc", L"abc"}});
    Check(whole(true),
        {{L"abc", S_OK, L"abc", L""}, {L"a.b", S_OK, L"b", L"a"}, {L"", kFail, kMark, L""}});
}

TEST(REFString, SplitCutsBeforeTheFirstOfASet) {
    const struct {
        const wchar_t* text;
        const wchar_t* set;
        int32_t controls, status;
        const wchar_t* first;
        const wchar_t* rest;
    } cases[] = {{L"a;b,c", L",;", 0, S_OK, L"a", L";b,c"}, {L",", L",", 0, S_OK, L"", L","},
        {L"a\tb,c", L",", 1, S_OK, L"a", L"\tb,c"}, {L"a\tb,c", L",", 0, S_OK, L"a\tb", L",c"},
        {L"a b", L",", 1, kFail, L"a b", L""}, {L"a\tb", L"", 1, kFail, L"a\tb", L""},
        {L"", L",", 1, kFail, L"", L""}};
    for (const auto& [text, set, controls, status, first, rest] : cases) {
        const HeapText heap(text);
        const HeapText delimiters(set);
        CREFString head(kMark);
        CREFString tail(kMark);
        EXPECT_EQ(heap.Ref().Split(&head, &tail, delimiters.Ref(), controls), status);
        EXPECT_EQ(Text(head), first);
        EXPECT_EQ(Text(tail), rest);
        EXPECT_EQ(heap.Ref().Split(nullptr, nullptr, delimiters.Ref(), controls), status);
    }
}

TEST(REFString, GetFirstWordTakesOneToken) {
    const auto word = [](auto& text, auto* out) { return text.GetFirstWord(out, true); };
    Check(word,
        {{L"-12.5e+3x", S_OK, L"-12.5e+3", L"x"}, {L"12.x", S_OK, L"12", L".x"},
            {L"12.", S_OK, L"12", L"."}, {L"1e+5", S_OK, L"1", L"e+5"},
            {L"1.5e5", S_OK, L"1.5", L"e5"}, {L"1.5E-07", S_OK, L"1.5E-07", L""},
            {L"1.5e+", S_OK, L"1.5", L"e+"}, {L"1.5e", S_OK, L"1.5", L"e"},
            {L"1.2.3", S_OK, L"1.2", L".3"}},
        true);
    Check(word,
        {{L"-x", kFail, kMark, L"-x"}, {L"-", kFail, kMark, L"-"}, {L" a", kFail, kMark, L" a"},
            {L"", kFail, L"", L""}},
        true);
    Check(word,
        {{L"foo_bar baz", S_OK, L"foo_bar", L" baz"}, {L"a1-b", S_OK, L"a1", L"-b"},
            {L"_ab", S_OK, L"_", L"ab"}, {L",", S_OK, L",", L""}},
        true);
    Check(word,
        {{L"\"ab\"c", S_OK, L"ab", L"\"c"}, {L"\"ab", S_OK, L"\"ab", L""},
            {L"\"\"x", S_OK, L"", L"\"x"}, {L"\"", S_OK, L"\"", L""}},
        true);
    Check([](auto& text, auto* out) { return text.GetFirstWord(out, false); },
        {{L"a b", S_OK, L"a", L"a b"}}, true);
}

TEST(REFString, GetWordAnswersWhereTheWordEnds) {
    const auto word = [](const wchar_t* set, bool remove) {
        return
            [=](auto& text, auto* out) { return text.GetWord(out, remove, HeapText(set).Ref()); };
    };
    Check(word(L";,", true), {{L"ab,c", 3, L"ab", L",c"}, {L",c", 1, L"", L",c"},
                                 {L"abc", 0, L"abc", L""}, {L"", kFail, L"", L""}});
    Check(word(L",", false), {{L"ab,c", 3, L"ab", L"ab,c"}});
    Check(word(L"", false), {{L"abc", 0, L"abc", L"abc"}});
}

TEST(REFString, ContainsAnswersAPosition) {
    const struct {
        const wchar_t* text;
        const wchar_t* sought;
        int32_t asText, asSet;
    } cases[] = {{L"abc", L"ab", 0, 0}, {L"xab", L"ab", 1, 1},
        {L"aab", L"ab", kFail, 0}, // a mismatch is not tried as a new start
        {L"acab", L"ab", 2, 0}, {L"ab", L"abc", kFail, 0}, {L"ab", L"xb", kFail, 1},
        {L"ab", L"xyz", kFail, kFail}, {L"ab", L"", kFail, kFail}, {L"", L"ab", kFail, kFail}};
    for (const auto& [text, sought, asText, asSet] : cases) {
        const HeapText heap(text);
        const HeapText other(sought);
        EXPECT_EQ(heap.Ref().Contains(other.Ref()), asText) << testing::PrintToString(text);
        EXPECT_EQ(heap.Ref().ContainsChar(other.Ref()), asSet) << testing::PrintToString(text);
    }
}

TEST(REFString, NullHoldersGiveTheEmptyReference) {
    EXPECT_EQ(CREFString(static_cast<const wchar_t*>(nullptr)).m_Length, 0);
    EXPECT_EQ(CREFString(static_cast<IString*>(nullptr)).m_Length, 0);
    EXPECT_TRUE(IsEqual({0, nullptr}, CREFString(L"")));
    EXPECT_FALSE(IsEqual({1, nullptr}, CREFString(L"a")));
    EXPECT_FALSE(IsEqual(CREFString(L"UITree"), CREFString(L"uitree")));
    EXPECT_TRUE(IsEqualIgnoringCase(HeapText(L"UITree").Ref(), HeapText(L"uitree").Ref()));
    EXPECT_FALSE(IsEqualIgnoringCase(HeapText(L"UITree").Ref(), HeapText(L"UITreeX").Ref()));
}
