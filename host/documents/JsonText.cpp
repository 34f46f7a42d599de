#include "host/documents/JsonText.h"

#include "host/documents/JsonCursor.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::json;
using Events = nlohmann::json_sax<Json>;

/// Reads one value; what is behind it is a fault when `isAlone`.
bool Parse(JsonCursor& cursor, Events& events, bool isAlone) {
    return Json::sax_parse(
        JsonIterator{&cursor}, JsonIterator{&cursor}, &events, Json::input_format_t::json, isAlone);
}

/// Hears where containers begin and end, and what is wrong.
class Indexer final : public Events {
public:
    Indexer(const JsonCursor& cursor, Extents& extents) : m_Cursor(cursor), m_Extents(extents) {}

    bool null() override { return Note(); }
    bool boolean(bool) override { return Note(); }
    bool number_integer(number_integer_t) override { return Note(); }
    bool number_unsigned(number_unsigned_t) override { return Note(); }
    bool number_float(number_float_t, const string_t&) override { return Note(); }
    bool string(string_t&) override { return Note(); }
    bool binary(binary_t&) override { return true; }
    bool key(string_t&) override { return true; }
    bool start_object(std::size_t) override { return Open(); }
    bool start_array(std::size_t) override { return Open(); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }
    bool parse_error(std::size_t position, const std::string&,
        const nlohmann::detail::exception& error) override {
        m_FaultPosition = position;
        const std::string what = error.what();
        const size_t reason = what.find(": ");
        m_Fault = what.substr(reason == std::string::npos ? 0 : reason + 2);
        return false;
    }

    const std::string& Fault() const { return m_Fault; }
    size_t FaultPosition() const { return m_FaultPosition; }

private:
    bool Note() {
        m_Extents.Note();
        return true;
    }
    bool Open() {
        m_Extents.Note();
        m_Extents.Open(m_Cursor.At() - 1, m_Cursor.At());
        return true;
    }
    bool Close() {
        m_Extents.Close(m_Cursor.At() - 1);
        return true;
    }

    const JsonCursor& m_Cursor;
    Extents& m_Extents;
    std::string m_Fault;
    size_t m_FaultPosition = 0;
};

/// The number of places in an object; that of those in a list is the index there.
constexpr size_t kInObject = SIZE_MAX;

/// Makes rows of what stands directly in the outermost container, and jumps over what it can.
class RowMaker final : public Events {
public:
    /// With `saysEmpty` there is a row that says that nothing is in the container. `index` is that
    /// of the first value in a list.
    RowMaker(
        JsonCursor& cursor, const Extents& extents, RowSink& rows, bool saysEmpty, size_t index)
        : m_Cursor(cursor), m_Extents(extents), m_Rows(rows), m_IsEmpty(saysEmpty), m_Index(index) {
    }

    bool null() override {
        return AddValue(ItemKind::kNull, [] { return "null"; });
    }
    bool boolean(bool value) override {
        return value ? AddValue(ItemKind::kTrue, [] { return "true"; })
                     : AddValue(ItemKind::kFalse, [] { return "false"; });
    }
    bool number_integer(number_integer_t value) override {
        return AddNumber([&] { return Json(value).dump(); });
    }
    bool number_unsigned(number_unsigned_t value) override {
        return AddNumber([&] { return Json(value).dump(); });
    }
    /// As it is written: what a double cannot hold is shown all the same.
    bool number_float(number_float_t, const string_t& written) override {
        return AddNumber([&] { return written; });
    }
    bool string(string_t& value) override {
        return AddValue(ItemKind::kString, [&] {
            return Json(std::move(value)).dump(-1, ' ', false, Json::error_handler_t::replace);
        });
    }
    bool binary(binary_t&) override { return true; }
    bool key(string_t& name) override {
        if (m_Depth == 1) {
            m_Key = std::move(name);
        }
        return true;
    }
    bool start_object(std::size_t) override { return Open(false); }
    bool start_array(std::size_t) override { return Open(true); }
    bool end_object() override { return Close(ItemKind::kObject, "{}"); }
    bool end_array() override { return Close(ItemKind::kList, "[]"); }
    /// It is known, and what is open here reaches to it.
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        if (m_Depth > 1) {
            Add(std::move(m_Branch), SIZE_MAX);
        }
        return false;
    }

private:
    std::string TakeName() {
        return m_IsArray ? std::to_string(m_Index++) : std::exchange(m_Key, {});
    }
    /// The parser knows that a number ends by what is behind it.
    template <class Text>
    bool AddNumber(Text text) {
        return AddValue(ItemKind::kNumber, text, m_Cursor.At() - 1);
    }
    template <class Text>
    bool AddValue(ItemKind kind, Text text) {
        return AddValue(kind, text, m_Cursor.At());
    }
    template <class Text>
    bool AddValue(ItemKind kind, Text text, size_t end) {
        if (m_Depth > 1) {
            return true;
        }
        std::string label = m_Depth == 0 ? "" : TakeName() + ": ";
        const auto value = static_cast<uint32_t>(label.size());
        return Add({.m_Label = label.append(text()), .m_Kind = kind, .m_Value = value}, end);
    }
    /// The next row begins behind the end of this one.
    bool Add(DocumentRow row, size_t end) {
        row.m_Place = std::exchange(m_Next, {end, m_IsArray ? m_Index : kInObject});
        m_IsEmpty = false;
        return m_Rows.Add(std::move(row));
    }
    bool Open(bool isArray) {
        const size_t begin = m_Cursor.At() - 1;
        if (m_Depth == 0) {
            m_IsArray = isArray;
            m_Kept = m_Extents.From(begin + 1);
        } else if (m_Depth == 1) {
            const DocumentPart toTheEnd{begin, SIZE_MAX};
            m_Branch = {.m_Label = TakeName(),
                .m_Kind = isArray ? ItemKind::kList : ItemKind::kObject,
                .m_IsBranch = true,
                .m_Part = toTheEnd};
        }
        if (m_Depth++ > 0 && m_Kept && m_Kept->m_Begin == begin) {
            m_Cursor.Jump(m_Kept->m_End);
            m_Kept = m_Extents.From(m_Kept->m_End);
        }
        return true;
    }
    bool Close(ItemKind kind, const char* empty) {
        --m_Depth;
        if (m_Depth == 1) {
            m_Branch.m_Part.m_End = m_Cursor.At();
            return Add(std::move(m_Branch), m_Cursor.At());
        }
        return m_Depth > 0 || !m_IsEmpty || Add({.m_Label = empty, .m_Kind = kind}, m_Cursor.At());
    }

    JsonCursor& m_Cursor;
    const Extents& m_Extents;
    const Extent* m_Kept = nullptr; ///< the next one that is to be jumped over
    RowSink& m_Rows;
    RowPlace m_Next;      ///< behind the last row
    DocumentRow m_Branch; ///< which ends where its container does
    size_t m_Depth = 0;
    bool m_IsEmpty; ///< there was no row, and that is to be said
    bool m_IsArray = false;
    std::string m_Key;
    size_t m_Index;
};

bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

std::string_view FirstLine(std::string_view text) {
    return text.substr(0, text.find('\n'));
}

/// A line that holds a lone value is a list of it.
ItemKind KindOfLine(std::string_view line) {
    const size_t begin = line.find_first_not_of(" \t\r\n");
    return line.substr(begin).starts_with('{') ? ItemKind::kObject : ItemKind::kList;
}

/// Whether the first line is a value and more follows.
bool IsLines(std::string_view text) {
    const std::string_view line = FirstLine(text);
    return !IsBlank(text.substr(line.size())) && !IsBlank(line) && Json::accept(line);
}

/// Calls `visit` for each line that is not blank with its number and place, until it answers false.
/// Begins with a line that has this number.
template <class Visitor>
void VisitLines(std::string_view text, size_t begin, size_t number, Visitor visit) {
    for (; begin < text.size(); ++number) {
        const std::string_view line = FirstLine(text.substr(begin));
        const DocumentPart place{begin, begin + line.size()};
        begin = place.m_End + 1;
        if (!IsBlank(line) && !visit(number, place)) {
            return;
        }
    }
}

class JsonText final : public DocumentText {
public:
    JsonText(std::string text, const IndexOptions& options)
        : DocumentText(std::move(text)), m_IsLines(IsLines(m_Text)), m_Extents(options.m_Least) {
        if (m_IsLines) {
            VisitLines(m_Text, 0, 1, [&](size_t number, const DocumentPart& line) {
                return Index(line, number, options);
            });
        } else {
            Index({0, m_Text.size()}, 1, options);
        }
        m_Extents.Finish(m_End);
    }

    size_t ReadRows(const DocumentPart& part, const RowPlace& from, RowSink& rows,
        ReadProgress* progress) const override {
        if (part.IsWhole()) {
            return m_IsLines ? ReadLines(from, rows)
                             : Read({0, m_End}, from, rows, progress, false);
        }
        const bool isLine = m_IsLines && (part.m_Begin == 0 || m_Text[part.m_Begin - 1] == '\n');
        return Read(part, from, rows, progress, !isLine);
    }

private:
    size_t ReadLines(const RowPlace& from, RowSink& rows) const {
        const size_t first = from.IsSomewhere() ? from.m_Number : 1;
        size_t end = from.m_Begin;
        VisitLines(Text(), from.m_Begin, first, [&](size_t number, const DocumentPart& line) {
            end = line.m_End;
            return rows.Add({.m_Label = std::to_string(number),
                .m_Kind = KindOfLine(Text().substr(line.m_Begin)),
                .m_IsBranch = true,
                .m_Part = line,
                .m_Place = {line.m_Begin, number}});
        });
        return end - from.m_Begin;
    }

    size_t Read(const DocumentPart& part, const RowPlace& from, RowSink& rows,
        ReadProgress* progress, bool saysEmpty) const {
        const size_t begin = from.IsSomewhere() ? BehindComma(from.m_Begin) : part.m_Begin;
        JsonCursor cursor(m_Text, begin, std::min(part.m_End, m_End), progress);
        if (from.IsSomewhere()) {
            cursor.PutInFront(from.m_Number == kInObject ? '{' : '[');
        }
        RowMaker maker(cursor, m_Extents, rows, saysEmpty, from.m_Number);
        Parse(cursor, maker, false);
        return cursor.At() - begin - cursor.Jumped();
    }

    /// Where a value begins, or the blank in front of it, of which an earlier one has ended here.
    size_t BehindComma(size_t place) const {
        return std::min(m_Text.find(',', place), m_End - 1) + 1;
    }

    std::string_view Text() const { return std::string_view(m_Text).substr(0, m_End); }

    /// Goes through one value, whose first line has this number. False where the text ends with it.
    bool Index(const DocumentPart& value, size_t line, const IndexOptions& options) {
        JsonCursor cursor(m_Text, value.m_Begin, value.m_End, options.m_Progress,
            options.m_IsCut && value.m_End == m_Text.size());
        Indexer indexer(cursor, m_Extents);
        const bool isRight = Parse(cursor, indexer, true) && !cursor.IsStopped();
        m_End = isRight ? m_End : cursor.IsStopped() ? cursor.At() : value.m_End;
        if (!isRight && !cursor.IsStopped()) {
            const std::string_view text = Text().substr(value.m_Begin);
            const auto end =
                text.begin() + ptrdiff_t(std::min(indexer.FaultPosition(), text.size()));
            line += static_cast<size_t>(std::count(text.begin(), end, '\n'));
            m_Fault = "line " + std::to_string(line) + ": " + indexer.Fault();
        }
        return isRight;
    }

    bool m_IsLines;
    Extents m_Extents;
};

} // namespace

DocumentTextPtr IndexJson(std::string text, const IndexOptions& options) {
    return std::make_shared<JsonText>(std::move(text), options);
}
