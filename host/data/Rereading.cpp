#include "host/data/Rereading.h"

#include "framework/interfaces/FileInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "host/components/HostInterfaces.h"
#include "host/data/Expansion.h"

namespace {

bool IsFilled(IUnknown* item) {
    const auto archive = Query<IFileArchive>(item);
    int32_t state = 0;
    return archive && archive->GetContentState(CONTENTSTATE_ARCHIVE, &state) >= 0 && state != 0;
}

/// The flags for what is new below an item, as that is now; for the root of a tree without one.
int32_t NewFlags(const Place& above) {
    int32_t flags = 0;
    if (!above.m_Collection) {
        return NODE_VISIBLE | 1;
    }
    above.m_Collection->GetItemFlags(above.m_Index, &flags);
    return FlagsBelow(flags);
}

} // namespace

Rereading::Rereading(ISuperCollection* root, RereadParts which)
    : m_Which(which), m_Waiting{{SmartPtr(root), Place{{}, -1}}} {}

bool Rereading::GoOn(const Turn& turn) {
    bool isChanged = false;
    while (!m_Waiting.empty()) {
        const Part next = std::move(m_Waiting.back());
        m_Waiting.pop_back();
        if (const auto readable = Query<IHostRereadable>(next.m_Collection.Get())) {
            const bool isRead = m_Which == RereadParts::kAll || readable->IsChanged() == S_OK;
            isChanged |= isRead && readable->ReadAgain(NewFlags(next.m_Above)) == S_OK;
            AppendFilled(next.m_Collection.Get());
        }
        if (turn.IsOver()) {
            break;
        }
    }
    return isChanged;
}

/// What was read of what is directly in a collection.
void Rereading::AppendFilled(ISuperCollection* collection) {
    int32_t flags = 0;
    for (int32_t i = 0; collection->GetItemFlags(i, &flags) >= 0; ++i) {
        SmartPtr<IUnknown> item;
        collection->GetItem(i, item.Receive());
        if (IsFilled(item.Get())) {
            m_Waiting.push_back({Query<ISuperCollection>(item.Get()), {SmartPtr(collection), i}});
        }
    }
}
