#include "host/data/Rereading.h"

#include "framework/interfaces/FileInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "host/components/HostInterfaces.h"
#include "host/data/Expansion.h"

#include <vector>

namespace {

/// What is still to be read again, and the flags for what is new in it.
struct Waiting {
    SmartPtr<ISuperCollection> m_Collection;
    int32_t m_NewFlags;
};

bool IsFilled(IUnknown* item) {
    const auto archive = Query<IFileArchive>(item);
    int32_t state = 0;
    return archive && archive->GetContentState(CONTENTSTATE_ARCHIVE, &state) >= 0 && state != 0;
}

/// Appends what was read of what is directly in a collection.
void AppendFilled(ISuperCollection* collection, std::vector<Waiting>& waiting) {
    int32_t flags = 0;
    for (int32_t i = 0; collection->GetItemFlags(i, &flags) >= 0; ++i) {
        SmartPtr<IUnknown> item;
        collection->GetItem(i, item.Receive());
        if (IsFilled(item.Get())) {
            waiting.push_back({Query<ISuperCollection>(item.Get()), FlagsBelow(flags)});
        }
    }
}

} // namespace

bool RereadTree(ISuperCollection* root, RereadParts which) {
    bool isChanged = false;
    std::vector<Waiting> waiting{{SmartPtr(root), NODE_VISIBLE | 1}};
    while (!waiting.empty()) {
        const Waiting next = std::move(waiting.back());
        waiting.pop_back();
        if (const auto readable = Query<IHostRereadable>(next.m_Collection.Get())) {
            const bool isRead = which == RereadParts::kAll || readable->IsChanged() == S_OK;
            isChanged |= isRead && readable->ReadAgain(next.m_NewFlags) == S_OK;
            AppendFilled(next.m_Collection.Get(), waiting);
        }
    }
    return isChanged;
}
