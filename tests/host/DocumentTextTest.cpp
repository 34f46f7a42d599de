#include "host/documents/DocumentText.h"
#include "host/documents/JsonText.h"
#include "host/documents/XmlText.h"
#include "tests/support/HostTest.h"

#include <climits>
#include <deque>
#include <random>

// Texts that are read a part at a time, beside what they were written from.

namespace {

using Index = DocumentTextPtr (*)(std::string, const IndexOptions&);
using Rows = std::vector<std::string>; ///< a label each, with its level in front

/// Lets a reading ask so many times, and then makes an end of it.
class Patience final : public ReadProgress {
public:
    explicit Patience(int asked = INT_MAX) : m_Left(asked) {}
    bool Advance(const ReadState&) override { return m_Left-- > 0; }

private:
    int m_Left;
};

/// Takes so many rows.
class TakenRows final : public RowSink {
public:
    explicit TakenRows(size_t most = SIZE_MAX) : m_Most(most) {}
    bool Add(DocumentRow row) override {
        m_Rows.push_back(std::move(row));
        return m_Rows.size() < m_Most;
    }

    std::deque<DocumentRow> m_Rows;

private:
    size_t m_Most;
};

std::deque<DocumentRow> ReadAll(const DocumentText& text, const DocumentPart& part) {
    TakenRows rows;
    text.ReadPart(part, rows);
    return std::move(rows.m_Rows);
}

/// What is shown of a text of which everything is opened.
Rows OpenAll(const DocumentText& text, size_t* bytesRead = nullptr) {
    Rows shown;
    Patience patience;
    TakenRows root;
    text.ReadPart(kWholeText, root, &patience);
    std::vector<std::deque<DocumentRow>> open; // what is still to be shown, of each part on the way
    std::vector<uint32_t> levels{0};
    open.push_back(std::move(root.m_Rows));
    while (!open.empty()) {
        if (open.back().empty()) {
            open.pop_back();
            levels.pop_back();
            continue;
        }
        const DocumentRow row = std::move(open.back().front());
        open.back().pop_front();
        const uint32_t level = levels.back() + row.m_Level;
        shown.push_back(std::to_string(level) + ' ' + row.m_Label);
        if (row.m_Part.IsSomewhere()) {
            TakenRows below;
            const size_t bytes = text.ReadPart(row.m_Part, below);
            if (bytesRead) {
                *bytesRead += bytes;
            }
            open.push_back(std::move(below.m_Rows));
            levels.push_back(level + 1);
        }
    }
    return shown;
}

/// Reads on from each row that it can be read on from.
void ExpectSameFromAnyRow(
    const DocumentText& text, const DocumentPart& part, const std::deque<DocumentRow>& rows) {
    for (size_t i = 0; i < rows.size(); ++i) {
        const size_t count = 1 + i % 3;
        TakenRows some(count);
        if (rows[i].m_Place.IsSomewhere()) {
            text.ReadPart(part, some, nullptr, rows[i].m_Place);
            ASSERT_EQ(some.m_Rows.size(), std::min(count, rows.size() - i));
        }
        for (size_t j = 0; j < some.m_Rows.size(); ++j) {
            ASSERT_EQ(some.m_Rows[j].m_Label, rows[i + j].m_Label);
            ASSERT_EQ(some.m_Rows[j].m_Part.m_End, rows[i + j].m_Part.m_End);
        }
    }
}

/// Writes a text at random, and the rows that it has.
class Writer {
public:
    explicit Writer(unsigned seed) : m_Random(seed) {}

    void WriteJson() {
        const bool isLines = m_MayBeLines && Pick(3) == 0;
        for (int line = 1; isLines && line <= 2 + Pick(9); ++line) {
            Add(0, std::to_string(line));
            WriteValue(1, "", false);
            m_Text += '\n';
        }
        if (!isLines) {
            m_Text += Pick(4) == 0 ? "\xEF\xBB\xBF" : Blank();
            WriteValue(0, "", false);
            m_Text += Blank();
        }
    }
    void WriteXml() {
        m_Text += Pick(2) == 0 ? "<?xml version='1.0'?>\n<!-- <a> -->" : "";
        m_HasEntity = Pick(2) == 0;
        if (m_HasEntity) {
            m_Text += "<!DOCTYPE a [<!ENTITY e '<b c=\"d\"><f>g</f></b>'>" +
                      std::string(size_t(Pick(2)) * 99, ' ') + "]>";
        }
        WriteElement(0);
    }

    std::string m_Text;
    Rows m_Rows;
    bool m_MayBeLines = true;

private:
    int Pick(int count) { return int(m_Random() % unsigned(count)); }
    std::string Blank() { return std::string(size_t(Pick(3)), " \n\t"[Pick(3)]); }
    void Add(uint32_t level, const std::string& label) {
        m_Rows.push_back(std::to_string(level) + ' ' + label);
    }

    /// `level` is that of the rows in it.
    void WriteValue(uint32_t level, const std::string& name, bool mayBreak) {
        constexpr std::pair<const char*, const char*> kScalars[] = {{"null", "null"}, {"-1", "-1"},
            {"2.50e1", "2.50e1"}, {"\"\\u00e4]\\\"}\"", "\"ä]\\\"}\""}, {"true", "true"}};
        const bool isRoot = name.empty();
        if (Pick(level > 7 ? 2 : 6) == 0 && !isRoot) {
            const auto& [written, shown] = kScalars[Pick(5)];
            m_Text += written;
            Add(level - 1, name + shown);
            return;
        }
        if (!isRoot) {
            Add(level - 1, name.substr(0, name.size() - 2));
        }
        const bool isArray = Pick(2) == 0;
        const int count = Pick(level > 7 ? 1 : 5);
        m_Text += isArray ? '[' : '{';
        for (int i = 0; i < count; ++i) {
            const std::string key = isArray ? std::to_string(i) : "a" + std::to_string(Pick(3));
            m_Text += (i > 0 ? "," : "") + (mayBreak ? Blank() : "");
            m_Text += isArray ? "" : '"' + key + "\" :";
            WriteValue(level + 1, key + ": ", mayBreak);
        }
        m_Text += isArray ? ']' : '}';
        if (count == 0 && !isRoot) {
            Add(level, isArray ? "[]" : "{}");
        }
    }

    void WriteElement(uint32_t level) {
        const std::string name(1, "hijk"[Pick(4)]);
        const int children = Pick(level > 7 ? 1 : 6);
        const bool hasAttribute = Pick(3) == 0;
        const std::string text = Pick(2) == 0 ? "x <y>" : "";
        const bool isBranch = hasAttribute || children > 0;
        m_Text += '<' + name + (hasAttribute ? " z='1\n 2&amp;'>" : ">");
        m_Text += text.empty() ? Blank() : "<![CDATA[x]]> &lt;y>" + Blank();
        Add(level, name + (isBranch || text.empty() ? "" : ": " + text));
        for (const std::string& row :
            {hasAttribute ? std::string("@z: 1 2&") : "", isBranch ? text : ""}) {
            row.empty() ? void() : Add(level + 1, row);
        }
        for (int i = 0; i < children; ++i) {
            if (m_HasEntity && Pick(4) == 0) {
                m_Text += "&e;";
                Add(level + 1, "b");
                Add(level + 2, "@c: d");
                Add(level + 2, "f: g");
            } else {
                WriteElement(level + 1);
            }
        }
        m_Text += "</" + name + (Pick(2) == 0 ? " >" : ">");
    }

    std::mt19937 m_Random;
    bool m_HasEntity = false;
};

struct Format {
    Index m_Index;
    void (Writer::*m_Write)();
};
constexpr Format kFormats[] = {{IndexJson, &Writer::WriteJson}, {IndexXml, &Writer::WriteXml}};
constexpr unsigned kTexts = 100;

} // namespace

TEST(DocumentTextTest, OpenedPartByPartItIsWhatWasWritten) {
    size_t largest = 0;
    for (const auto& [index, write] : kFormats) {
        for (unsigned seed = 0; seed < kTexts; ++seed) {
            Writer writer(seed);
            (writer.*write)();
            largest = std::max(largest, writer.m_Text.size());
            for (const size_t least : {size_t{1}, size_t{40}, kLeastExtent}) {
                const auto text = index(writer.m_Text, {.m_Least = least});
                ASSERT_EQ(text->Fault(), "") << writer.m_Text;
                ASSERT_EQ(OpenAll(*text), writer.m_Rows) << least << '\n' << writer.m_Text;
            }
        }
    }
    EXPECT_GT(largest, 10 * kLeastExtent) << "something was to be jumped over";
}

TEST(DocumentTextTest, ReadOnFromAnyRowItIsTheSameAndNoMoreThanIsWanted) {
    size_t places = 0;
    for (const auto& [index, write] : kFormats) {
        for (unsigned seed = 0; seed < kTexts / 2; ++seed) {
            Writer writer(seed);
            (writer.*write)();
            const auto text = index(writer.m_Text, {.m_Least = seed % 2 == 0 ? 1 : kLeastExtent});
            SCOPED_TRACE(writer.m_Text);
            for (std::vector<DocumentPart> parts{kWholeText}; !parts.empty();) {
                const DocumentPart part = parts.back();
                parts.pop_back();
                const auto rows = ReadAll(*text, part);
                ExpectSameFromAnyRow(*text, part, rows);
                for (const DocumentRow& row : rows) {
                    places += row.m_Place.IsSomewhere() ? 1 : 0;
                    if (row.m_Part.IsSomewhere()) {
                        parts.push_back(row.m_Part);
                    }
                }
                ASSERT_FALSE(HasFatalFailure());
            }
        }
    }
    EXPECT_GT(places, kTexts);
}

TEST(DocumentTextTest, BrokenOffItIsWhatWasWrittenUpToThere) {
    for (const auto& [index, write] : kFormats) {
        for (unsigned seed = 0; seed < kTexts; ++seed) {
            Writer writer(seed);
            writer.m_MayBeLines = false; // the first of them alone is something else
            (writer.*write)();
            writer.m_Text.resize(writer.m_Text.size() * (seed % 10) / 10);
            const auto whole = index(writer.m_Text, {.m_Least = SIZE_MAX});
            Rows rows = OpenAll(*whole);
            ASSERT_EQ(OpenAll(*index(writer.m_Text, {.m_Least = 1})), rows) << writer.m_Text;
            const size_t last = whole->Fault().empty() ? 1 : 2; // may be half of one
            rows.resize(rows.size() - std::min(last, rows.size()));
            ASSERT_LE(rows.size(), writer.m_Rows.size());
            writer.m_Rows.resize(rows.size());
            ASSERT_EQ(rows, writer.m_Rows) << writer.m_Text;
        }
    }
}

TEST(DocumentTextTest, OpeningAllOfALongChainReadsLittleMoreThanTheTextForEachLevel) {
    struct Chain {
        Index m_Index;
        size_t m_Depth;
        const char* m_Begin;
        const char* m_End;
    };
    constexpr Chain kChains[] = {{IndexJson, 500'000, "[", "]"}, {IndexJson, 100'000, "[", ""},
        {IndexXml, 30'000, "<a>", "</a>"}, {IndexXml, 30'000, "<a>", ""}};
    for (const auto& [index, depth, begin, end] : kChains) {
        const std::string chain = Repeated(begin, depth) + Repeated(end, depth);
        size_t bytes = 0;
        EXPECT_GE(OpenAll(*index(chain, {}), &bytes).size(), depth - 1);
        EXPECT_LT(bytes, kLeastExtent * depth);
    }
}

TEST(DocumentTextTest, ReadOnFromALaterRowNothingBeforeItIsRead) {
    const std::string much(1'000'000, ' ');
    const auto list = IndexJson(much + "[1, 2" + much + ", {\"a\": 3}]");
    const auto element = IndexXml("<r a='" + much + "'><b/><c/></r>");
    const std::pair<const DocumentText*, DocumentPart> parts[] = {
        {list.get(), kWholeText}, {element.get(), ReadAll(*element, kWholeText)[0].m_Part}};
    for (const auto& [text, part] : parts) {
        const auto rows = ReadAll(*text, part);
        TakenRows one(1);
        EXPECT_LT(text->ReadPart(part, one, nullptr, rows.back().m_Place), much.size() / 8);
        EXPECT_EQ(one.m_Rows[0].m_Label, rows.back().m_Label);
    }
}

TEST(DocumentTextTest, StoppedOrCutItIsShownUpToThereAndNothingIsWrong) {
    constexpr size_t kCount = 100'000;
    struct Text {
        Index m_Index;
        const char* m_Begin;
        const char* m_Repeated;
        const char* m_Row;
        size_t m_RowsBefore; ///< those that are repeated
    };
    constexpr Text kRepeated[] = {{IndexJson, "{\"a\": 1, \"b\": [", "[1,2],\n", "1 ", 2},
        {IndexJson, "", "[1]\n", "0 ", 0}, {IndexXml, "<a>", "<b>text</b>\n", "1 b: text", 1}};
    for (const auto& [index, begin, repeated, row, before] : kRepeated) {
        const std::string text = begin + Repeated(repeated, kCount);
        Patience patience(1);
        const auto stopped = index(text, {.m_Progress = &patience});
        const auto cut = index(text, {.m_IsCut = true});
        EXPECT_EQ(stopped->Fault() + cut->Fault(), "");
        const auto count = [prefix = row](const DocumentText& each) {
            const Rows rows = OpenAll(each);
            return size_t(std::count_if(rows.begin(), rows.end(),
                [&](const std::string& shown) { return shown.starts_with(prefix); }));
        };
        EXPECT_GT(count(*stopped), 0U);
        EXPECT_LT(count(*stopped), kCount);
        EXPECT_EQ(count(*cut), kCount);
    }
}

TEST(DocumentTextTest, RowsSayWhatTheyAreForTheirPictures) {
    using enum ItemKind;
    const auto kindsOf = [](const DocumentText& text, const DocumentPart& part = kWholeText) {
        std::vector<ItemKind> kinds;
        for (const DocumentRow& row : ReadAll(text, part)) {
            kinds.push_back(row.m_Kind);
        }
        return kinds;
    };
    using Kinds = std::vector<ItemKind>;
    const auto values = IndexJson(
        R"({"a":[1],"b":{"c":1},"d":[],"e":"t","f":1,"g":-1.5,"h":true,"i":false,"j":null, oops)",
        {});
    EXPECT_EQ(kindsOf(*values),
        (Kinds{kList, kObject, kList, kString, kNumber, kNumber, kTrue, kFalse, kNull, kFault}));
    const auto lines = IndexJson(" {}\n[1]\n7", {});
    EXPECT_EQ(kindsOf(*lines), (Kinds{kObject, kList, kList}));
    const auto elements = IndexXml("<a b='1'>text<c/><d>text</d>", {});
    EXPECT_EQ(kindsOf(*elements), (Kinds{kElement, kFault}));
    EXPECT_EQ(kindsOf(*elements, ReadAll(*elements, kWholeText)[0].m_Part),
        (Kinds{kAttribute, kString, kElement, kElement}));
}
