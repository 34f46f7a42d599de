#include "host/components/Module.h"

#include "host/text/Text.h"

#include <dlfcn.h>

namespace {

constexpr const char* kInitializeSymbol = "_Z16InitializeModulePvP20IComponentCollection";
constexpr const char* kFactorySymbol = "CreateFunction";

/// The loader's words for what just failed.
std::string LoaderText() {
    const char* text = dlerror();
    return text ? text : "no reason given";
}

} // namespace

void Module::Unloader::operator()(void* library) const {
    dlclose(library);
}

Module::Module(const std::filesystem::path& file, IComponentCollection* components)
    : m_File(file.string()), m_Library(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!m_Library) {
        throw ModuleError("cannot load the module: " + LoaderText());
    }
    m_Initialize = reinterpret_cast<InitializeFunction>(FindSymbol(kInitializeSymbol));
    m_Factory = reinterpret_cast<FactoryFunction>(FindSymbol(kFactorySymbol));
    if (m_Initialize(nullptr, components) < 0) {
        throw ModuleError(m_File + ": the module refuses the host's components");
    }
}

Module::~Module() {
    m_Initialize(nullptr, nullptr);
}

void* Module::FindSymbol(const char* name) const {
    void* symbol = dlsym(m_Library.get(), name);
    if (!symbol) {
        throw ModuleError("not a module of the framework: " + LoaderText());
    }
    return symbol;
}

CreatorFunction Module::FindCreator(const wchar_t* name) const {
    void* creator = nullptr;
    m_Factory(Refer(std::wstring_view(name)), &creator);
    return reinterpret_cast<CreatorFunction>(creator);
}

void* Module::CreateAny(const wchar_t* name, const IID& iid) const {
    const std::string component = ToUtf8(Refer(std::wstring_view(name)));
    const CreatorFunction creator = FindCreator(name);
    if (!creator) {
        throw ModuleError(m_File + ": no component called " + component);
    }
    IID wanted = iid; // creators take a changeable identifier
    void* object = nullptr;
    if (creator(nullptr, &wanted, &object) < 0 || !object) {
        throw ModuleError(m_File + ": cannot make a " + component);
    }
    return object;
}
