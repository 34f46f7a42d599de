#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A symbol that a library shows to the loader.
struct ExportedSymbol {
    std::string m_Name;      ///< decorated
    bool m_IsUnique = false; ///< one for the whole process, which keeps the library from unloading
};

/// The defined dynamic symbols of a library of this machine, without loading it. Throws ModuleError
/// for what is none.
std::vector<ExportedSymbol> ExportedSymbols(const std::filesystem::path& file);
