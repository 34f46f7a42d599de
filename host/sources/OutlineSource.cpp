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

/// Makes a tree of rows. A row is known to be a leaf when the next one is there.
class OutlineTree {
public:
    /// `level` is at most one more than that of the row before.
    void Add(std::string_view label, uint32_t level) {
        std::string text(label);
        Put(level > m_Level);
        m_Label = std::move(text);
        m_Level = level;
    }
    SmartPtr<ISuperCollection> Finish() {
        Put(false);
        return SmartPtr<ISuperCollection>(m_Branches.front().Get());
    }

private:
    void Put(bool isBranch) {
        if (m_Label.empty()) {
            return;
        }
        m_Branches.resize(m_Level + size_t{1});
        TextBranch& above = *m_Branches.back().Get();
        std::string label = std::exchange(m_Label, {});
        if (isBranch) {
            m_Branches.push_back(TextBranch::Make());
            above.AppendNew({.m_Name = std::move(label),
                .m_Item = SmartPtr(m_Branches.back()->Identity()),
                .m_Data = {}});
        } else {
            above.AppendLeaf(std::move(label));
        }
    }

    std::vector<SmartPtr<TextBranch>> m_Branches{TextBranch::Make()}; ///< down to the row
    std::string m_Label; ///< of the last row, which is still to be put; "" for none
    uint32_t m_Level = 0;
};

} // namespace

SmartPtr<ISuperCollection> ReadOutline(std::istream& input, ReadProgress* progress, size_t size) {
    OutlineTree tree;
    Levels levels;
    LinesRead read(progress, size);
    std::string text;
    try { // a line that memory does not hold fails too
        while (std::getline(input, text) && read.Add(text.size() + 1)) {
            const Line line = Parse(text);
            if (!line.m_Label.empty()) {
                tree.Add(line.m_Label, levels.Add(line.m_Indent));
            }
        }
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        input.setstate(std::ios::badbit);
    }
    return tree.Finish();
}
