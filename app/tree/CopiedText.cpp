#include "app/tree/CopiedText.h"

#include "app/tree/Rows.h"
#include "framework/support/REFString.h"
#include "host/components/HostInterfaces.h"
#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <filesystem>

namespace {

/// Without the steps that lead nowhere, as in the path of the folder ".".
std::string Shortened(const std::string& path) {
    std::filesystem::path shortened;
    for (const auto& step : std::filesystem::path(path)) {
        if (!step.empty() && step != ".") {
            shortened /= step;
        }
    }
    return shortened.string();
}

std::wstring ValueIn(const std::wstring& label) {
    constexpr std::wstring_view kMark = L": ";
    const size_t mark = label.find(kMark);
    return mark == std::wstring::npos ? label : label.substr(mark + kMark.size());
}

/// Whether an item has a value, and not just a place.
bool IsValue(const Place& place) {
    SmartPtr<IUnknown> item;
    place.m_Collection->GetItem(place.m_Index, item.Receive());
    return !Query<IHostFileItem>(item.Get()) &&
           !CollectionBelow(place.m_Collection.Get(), place.m_Index);
}

std::wstring LabelsDownTo(IUITree* tree, const Place& wanted) {
    std::wstring labels;
    VisitItems(RootOf(tree).Get(), [&](const std::vector<Place>& path) {
        const bool isFound = IsSame(path.back(), wanted);
        for (size_t i = 0; isFound && i < path.size(); ++i) {
            labels += (i > 0 ? L"/" : L"") + LabelOf(path[i]);
        }
        return !isFound;
    });
    return labels;
}

} // namespace

std::string CopiedText(IUITree* tree) {
    const Place selected = SelectedPlace(tree);
    if (!selected.m_Collection) {
        return "";
    }
    const std::wstring label = LabelOf(selected);
    if (const auto folder = Query<IHostFolder>(selected.m_Collection.Get())) {
        SmartPtr<IString> path;
        folder->GetPath(path.Receive());
        return Shortened(ToUtf8(CREFString(path.Get())) + '/' + ToUtf8(Refer(label)));
    }
    return ToUtf8(Refer(IsValue(selected) ? ValueIn(label) : LabelsDownTo(tree, selected)));
}
