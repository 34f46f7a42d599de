#include "app/commands/Commands.h"
#include "app/view/TreeView.h"
#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <iostream>

namespace {

constexpr size_t kIndent = 2; // blanks per level

char MarkOf(ISuperCollection* collection, int32_t index, int32_t flags) {
    if (!CollectionBelow(collection, index)) {
        return ' ';
    }
    return (flags & NODE_EXPANDED) != 0 ? '-' : '+';
}

std::string RowText(ISuperCollection* collection, int32_t index, int32_t flags, size_t level) {
    SmartPtr<IString> name;
    collection->GetItemName(index, name.Receive());
    return std::string(kIndent * level, ' ') + MarkOf(collection, index, flags) + ' ' +
           ToPrintable(CREFString(name.Get())) + '\n';
}

} // namespace

void RunRows(const RowsOptions& options) {
    const TreeView view(options.m_Path, options.m_Depth);
    VisitRows(view.Source(), [](ISuperCollection* collection, int32_t index, int32_t flags) {
        const int32_t level = flags & NODE_LEVEL_MASK;
        std::cout << RowText(
            collection, index, flags, static_cast<size_t>(level > 0 ? level - 1 : 0));
        return std::cout.good();
    });
    view.CheckAllRead();
}
