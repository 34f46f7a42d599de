#include "host/sources/OutlineSource.h"

#include "host/data/TextItems.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr size_t kTabWidth = 8;

/// Columns in front of the text, and the text.
struct Line {
    size_t m_Indent = 0;
    std::string_view m_Label;
};

Line Parse(std::string_view text) {
    Line line;
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        line.m_Indent += text.front() == ' ' ? 1 : kTabWidth - line.m_Indent % kTabWidth;
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    line.m_Label = text;
    return line;
}

/// Gives each line its level, by how the lines before it are indented.
class Levels {
public:
    uint32_t Add(size_t indent) {
        while (m_Indents.size() > 1 && m_Indents.back() > indent) {
            m_Indents.pop_back();
        }
        if (m_Indents.empty() || m_Indents.back() < indent) {
            m_Indents.push_back(indent);
        }
        m_Indents.back() = indent;
        return static_cast<uint32_t>(m_Indents.size() - 1);
    }

private:
    std::vector<size_t> m_Indents; ///< of the levels down to the line read last
};

/// Asks a progress, which may be null, now and then.
class LinesRead {
public:
    LinesRead(ReadProgress* progress, size_t size) : m_Progress(progress), m_Size(size) {}

    /// Whether to go on behind a line of so many bytes.
    bool Add(size_t bytes) {
        constexpr size_t kStep = size_t{1} << 18;
        m_Done += bytes;
        if (!m_Progress || m_Done < m_Next) {
            return true;
        }
        m_Next = m_Done + kStep;
        return m_Progress->Advance({std::min(m_Done, m_Size), m_Size});
    }

private:
    ReadProgress* m_Progress;
    size_t m_Size;
    size_t m_Done = 0;
    size_t m_Next = 0;
};

} // namespace

OutlineRows ReadOutlineRows(std::istream& input, ReadProgress* progress, size_t size) {
    OutlineRows rows;
    Levels levels;
    LinesRead read(progress, size);
    std::string text;
    try { // a line that memory does not hold fails too
        while (std::getline(input, text) && read.Add(text.size() + 1)) {
            const Line line = Parse(text);
            if (!line.m_Label.empty()) {
                rows.push_back({std::string(line.m_Label), levels.Add(line.m_Indent)});
            }
        }
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        input.setstate(std::ios::badbit);
    }
    return rows;
}

SmartPtr<ISuperCollection> MakeOutline(OutlineRows rows) {
    const auto root = TextBranch::Make();
    std::vector<SmartPtr<TextBranch>> branches{root}; // down to the row
    for (; !rows.empty(); rows.pop_front()) {
        OutlineRow& row = rows.front();
        branches.resize(row.m_Level + size_t{1});
        TextBranch& branch = *branches.back().Get();
        if (rows.size() > 1 && rows[1].m_Level > row.m_Level) {
            branches.push_back(TextBranch::Make());
            branch.Append(std::move(row.m_Label), branches.back()->Identity());
        } else {
            branch.AppendLeaf(std::move(row.m_Label));
        }
    }
    return SmartPtr<ISuperCollection>(root.Get());
}

SmartPtr<ISuperCollection> ReadOutline(std::istream& input) {
    return MakeOutline(ReadOutlineRows(input));
}
