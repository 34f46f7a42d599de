#include "tests/host/SourceTest.h"

#include "host/documents/DocumentBranch.h"
#include "host/documents/JsonText.h"
#include "host/documents/XmlText.h"

#include <random>

// JSON and XML as trees.

using DocumentRowsTest = SourceTest;

namespace {

template <DocumentTextPtr (*Index)(std::string, const IndexOptions&)>
SmartPtr<ISuperCollection> ReadText(const std::string& text, std::string& fault) {
    const auto document = Index(text, {});
    fault = document->Fault();
    return DocumentBranch::MakeRoot(std::make_shared<DocumentHelpers>(document));
}

/// The rows of a part itself, as they are read at once, and what the first one stands for.
std::pair<std::vector<std::string>, DocumentPart> LabelsOf(
    const DocumentText& text, const DocumentPart& part) {
    struct Labels final : RowSink {
        bool Add(DocumentRow row) override {
            if (row.m_Level == 0) {
                m_First = m_Labels.empty() ? row.m_Part : m_First;
                m_Labels.push_back(std::move(row.m_Label));
            }
            return true;
        }
        std::vector<std::string> m_Labels;
        DocumentPart m_First;
    };
    Labels labels;
    text.ReadPart(part, labels);
    return {std::move(labels.m_Labels), labels.m_First};
}

std::string InUtf16(const std::string& text, bool isBigEndian) {
    std::string wide = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char character : text) {
        wide += isBigEndian ? std::string{'\0', character} : std::string{character, '\0'};
    }
    return wide;
}

SmartPtr<IUnknown> ItemOf(ISuperCollection& level, int32_t index) {
    SmartPtr<IUnknown> item;
    EXPECT_EQ(level.GetItem(index, item.Receive()), S_OK);
    return item;
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

TEST_F(DocumentRowsTest, LabelsAreTheSameInWhateverOrderTheyAreAskedFor) {
    constexpr int kCount = 3000;
    std::string list = "[";
    std::string object = "{";
    std::string lines;
    std::string xml =
        "<!DOCTYPE a [<!ENTITY e '<b c=\"d\">f</b>g'><!ATTLIST a z CDATA 'usual'>]><a";
    for (int i = 0; i < kCount; ++i) {
        const std::string number = std::to_string(i);
        const std::string value = i % 7 == 0 ? "[" + number + "]" : i % 5 == 0 ? "{}" : number;
        list += (i > 0 ? " ,\n" : "") + value;
        object += (i > 0 ? "," : "") + ('"' + number) +
                  "\": " + (i % 999 == 1 ? '"' + std::string(20'000, 'x') + '"' : value);
        lines += '[' + value + "]\n" + (i % 3 == 0 ? "\n" : "");
        xml += " a" + number + "='" + number + '\'';
    }
    xml += '>';
    for (int i = 0; i < kCount; ++i) {
        const std::string number = std::to_string(i);
        xml += i % 1000 > 500 ? "&e;"
                              : "<h>" + number + (i % 3 == 0 ? "<i/>" : "") + "</h>" +
                                    (i % 4 == 0 ? "t" + number : "");
    }
    xml += "</a>";
    const std::tuple<DocumentTextPtr, bool> texts[] = {{IndexJson(list + ']'), false},
        {IndexJson(object + ", oops"), false}, {IndexJson(lines), false}, {IndexXml(xml), true},
        {IndexXml(InUtf16(xml, true)), true}, {IndexXml(InUtf16(xml, false)), true}};
    for (const auto& [text, isBelow] : texts) {
        DocumentPart part = kWholeText;
        auto level = DocumentBranch::MakeRoot(std::make_shared<DocumentHelpers>(text));
        if (isBelow) {
            part = LabelsOf(*text, part).second;
            OpenLevels(level.Get(), 1);
            level = CollectionBelow(level.Get(), 0);
        }
        const auto labels = LabelsOf(*text, part).first;
        ASSERT_GE(labels.size(), size_t{kCount});
        for (size_t i = 0; i < labels.size(); ++i) {
            const size_t index = i * 1009 % labels.size();
            const Place place{level, static_cast<int32_t>(index)};
            ASSERT_EQ(place.Label(), labels[index]);
        }
    }
}

TEST_F(DocumentRowsTest, ItemIsTheSameWhileItIsHeldAndItsRowsAreKept) {
    std::string fault;
    auto root = ReadText<IndexJson>("[1, [2, [3]], [4]]", fault);
    const auto before = LiveObjects();
    auto value = ItemOf(*root.Get(), 0);
    EXPECT_EQ(ItemOf(*root.Get(), 0).Get(), value.Get());
    value.Reset();
    EXPECT_EQ(Query<IFileArchive>(ItemOf(*root.Get(), 1).Get())->Populate(), S_OK);
    EXPECT_EQ(LiveObjects(), before) << "nobody holds it";

    const auto below = Query<ISuperCollection>(ItemOf(*root.Get(), 1).Get());
    EXPECT_EQ(below->SetItemFlags(1, 0x7302), S_OK);
    EXPECT_EQ(Query<ISuperCollection>(ItemOf(*root.Get(), 1).Get()).Get(), below.Get());
    const auto three = ItemOf(*below.Get(), 1);
    const auto four = ItemOf(*root.Get(), 2);
    root.Reset();
    int32_t flags = 0;
    EXPECT_EQ(below->GetItemFlags(1, &flags), S_OK) << "it outlives what it was in";
    EXPECT_EQ(flags, 0x7302);
    EXPECT_EQ(ItemOf(*below.Get(), 1).Get(), three.Get());
    for (const auto& [item, label] : {std::pair(three, "0: 3"), {four, "0: 4"}}) {
        EXPECT_EQ(Query<IFileArchive>(item.Get())->Populate(), S_OK);
        EXPECT_EQ((Place{Query<ISuperCollection>(item.Get()), 0}).Label(), label);
    }
}

TEST_F(DocumentRowsTest, HoweverManyItemsAreHeldEachIsItsRows) {
    constexpr int kCount = 1000;
    std::string fault;
    const auto root = ReadText<IndexJson>('[' + Repeated("[0],", kCount - 1) + "1]", fault);
    std::vector<SmartPtr<IUnknown>> items;
    for (int i = 0; i < kCount; ++i) {
        items.push_back(ItemOf(*root.Get(), i));
    }
    for (int i = 0; i < kCount; i += 3) {
        items[size_t(i)].Reset();
    }
    for (int i = 0; i < kCount; ++i) {
        const auto item = ItemOf(*root.Get(), i);
        const auto holds = [&](const auto& held) { return held.Get() == item.Get(); };
        ASSERT_EQ(std::find_if(items.begin(), items.end(), holds) - items.begin(),
            i % 3 != 0 ? i : kCount);
    }
}

TEST_F(DocumentRowsTest, FlagsAreThoseThatWereWritten) {
    for (const int count : {1, 5, 20}) {
        std::string fault;
        const auto root = ReadText<IndexJson>('[' + Repeated("0,", count - 1) + "0]", fault);
        std::vector<int32_t> wanted(size_t(count), 0);
        std::mt19937 random(static_cast<unsigned>(count));
        const auto pick = [&](int most) { return static_cast<int>(random() % unsigned(most)); };
        for (int turn = 0; turn < 3000; ++turn) {
            const int first = pick(count);
            const int last = pick(3) == 0 ? pick(count) : first;
            const int flags = pick(3);
            const int step = first <= last ? 1 : -1;
            for (int i = first; i != last + step; i += step) {
                wanted[size_t(i)] = flags;
                EXPECT_EQ(root->SetItemFlags(i, flags), S_OK);
            }
            std::vector<int32_t> found(wanted.size(), -1);
            for (int i = 0; i < count; ++i) {
                EXPECT_EQ(root->GetItemFlags(i, &found[size_t(i)]), S_OK);
            }
            ASSERT_EQ(found, wanted) << turn;
        }
    }
}
