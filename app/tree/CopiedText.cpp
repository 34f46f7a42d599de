#include "app/tree/CopiedText.h"

#include "app/tree/Rows.h"
#include "framework/support/REFString.h"
#include "host/components/HostInterfaces.h"
#include "host/data/Expansion.h"
#include "host/text/Text.h"

#include <algorithm>
#include <filesystem>
#include <optional>

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

/// What a leaf is called, but for the name in front of its value; nothing for what is no leaf.
std::optional<std::string> ValueOf(const Place& place) {
    const auto item = NodeAt(place);
    if (Query<IHostFileItem>(item.Get()) ||
        CollectionBelow(place.m_Collection.Get(), place.m_Index)) {
        return {};
    }
    const std::string label = ToUtf8(Refer(LabelOf(place)));
    uint32_t begin = 0;
    if (const auto value = Query<IHostValueItem>(item.Get())) {
        value->GetValuePlace(&begin);
    }
    return label.substr(std::min<size_t>(begin, label.size()));
}

std::wstring LabelsDownTo(IUITree* tree, const Place& wanted) {
    std::wstring labels;
    ItemWalk walk(RootOf(tree).Get(), 0);
    const auto* path = walk.Next();
    while (path && !IsSame(path->back(), wanted)) {
        path = walk.Next();
    }
    for (size_t i = 0; path && i < path->size(); ++i) {
        labels += (i > 0 ? L"/" : L"") + LabelOf((*path)[i]);
    }
    return labels;
}

} // namespace

std::string CopiedText(IUITree* tree) {
    const Place selected = SelectedPlace(tree);
    if (!selected.m_Collection) {
        return "";
    }
    if (const auto folder = Query<IHostFolder>(selected.m_Collection.Get())) {
        SmartPtr<IString> path;
        folder->GetPath(path.Receive());
        return Shortened(ToUtf8(CREFString(path.Get())) + '/' + ToUtf8(Refer(LabelOf(selected))));
    }
    const auto value = ValueOf(selected);
    return value ? *value : ToUtf8(Refer(LabelsDownTo(tree, selected)));
}
