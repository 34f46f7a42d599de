#include "framework/runtime/Components.h"

#include "framework/runtime/Guarded.h"
#include "framework/support/HostStrings.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string>

SmartPtr<IComponentCollection> gGlobalComponentCollection;

namespace {

/// The module's file: one byte per character for plain names, relative to the current directory.
std::string ModulePath(tagREFString module) {
    const auto length = static_cast<size_t>(std::max(module.m_Length, 0));
    std::string name(length, '\0');
    if (length > 0) {
        // At most `length` bytes are written, so no character past the reference is read.
        std::wcstombs(name.data(), module.m_String, length);
    }
    return "./" + name + ".so";
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
    std::string path;
    const int32_t status = Guarded([&] {
        path = ModulePath(module);
        return S_OK;
    });
    if (status < 0) {
        return nullptr;
    }
    void* library = dlopen(path.c_str(), RTLD_NOW);
    if (!library) {
        std::printf("Module not available %s, error %s\n", path.c_str(), dlerror());
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
