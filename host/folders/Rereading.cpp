#include "host/folders/Rereading.h"

#include "framework/interfaces/FileInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "host/components/HostInterfaces.h"
#include "host/data/Expansion.h"

#include <vector>

namespace {

/// A folder that is still to be read, and the flags for what is new in it.
struct Waiting {
    SmartPtr<ISuperCollection> m_Folder;
    int32_t m_NewFlags;
};

bool IsFilled(IUnknown* item) {
    const auto archive = Query<IFileArchive>(item);
    int32_t state = 0;
    return archive && archive->GetContentState(CONTENTSTATE_ARCHIVE, &state) >= 0 && state != 0;
}

/// Appends the folders in a collection that were read.
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

bool ReadFoldersAgain(ISuperCollection* root, FoldersRead which) {
    bool isChanged = false;
    std::vector<Waiting> waiting{{SmartPtr(root), NODE_VISIBLE | 1}};
    while (!waiting.empty()) {
        const Waiting next = std::move(waiting.back());
        waiting.pop_back();
        if (const auto folder = Query<IHostFolder>(next.m_Folder.Get())) {
            const bool isRead = which == FoldersRead::kAll || folder->IsChanged() == S_OK;
            isChanged |= isRead && folder->ReadAgain(next.m_NewFlags) == S_OK;
            AppendFilled(next.m_Folder.Get(), waiting);
        }
    }
    return isChanged;
}
