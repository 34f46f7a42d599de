#pragma once

#include <filesystem>
#include <vector>

/// Where the program finds what it loads.
struct Installation {
    std::filesystem::path m_Host;   ///< the folder of the host's modules, with "share" beside them
    std::filesystem::path m_Module; ///< the control's module
    std::vector<std::filesystem::path> m_Searched; ///< the folders, in the order of the search
};

/// Looks for both in the folders of the environment's TREEHOST_MODULE_PATH (separated by colons, as
/// PATH is), then beside the program, then in the folder for modules of the tree that it is
/// installed in. What is nowhere is looked for beside the program, so that the failure to load it
/// names it.
Installation FindInstallation();
