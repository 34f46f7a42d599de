#include "host/folders/FolderMerge.h"

#include "framework/interfaces/TreeInterfaces.h"
#include "host/components/HostInterfaces.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_map>

namespace {

using Item = SuperCollectionBase::Entry;

std::string_view NameOf(const Item& item) {
    return item.m_Name ? std::string_view(*item.m_Name) : "";
}

bool HasLook(const Item& item, ItemLook look) {
    ItemLook found;
    const auto file = Query<IHostFileItem>(item.m_Item.Get());
    return file && file->GetLook(&found) >= 0 && found == look;
}

bool IsSame(const Item& item, const FolderEntry& found) {
    return NameOf(item) == found.m_Name && HasLook(item, found.m_Look);
}

} // namespace

std::optional<FolderItems> MergeFolder(const FolderItems& known, std::vector<FolderEntry> found,
    int32_t newFlags, const std::function<SmartPtr<IUnknown>(const FolderEntry& found)>& make) {
    // A change in a large folder is small most of the time: what is as it was at both ends is not
    // looked up.
    const auto [knownBegin, foundBegin] =
        std::mismatch(known.begin(), known.end(), found.begin(), found.end(), &IsSame);
    if (knownBegin == known.end() && foundBegin == found.end()) {
        return {};
    }
    const auto [knownEnd, foundEnd] =
        std::mismatch(known.rbegin(), std::make_reverse_iterator(knownBegin), found.rbegin(),
            std::make_reverse_iterator(foundBegin), &IsSame);
    std::unordered_map<std::string_view, const Item*> changed;
    for (auto each = knownBegin; each != knownEnd.base(); ++each) {
        changed.emplace(NameOf(*each), &*each);
    }
    FolderItems merged;
    merged.reserve(found.size());
    merged.assign(known.begin(), knownBegin);
    for (auto each = foundBegin; each != foundEnd.base(); ++each) {
        const auto place = changed.find(each->m_Name);
        const Item* old = place != changed.end() ? place->second : nullptr;
        if (old && HasLook(*old, each->m_Look)) {
            merged.push_back(*old);
            continue;
        }
        const int32_t flags = old ? old->m_Flags & ~NODE_EXPANDED : newFlags;
        Item item{.m_Name = {}, .m_Item = make(*each), .m_Data = {}, .m_Flags = flags};
        item.m_Name = std::move(each->m_Name);
        merged.push_back(std::move(item));
    }
    merged.insert(merged.end(), knownEnd.base(), known.end());
    return merged;
}
