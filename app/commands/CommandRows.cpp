#include "app/commands/Commands.h"
#include "app/commands/ReadWithBar.h"
#include "host/components/HostInterfaces.h"
#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <iostream>
#include <nlohmann/json.hpp>

namespace {

constexpr size_t kIndent = 2; // blanks per level

struct ShownRow {
    std::wstring m_Label;
    size_t m_Level; ///< from 0
    bool m_IsLink;
    bool m_IsFolder;
    bool m_IsOpen;
};

bool IsLink(ISuperCollection* collection, int32_t index) {
    SmartPtr<IUnknown> item;
    collection->GetItem(index, item.Receive());
    const auto file = Query<IHostFileItem>(item.Get());
    ItemLook look;
    return file && file->GetLook(&look) >= 0 && look.m_IsLink;
}

ShownRow Describe(ISuperCollection* collection, int32_t index, int32_t flags) {
    SmartPtr<IString> name;
    collection->GetItemName(index, name.Receive());
    const int32_t level = flags & NODE_LEVEL_MASK;
    return {std::wstring(ViewOf(CREFString(name.Get()))),
        static_cast<size_t>(level > 0 ? level - 1 : 0), IsLink(collection, index),
        static_cast<bool>(CollectionBelow(collection, index)), (flags & NODE_EXPANDED) != 0};
}

std::string TextOf(const ShownRow& row) {
    const char mark = !row.m_IsFolder ? ' ' : row.m_IsOpen ? '-' : '+';
    return std::string(kIndent * row.m_Level, ' ') + mark + ' ' + ToPrintable(Refer(row.m_Label)) +
           (row.m_IsLink ? " ->" : "");
}

/// One object in a line; a folder tells whether it is open.
std::string JsonOf(const ShownRow& row) {
    nlohmann::ordered_json object{
        {"level", row.m_Level + 1}, {"label", ToUtf8(Refer(row.m_Label))}};
    if (row.m_IsFolder) {
        object["open"] = row.m_IsOpen;
    }
    if (row.m_IsLink) {
        object["link"] = true;
    }
    return object.dump(-1, ' ', true); // a terminal is told no control character raw
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
