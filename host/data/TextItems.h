#pragma once

#include "host/data/CollectionVersion.h"
#include "host/data/SuperCollection.h"

#include <string>

// The items of trees that are read from texts.

/// What has nothing below it.
class TextLeaf final : public HostObject<TextLeaf, IUnknown> {
public:
    static constexpr const char* kKind = "TextLeaf";
};

class TextBranch final : public HostObject<TextBranch, SuperCollectionBase, CollectionVersion> {
public:
    static constexpr const char* kKind = "TextBranch";

    /// Appends a leaf while nobody else knows the branch. Throws when memory runs out.
    void AppendLeaf(std::string label) {
        AppendNew({.m_Name = std::move(label),
            .m_Item = SmartPtr<IUnknown>(TextLeaf::Make().Get()),
            .m_Data = {}});
    }
};

constexpr const char* kReadingLabel = "reading\u2026";

/// The one row of what is being read.
inline SuperCollectionBase::Entry MakeReadingRow() {
    return {.m_Name = kReadingLabel,
        .m_Item = SmartPtr<IUnknown>(TextLeaf::Make().Get()),
        .m_Data = {}};
}
