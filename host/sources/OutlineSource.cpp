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

/// The road from the first level down to the line read last.
class OutlineBuilder {
public:
    void Add(const Line& line) {
        while (m_Open.size() > 1 && m_Open.back().m_Indent > line.m_Indent) {
            m_Open.pop_back();
        }
        Level& level = m_Open.back();
        if (line.m_Indent <= level.m_Indent || level.m_Branch->IsEmpty()) {
            level.m_Indent = line.m_Indent;
            level.m_Branch->AppendLeaf(std::string(line.m_Label));
            level.m_LastBranch.Reset();
            return;
        }
        if (!level.m_LastBranch) {
            level.m_LastBranch = TextBranch::Make();
            level.m_Branch->ReplaceLast(level.m_LastBranch->Identity());
        }
        level.m_LastBranch->AppendLeaf(std::string(line.m_Label));
        m_Open.push_back({line.m_Indent, level.m_LastBranch, {}});
    }

    TextBranch* Root() const { return m_Open.front().m_Branch.Get(); }

private:
    struct Level {
        size_t m_Indent;
        SmartPtr<TextBranch> m_Branch;
        SmartPtr<TextBranch> m_LastBranch; ///< below the last line; null while that is a leaf
    };

    std::vector<Level> m_Open{{0, TextBranch::Make(), {}}};
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

SmartPtr<ISuperCollection> ReadOutline(std::istream& input, ReadProgress* progress, size_t size) {
    OutlineBuilder outline;
    LinesRead read(progress, size);
    std::string text;
    try { // a line that memory does not hold fails too
        while (std::getline(input, text) && read.Add(text.size() + 1)) {
            const Line line = Parse(text);
            if (!line.m_Label.empty()) {
                outline.Add(line);
            }
        }
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        input.setstate(std::ios::badbit);
    }
    return SmartPtr<ISuperCollection>(outline.Root());
}
