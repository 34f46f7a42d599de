#pragma once

#include "host/data/SuperCollection.h"
#include "host/folders/FolderEntry.h"

#include <functional>
#include <optional>
#include <vector>

using FolderItems = std::vector<SuperCollectionBase::Entry>;

/// The items of what was found in a folder, of which `known` are the items that it has: those are
/// kept by name, with their flag words; what has become a folder, or another one, is closed. What
/// is new gets an item from `make` and `newFlags`. Nothing when all is as it was. On any thread.
/// Throws std::bad_alloc.
std::optional<FolderItems> MergeFolder(const FolderItems& known, std::vector<FolderEntry> found,
    int32_t newFlags, const std::function<SmartPtr<IUnknown>(const FolderEntry& found)>& make);
