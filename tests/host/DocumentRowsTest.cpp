#include "tests/host/SourceTest.h"

#include "host/documents/DocumentBranch.h"
#include "host/documents/JsonText.h"
#include "host/documents/XmlText.h"

// JSON and XML as trees.

using DocumentRowsTest = SourceTest;

namespace {

template <DocumentTextPtr (*Index)(std::string, const IndexOptions&)>
SmartPtr<ISuperCollection> ReadText(const std::string& text, std::string& fault) {
    const auto document = Index(text, {});
    fault = document->Fault();
    return DocumentBranch::MakeRoot(
        std::make_shared<DocumentHelpers>(DocumentHelpers{document}), document->ReadRoot(nullptr));
}

} // namespace

TEST_F(DocumentRowsTest, JsonIsShownAsFarAsItIsRightAndTheFaultHasItsLine) {
    const std::tuple<std::string, const char*, const char*> texts[] = {
        {R"({"a": {"b": [1, 2.50, "x\n"]}, "c": {}, "": null})",
            R"(a1- b2- 0: 13 1: 2.503 2: "x\n"3 c1- {}2 : null1)", ""},
        {"{\"a\":1}\n\n[true]\n", "11- a: 12 31- 0: true2", ""}, {"[]", "", ""},
        {"[1,\n2\n", "0: 11 1: 21 ",
            "line 3: syntax error while parsing array - unexpected end of input; expected ']'"},
        {"{\"a\":1}\n{]", "11- a: 12 21 ",
            "line 2: syntax error while parsing object key - unexpected ']'; expected string "
            "literal"},
        {"[\xff]", "",
            "line 1: syntax error while parsing value - invalid literal; last read: '[\xff'"},
        {std::string(100'000, '['), nullptr,
            "line 1: syntax error while parsing value - unexpected end of input; expected '[', "
            "'{', or a literal"}};
    for (const auto& [text, rows, fault] : texts) {
        ExpectRead(ReadText<IndexJson>, text, rows, fault);
    }
}

TEST_F(DocumentRowsTest, XmlIsShownAsFarAsItIsRightAndTheFaultHasItsLine) {
    const std::tuple<std::string, const char*, const char*> texts[] = {
        {"<?xml version='1.0'?>\n<a x='1  2' y=''>\n one\n <b>t &lt;&#10;u</b>two<c/><!-- no "
         "--></a>",
            "a1- @x: 1 22 @y: 2 one2 b: t < u2 two2 c2", ""},
        {"<a>only<![CDATA[ <text>]]></a>", "a: only <text>1", ""},
        {"<a><b c='d'>e</b> </a>", "a1- b2- @c: d3 e3", ""},
        {"<!DOCTYPE a SYSTEM 'x' [<!ENTITY e 'E<b/>'><!ENTITY f SYSTEM '/etc/passwd'>]>"
         "<a>&e;&f;&g;</a>",
            "a1- E2 b2 &g;2", ""},
        {"<a>\n<b>c</b><d>e", "a1- b: c2 d: e2 ", "line 2: no element found"},
        {"<a>b</c>", "a: b1 ", "line 1: mismatched tag"},
        {"<a/>\n\n<b/>", "a1 ", "line 3: junk after document element"},
        {"<!DOCTYPE a [<!ENTITY a '&b;'><!ENTITY b '&a;'>]>\n<a>&b;</a>", "a1 ",
            "line 2: recursive entity reference"},
        {std::string("\xFE\xFF\0<\0a\0/\0>", 10), "a1", ""}, {"", "", "line 1: no element found"},
        {Repeated("<a>", 100'000), nullptr, "line 1: no element found"}};
    for (const auto& [text, rows, fault] : texts) {
        ExpectRead(ReadText<IndexXml>, text, rows, fault);
    }
}

TEST_F(DocumentRowsTest, ItemIsTheSameWhileItIsHeldAndKeptOnceItIsFilled) {
    std::string fault;
    auto root = ReadText<IndexJson>("[1, [2, [3]]]", fault);
    const auto itemOf = [](ISuperCollection& level, int32_t index) {
        SmartPtr<IUnknown> item;
        EXPECT_EQ(level.GetItem(index, item.Receive()), S_OK);
        return item;
    };
    const auto before = LiveObjects();
    auto value = itemOf(*root.Get(), 0);
    EXPECT_EQ(itemOf(*root.Get(), 0).Get(), value.Get());
    value.Reset();
    EXPECT_EQ(LiveObjects(), before) << "nobody holds it";

    EXPECT_EQ(Query<IFileArchive>(itemOf(*root.Get(), 1).Get())->Populate(), S_OK);
    const auto below = Query<ISuperCollection>(itemOf(*root.Get(), 1).Get());
    EXPECT_EQ(below->SetItemFlags(1, 0x7302), S_OK);
    EXPECT_EQ(Query<ISuperCollection>(itemOf(*root.Get(), 1).Get()).Get(), below.Get());
    root.Reset();
    int32_t flags = 0;
    EXPECT_EQ(below->GetItemFlags(1, &flags), S_OK) << "it outlives what it was in";
    EXPECT_EQ(flags, 0x7302);
    EXPECT_TRUE(itemOf(*below.Get(), 0));
}
