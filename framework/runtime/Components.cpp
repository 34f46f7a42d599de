#include "framework/runtime/Components.h"

#include "framework/runtime/Guarded.h"
#include "framework/support/HostStrings.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <optional>
#include <string>

SmartPtr<IComponentCollection> gGlobalComponentCollection;

namespace {

/// The module's file, relative to the current directory. Nothing for a name of which a character
/// does not become one byte in the locale: another file would be loaded.
std::optional<std::string> ModulePath(tagREFString module) {
    std::string path = "./";
    for (const wchar_t character : ViewOf(module)) {
        char bytes[MB_LEN_MAX] = {};
        if (character == L'\0' || std::wctomb(bytes, character) != 1) {
            return std::nullopt;
        }
        path += bytes[0];
    }
    return path + ".so";
}

} // namespace

int32_t SetGlobalComponents(IComponentCollection* collection) {
    gGlobalComponentCollection = collection;
    return S_OK;
}

IComponentCollection* GLOBALComponents() {
    if (!gGlobalComponentCollection) {
        const CreatorFunction creator = MODULECreateFunction(
            CREFString(L"CollectionsEx"), CREFString(L"GlobalComponentCollection"));
        if (creator) {
            IID iid = IID_IComponentCollection;
            creator(nullptr, &iid, gGlobalComponentCollection.ReceiveAny());
        }
    }
    return SmartPtr(gGlobalComponentCollection).Detach();
}

CreatorFunction MODULECreateFunction(tagREFString module, tagREFString component) {
    std::optional<std::string> path;
    const int32_t status = Guarded([&] {
        path = ModulePath(module);
        return S_OK;
    });
    if (status < 0 || !path) {
        return nullptr;
    }
    void* library = dlopen(path->c_str(), RTLD_NOW);
    if (!library) {
        std::printf("Module not available %s, error %s\n", path->c_str(), dlerror());
        dlerror(); // clears the error state
        return nullptr;
    }
    using FactoryFunction = int32_t (*)(tagREFString, void**);
    const auto factory = reinterpret_cast<FactoryFunction>(dlsym(library, "CreateFunction"));
    if (!factory) {
        return nullptr;
    }
    void* creator = nullptr;
    factory(component, &creator);
    return reinterpret_cast<CreatorFunction>(creator);
}

void* CreateObject(tagREFString name, const IID* iid) {
    const auto components = Adopt(GLOBALComponents());
    void* object = nullptr;
    if (components) {
        components->CreateComponent(name, iid, &object);
    }
    return object;
}

void* CreateHostObject(const char* name, const IID& iid) {
    const auto hostName = Adopt(ISCreateName(name));
    return hostName ? CreateObject(CREFString(hostName.Get()), &iid) : nullptr;
}
