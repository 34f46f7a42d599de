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

    /// Throws when memory runs out.
    void AppendLeaf(std::string label) { Append(std::move(label), TextLeaf::Make().Get()); }
};
