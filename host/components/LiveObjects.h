#pragma once

#include <cstdint>
#include <map>
#include <string>

/// How many host objects of each kind are alive in the whole process: the program's own and those
/// of the host's modules, as far as they are loaded. Kinds without a living object are left out, so
/// an empty map says that nothing has leaked.
std::map<std::string, int32_t> LiveObjects();
