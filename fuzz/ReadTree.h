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
#include <utility>
#include <vector>

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

/// Takes so many rows of a part.
struct TakenRows final : RowSink {
    explicit TakenRows(size_t most = SIZE_MAX) : m_Most(most) {}
    bool Add(DocumentRow row) override {
        m_Rows.push_back(std::move(row));
        return m_Rows.size() < m_Most;
    }

    size_t m_Most;
    std::vector<DocumentRow> m_Rows;
};

/// Reads every part, and each row of it without those before.
inline void RequireSameFromAnyRow(const DocumentText& text) {
    std::vector<DocumentPart> parts{kWholeText};
    while (!parts.empty()) {
        const DocumentPart part = parts.back();
        parts.pop_back();
        TakenRows all;
        text.ReadPart(part, all);
        for (const DocumentRow& row : all.m_Rows) {
            if (row.m_Place.IsSomewhere()) {
                TakenRows one(1);
                text.ReadPart(part, one, nullptr, row.m_Place);
                Require(one.m_Rows.size() == 1 && one.m_Rows[0].m_Label == row.m_Label);
                Require(one.m_Rows[0].m_Kind == row.m_Kind);
                Require(one.m_Rows[0].m_Part.m_End == row.m_Part.m_End);
            }
            if (row.m_Part.IsSomewhere()) {
                parts.push_back(row.m_Part);
            }
        }
    }
}

/// Reads a text several times, and jumps over nothing, some and all of what is in it: the same
/// tree, whose last row tells the fault if there is one, and of which nothing is left in the end.
template <class Index>
void RequireTree(Index index, const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::string rows;
    for (const size_t least : {SIZE_MAX, size_t{24}, size_t{1}}) {
        const DocumentTextPtr document = index(std::string(text), IndexOptions{.m_Least = least});
        const auto tree = DocumentBranch::MakeRoot(std::make_shared<DocumentHelpers>(document));
        RequireSameFromAnyRow(*document);
        const std::string shown = ShownRows(tree.Get());
        const std::wstring fault = ToWide(document->Fault());
        Require(shown.ends_with(fault.empty() ? "" : ToPrintable(Refer(fault)) + '\n'));
        Require(least == SIZE_MAX || shown == rows);
        rows = shown;
    }
    Require(LiveObjects().empty());
}
