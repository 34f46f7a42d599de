#pragma once

#include "framework/interfaces/Identifiers.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "framework/support/HostStrings.h"
#include "fuzz/Input.h"
#include "host/components/LiveObjects.h"
#include "host/data/Expansion.h"
#include "host/documents/DocumentBranch.h"
#include "host/text/Text.h"

#include <string>
#include <string_view>

[[maybe_unused]] static const bool gIdentifiersReady = (InitializeIdentifiers(), true);

/// What is shown of a tree, opened to its ends: a line for each row.
inline std::string ShownRows(ISuperCollection* root) {
    std::string rows;
    for (int32_t i = 0; root->SetItemFlags(i, NODE_VISIBLE | 1) >= 0; ++i) { // as a control does
    }
    OpenLevels(root, INT32_MAX);
    VisitRows(root, [&](ISuperCollection* collection, int32_t index, int32_t flags) {
        SmartPtr<IString> label;
        Require(collection->GetItemName(index, label.Receive()) == S_OK);
        rows += std::to_string(flags) + ToPrintable(CREFString(label.Get())) + '\n';
        return true;
    });
    return rows;
}

/// Reads a text several times, and jumps over nothing, some and all of what is in it: the same
/// tree, whose last row tells the fault if there is one, and of which nothing is left in the end.
template <class Index>
void RequireTree(Index index, const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::string rows;
    for (const size_t least : {SIZE_MAX, size_t{24}, size_t{1}}) {
        const DocumentTextPtr document = index(std::string(text), IndexOptions{.m_Least = least});
        const auto tree =
            DocumentBranch::MakeRoot(std::make_shared<DocumentHelpers>(DocumentHelpers{document}),
                document->ReadRoot(nullptr));
        const std::string shown = ShownRows(tree.Get());
        const std::wstring fault = ToWide(document->Fault());
        Require(shown.ends_with(fault.empty() ? "" : ToPrintable(Refer(fault)) + '\n'));
        Require(least == SIZE_MAX || shown == rows);
        rows = shown;
    }
    Require(LiveObjects().empty());
}
