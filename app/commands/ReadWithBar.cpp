#include "app/commands/ReadWithBar.h"

#include "app/commands/TerminalBar.h"

#include <iostream>
#include <unistd.h>

TreeView ReadWithBar(const std::string& path, int32_t depth, SourceKind kind) {
    TerminalBar bar(path, std::cerr, isatty(STDERR_FILENO) != 0);
    return {path, depth, kind, &bar};
}
