#include "app/validate/Probe.h"

#include "app/UsageError.h"
#include "app/validate/Child.h"
#include "app/validate/Exports.h"
#include "app/validate/Stage.h"
#include "framework/support/REFString.h"
#include "host/text/Text.h"

#include <dlfcn.h>

namespace {

constexpr char kName = 'n';
constexpr char kFault = '!';

/// Whether it is `IObjectInfoImpl<...>::m_ObjectName`, decorated.
bool IsComponentName(const std::string& symbol) {
    return symbol.starts_with("_ZN15IObjectInfoImplI") && symbol.ends_with("E12m_ObjectNameE");
}

/// Every component's name that the module shows, as the loaded file has it.
std::vector<std::string> ShownNames(const std::filesystem::path& module) {
    std::vector<std::string> names;
    void* library = dlopen(module.c_str(), RTLD_NOW);
    for (const ExportedSymbol& symbol : ExportedSymbols(module)) {
        if (IsComponentName(symbol.m_Name)) {
            const void* place = library ? dlsym(library, symbol.m_Name.c_str()) : nullptr;
            if (place) {
                names.push_back(ToUtf8(*static_cast<const tagREFString*>(place)));
            }
        }
    }
    return names;
}

/// In the child: tells the names, or what is wrong.
void TellNames(const Subject& subject, const Tell& tell) {
    try {
        ExportedSymbols(subject.m_Module);
        Stage stage(subject);
        stage.Load();
        if (!subject.m_Component.empty()) {
            stage.Creator();
            return;
        }
        for (const std::string& name : ShownNames(subject.m_Module)) {
            tell(kName, name);
        }
    } catch (const std::exception& error) {
        tell(kFault, error.what());
    }
}

std::string OnlyName(const std::vector<std::string>& names) {
    if (names.size() == 1) {
        return names.front();
    }
    std::string known;
    for (const std::string& name : names) {
        known += (known.empty() ? ": " : ", ") + name;
    }
    throw UsageError(names.empty() ? "the module shows no component's name: say which one"
                                   : "the module has several components: say which one" + known);
}

} // namespace

Subject Probe(const std::filesystem::path& module, const std::string& component,
    const std::filesystem::path& host, std::chrono::seconds limit) {
    Subject subject{.m_Module = module, .m_Component = ToWide(component), .m_Host = host};
    std::vector<std::string> names;
    std::string fault;
    const ChildEnd end = RunChild([&](const Tell& tell) { TellNames(subject, tell); },
        [&](char kind, const std::string& text) {
            (kind == kName ? names.emplace_back() : fault) = text;
        },
        limit);
    if (!fault.empty() || !end.m_IsDone) {
        throw ModuleError(
            fault.empty() ? "cannot load the module: the process " + end.m_Reason : fault);
    }
    if (component.empty()) {
        subject.m_Component = ToWide(OnlyName(names));
    }
    return subject;
}
