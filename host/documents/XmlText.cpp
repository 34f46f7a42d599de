#include "host/documents/XmlText.h"

#include "host/documents/XmlParser.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

/// Appends to a text in which any blanks and breaks are one blank, and none is in front.
void AppendWords(std::string& text, std::string_view more) {
    for (const char character : more) {
        if (std::string_view(" \t\r\n").find(character) == std::string_view::npos) {
            text += character;
        } else if (!text.empty() && text.back() != ' ') {
            text += ' ';
        }
    }
}

std::string TakeWords(std::string& text) {
    if (!text.empty() && text.back() == ' ') {
        text.pop_back();
    }
    return std::exchange(text, {});
}

/// Whether a tag stands at a place, in whatever encoding: what comes from an entity is placed where
/// that is referred to.
bool IsTag(std::string_view text, size_t place) {
    text = text.substr(place, 2);
    return text.starts_with('<') || text == std::string_view("\0<", 2);
}

/// A tag that opens an element like the one that begins at a place, but for its name and
/// attributes.
std::string_view PlainTagAt(std::string_view text, size_t place) {
    constexpr std::string_view kBigEndian("\0<\0a\0>", 6);
    constexpr std::string_view kLittleEndian("<\0a\0>\0", 6);
    const std::string_view begin = text.substr(place, 2);
    return begin[0] == '\0' ? kBigEndian : begin[1] == '\0' ? kLittleEndian : "<a>";
}

/// Hears where elements begin and end that other rows belong to.
class Indexer final : public XmlEvents {
public:
    Indexer(std::string_view text, Extents& extents) : m_Text(text), m_Extents(extents) {
        if (text.starts_with("\xEF\xBB\xBF")) {
            m_Prologue = 3;
        } else if (text.starts_with("\xFE\xFF") || text.starts_with("\xFF\xFE")) {
            m_Prologue = 2;
        }
    }

    void Start(const char*, const char* const* attributes) override {
        m_Extents.Note();
        const size_t place = m_Parser.Place();
        if (m_Borrowed > 0 || !IsTag(m_Text, place)) {
            ++m_Borrowed;
            return;
        }
        m_Extents.Open(place, m_Parser.PlaceBehind());
        if (*attributes) {
            m_Extents.Note();
        }
    }
    void End() override {
        if (m_Borrowed > 0) {
            --m_Borrowed;
        } else {
            m_Extents.Close(m_Parser.Place());
        }
    }
    void AddText(std::string_view) override {}
    /// Small containers are read with the one around them where this is long, so that it is not
    /// read again for each of them.
    void EndPrologue() override {
        m_Prologue = m_Parser.PlaceBehind();
        m_Extents.SetLeast(std::max(m_Prologue, m_Extents.Least()));
    }

    XmlParser& Parser() { return m_Parser; }
    size_t Prologue() const { return m_Prologue; }

private:
    std::string_view m_Text;
    Extents& m_Extents;
    XmlParser m_Parser{*this, false};
    size_t m_Borrowed = 0; ///< open elements that come from an entity
    size_t m_Prologue = 0; ///< bytes
};

/// What the rows of a part are made of.
struct XmlPlaces {
    std::string_view m_Text;
    const Extents& m_Extents;
    bool m_IsPrologueLong;
    bool m_IsTrusted;
};

/// Where a reading begins.
enum class Begin {
    kAtTop, ///< of the text
    kAtElement,
    kInElement ///< behind its attributes
};

/// Thrown when there are as many rows as were wanted.
struct Enough {};

/// Makes rows of what stands in an element or at the text's top.
class RowMaker final : public XmlEvents {
public:
    /// `next` is the first extent that is jumped over.
    RowMaker(const XmlPlaces& places, Begin begin, const Extent* next, RowSink& rows)
        : m_Places(places), m_Rows(rows), m_Begin(begin), m_Next(next) {
        if (begin == Begin::kAtTop) {
            m_Levels.push_back({.m_IsBranch = true});
        }
    }

    void Start(const char* name, const char* const* attributes) override {
        const bool isJumped = TakeNext();
        if (m_Skipped > 0) {
            ++m_Skipped;
            return;
        }
        if (!m_Levels.empty()) {
            MakeBranch(); // of the element that this one is in
        }
        if (!m_Levels.empty() && m_Levels.back().m_Part.IsSomewhere()) {
            m_Skipped = 1;
            return;
        }
        m_Levels.push_back(
            m_Levels.empty()
                ? Level{.m_IsBranch = true}
                : Level{.m_Name = name, .m_Part = PartHere(isJumped), .m_Place = PlaceHere()});
        const bool isPlainTag = m_Begin == Begin::kInElement && m_Levels.size() == 1;
        for (; *attributes && !isPlainTag; attributes += 2) { // a plain one may have usual ones
            MakeBranch();
            if (!m_Levels.back().m_Part.IsSomewhere()) {
                std::string value;
                AppendWords(value, attributes[1]);
                AddNamed(ItemKind::kAttribute, std::string("@") + attributes[0], TakeWords(value));
            }
        }
        if (isJumped) {
            MakeBranch(); // it is one by what is not seen here
        }
    }
    void AddText(std::string_view text) override {
        if (m_Skipped == 0) {
            AppendWords(m_Levels.back().m_Text, text);
        }
    }
    void End() override {
        if (m_Skipped > 0) {
            --m_Skipped;
        } else {
            EndLevel(m_Parser.PlaceBehind());
        }
    }

    XmlParser& Parser() { return m_Parser; }
    /// What is still open where the text breaks off stays as it is.
    void EndAll() {
        while (!m_Levels.empty()) {
            EndLevel(SIZE_MAX);
        }
    }

private:
    struct Level {
        std::string m_Name = {};
        std::string m_Text = {};  ///< since the last element in it
        bool m_IsBranch = false;  ///< and not one label
        DocumentPart m_Part = {}; ///< which is left for later
        RowPlace m_Place = {};
    };

    /// Whether what is in the element that begins here is jumped over.
    bool TakeNext() {
        const bool isNext = m_Next && m_Next->m_Begin == m_Parser.Place();
        m_Next = isNext ? m_Places.m_Extents.From(m_Next->m_End) : m_Next;
        return isNext;
    }
    /// What is not in the text is made now, and so is what is little beside the prologue.
    DocumentPart PartHere(bool isJumped) const {
        const size_t begin = m_Parser.Place();
        const bool isLeft =
            IsTag(m_Places.m_Text, begin) && (isJumped || !m_Places.m_IsPrologueLong);
        return isLeft ? DocumentPart{begin, SIZE_MAX} : DocumentPart{};
    }
    /// Elements in one that is not at the text's top can be read without those before them, but
    /// where entities may only be so long beside what was read.
    RowPlace PlaceHere() const {
        const size_t begin = m_Parser.Place();
        const bool isPlace = m_Begin != Begin::kAtTop && m_Levels.size() == 1 &&
                             m_Places.m_IsTrusted && IsTag(m_Places.m_Text, begin);
        return isPlace ? RowPlace{begin} : RowPlace{};
    }
    void Add(DocumentRow row, size_t level) {
        row.m_Level = static_cast<uint32_t>(level);
        if (!m_Rows.Add(std::move(row))) {
            throw Enough();
        }
    }
    /// One that belongs to the last open element.
    void Add(DocumentRow row) { Add(std::move(row), m_Levels.size() - 1); }
    void AddNamed(ItemKind kind, std::string name, const std::string& value, RowPlace place = {}) {
        name += ": ";
        const auto begin = static_cast<uint32_t>(name.size());
        Add({.m_Label = name.append(value), .m_Kind = kind, .m_Value = begin, .m_Place = place});
    }
    /// Makes a branch of the last open element, with its text so far as a row; those that it is in
    /// have become branches before. What is left for later has its own row where it ends.
    void MakeBranch() {
        Level& level = m_Levels.back();
        const bool isLeft = level.m_Part.IsSomewhere();
        if (!std::exchange(level.m_IsBranch, true) && !isLeft) {
            Add(BranchOf(level), m_Levels.size() - 2);
        }
        std::string text = TakeWords(level.m_Text);
        if (!text.empty() && !isLeft) {
            Add({.m_Label = std::move(text), .m_Kind = ItemKind::kString});
        }
    }
    static DocumentRow BranchOf(Level& level) {
        return {.m_Label = std::move(level.m_Name),
            .m_Kind = ItemKind::kElement,
            .m_IsBranch = true,
            .m_Part = level.m_Part,
            .m_Place = level.m_Place};
    }
    void EndLevel(size_t end) {
        if (m_Levels.back().m_IsBranch) {
            MakeBranch();
        }
        Level level = std::move(m_Levels.back());
        m_Levels.pop_back();
        if (level.m_IsBranch) {
            if (level.m_Part.IsSomewhere()) {
                level.m_Part.m_End = end;
                Add(BranchOf(level));
            }
            return;
        }
        const std::string text = TakeWords(level.m_Text);
        if (text.empty()) {
            Add({.m_Label = std::move(level.m_Name),
                .m_Kind = ItemKind::kElement,
                .m_Place = level.m_Place});
        } else {
            AddNamed(ItemKind::kElement, std::move(level.m_Name), text, level.m_Place);
        }
    }

    const XmlPlaces& m_Places;
    RowSink& m_Rows;
    Begin m_Begin;
    XmlParser m_Parser{*this, m_Places.m_IsTrusted};
    const Extent* m_Next;
    std::vector<Level> m_Levels;
    size_t m_Skipped = 0; ///< open elements in one that is left for later
};

class XmlText final : public DocumentText {
public:
    XmlText(std::string text, const IndexOptions& options)
        : DocumentText(std::move(text)), m_Extents(options.m_Least) {
        Indexer indexer(m_Text, m_Extents);
        XmlParser& parser = indexer.Parser();
        const bool isRead = parser.Read(m_Text, 0, m_Text.size(), options.m_Progress);
        const bool isOver = isRead && !options.m_IsCut;
        if (isOver ? !parser.Finish() : parser.HasFault()) {
            m_Fault = parser.Fault();
            m_IsTrusted = !parser.HasTooLongEntities();
        } else if (!isRead) {
            m_End = parser.Reached();
        }
        m_ReadBefore = indexer.Prologue();
        m_IsPrologueLong = m_ReadBefore > options.m_Least;
        m_Extents.Finish(m_End);
    }

    size_t ReadRows(const DocumentPart& part, const RowPlace& from, RowSink& rows,
        ReadProgress* progress) const override {
        const Begin beginning = part.IsWhole()       ? Begin::kAtTop
                                : from.IsSomewhere() ? Begin::kInElement
                                                     : Begin::kAtElement;
        const size_t begin = from.IsSomewhere() ? from.m_Begin : part.IsWhole() ? 0 : part.m_Begin;
        const Extent* next = m_Extents.From(beginning == Begin::kAtElement ? begin + 1 : begin);
        const XmlPlaces places{m_Text, m_Extents, m_IsPrologueLong, m_IsTrusted};
        RowMaker maker(places, beginning, next, rows);
        XmlParser& parser = maker.Parser();
        try {
            bool isRight = beginning == Begin::kAtTop || parser.Read(m_Text, 0, m_ReadBefore);
            if (isRight && beginning == Begin::kInElement) {
                const std::string_view tag = PlainTagAt(m_Text, part.m_Begin);
                isRight = parser.Read(tag, 0, tag.size());
            }
            if (isRight) {
                Read(parser, {begin, std::min(part.m_End, m_End)}, next, progress);
            }
            maker.EndAll();
        } catch (const Enough&) {
        }
        return parser.Fed();
    }

private:
    /// Jumps over the extents from `next` on.
    void Read(XmlParser& parser, const DocumentPart& part, const Extent* next,
        ReadProgress* progress) const {
        const auto [first, end] = part;
        size_t begin = first;
        bool isRight = true;
        for (; isRight && next && next->m_Begin < end; next = m_Extents.From(begin)) {
            isRight = parser.Read(m_Text, begin, next->m_Inside, progress);
            begin = next->m_End;
        }
        if (isRight && parser.Read(m_Text, begin, end, progress)) {
            parser.Finish(); // what is wrong is known, and what is open here reaches to it
        }
    }

    Extents m_Extents;
    bool m_IsPrologueLong = false;
    bool m_IsTrusted = true; ///< what is wrong, if anything is, are not its entities
};

} // namespace

DocumentTextPtr IndexXml(std::string text, const IndexOptions& options) {
    return std::make_shared<XmlText>(std::move(text), options);
}
