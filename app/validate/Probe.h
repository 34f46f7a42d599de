#pragma once

#include "app/validate/Check.h"

#include <chrono>
#include <string>

/// Loads the module in a child process and finds out which of its components is meant: `component`,
/// or the only one whose name it exports when that is empty. It may take as
/// long as the limit. Throws ModuleError when the module cannot be loaded or has no such component,
/// UsageError when the component has to be named.
Subject Probe(const std::filesystem::path& module, const std::string& component,
    const std::filesystem::path& host, std::chrono::seconds limit);
