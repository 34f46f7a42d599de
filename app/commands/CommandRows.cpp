#include "app/commands/Commands.h"
#include "app/commands/ReadWithBar.h"
#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <iostream>
#include <nlohmann/json.hpp>

namespace {

constexpr size_t kIndent = 2; // blanks per level

struct ShownRow {
    std::wstring m_Label;
    size_t m_Level; ///< from 0
    bool m_IsFolder;
    bool m_IsOpen;
};

ShownRow Describe(ISuperCollection* collection, int32_t index, int32_t flags) {
    SmartPtr<IString> name;
    collection->GetItemName(index, name.Receive());
    const int32_t level = flags & NODE_LEVEL_MASK;
    return {std::wstring(ViewOf(CREFString(name.Get()))),
        static_cast<size_t>(level > 0 ? level - 1 : 0),
        static_cast<bool>(CollectionBelow(collection, index)), (flags & NODE_EXPANDED) != 0};
}

std::string TextOf(const ShownRow& row) {
    const char mark = !row.m_IsFolder ? ' ' : row.m_IsOpen ? '-' : '+';
    return std::string(kIndent * row.m_Level, ' ') + mark + ' ' + ToPrintable(Refer(row.m_Label));
}

/// One object in a line; a folder tells whether it is open.
std::string JsonOf(const ShownRow& row) {
    nlohmann::ordered_json object{
        {"level", row.m_Level + 1}, {"label", ToUtf8(Refer(row.m_Label))}};
    if (row.m_IsFolder) {
        object["open"] = row.m_IsOpen;
    }
    return object.dump();
}

} // namespace

void RunRows(const RowsOptions& options) {
    const TreeView view = ReadWithBar(options.m_Path, options.m_Depth, options.m_Kind);
    const std::wstring wanted = Lowered(ToWide(options.m_Find));
    bool isFirst = true;
    VisitRows(view.Source(), [&](ISuperCollection* collection, int32_t index, int32_t flags) {
        const ShownRow row = Describe(collection, index, flags);
        if (Lowered(row.m_Label).find(wanted) == std::wstring::npos) {
            return true;
        }
        if (options.m_AsJson) {
            std::cout << (std::exchange(isFirst, false) ? "[" : ",\n ") << JsonOf(row);
        } else {
            std::cout << TextOf(row) << '\n';
        }
        return std::cout.good();
    });
    if (options.m_AsJson) {
        std::cout << (isFirst ? "[]\n" : "]\n");
    }
    view.CheckAllRead();
}
