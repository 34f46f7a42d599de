#include "app/installation/Installation.h"

#include <cstdlib>
#include <string>

namespace {

using std::filesystem::path;

void AppendAdded(std::vector<path>& folders) {
    const char* added = std::getenv("TREEHOST_MODULE_PATH");
    std::string rest = added ? added : "";
    while (!rest.empty()) {
        const size_t end = rest.find(':');
        if (end > 0) {
            folders.push_back(std::filesystem::absolute(rest.substr(0, end)).lexically_normal());
        }
        rest.erase(0, end == std::string::npos ? end : end + 1);
    }
}

path Find(const std::vector<path>& folders, const path& program, const char* file) {
    for (const path& folder : folders) {
        std::error_code error;
        if (std::filesystem::exists(folder / file, error)) {
            return folder / file;
        }
    }
    return program / file;
}

} // namespace

Installation FindInstallation() {
    const path program = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    Installation found;
    AppendAdded(found.m_Searched);
    found.m_Searched.push_back(program);
    found.m_Searched.push_back((program / MODULES_FROM_PROGRAM).lexically_normal());
    found.m_Host = Find(found.m_Searched, program, "CollectionsEx.so").parent_path();
    found.m_Module = Find(found.m_Searched, program, "UITree.so");
    return found;
}
