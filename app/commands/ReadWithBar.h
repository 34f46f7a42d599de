#pragma once

#include "app/tree/TreeView.h"

/// Shows the tree behind a path, with a bar on standard error while it is read, where that is a
/// terminal.
TreeView ReadWithBar(
    const std::string& path, int32_t depth, SourceKind kind = SourceKind::kByContent);
