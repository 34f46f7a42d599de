#include "app/validate/Stage.h"

#include "framework/Interfaces.h"
#include "framework/support/REFString.h"
#include "host/components/LiveObjects.h"
#include "host/text/Text.h"

#include <dlfcn.h>

Stage::Stage(const Subject& subject) : m_Subject(subject), m_Host(subject.m_Host) {
    // The descriptions behind the program's own strings and variants stay until it ends.
    Adopt(CREFString::CreateString()).Reset();
    Adopt(CREFString::CreateVariant()).Reset();
    m_Before = LiveObjects();
}

void Stage::Load() {
    IComponentCollection* components = m_Host.Components();
    const auto shown = m_Gate ? m_Gate->Wrap(components) : SmartPtr(components);
    m_Module.emplace(m_Subject.m_Module, shown.Get());
}

bool Stage::IsStillLoaded() const {
    void* library = dlopen(m_Subject.m_Module.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library) {
        dlclose(library);
    }
    return library != nullptr;
}

void Stage::NeedUnloading(Trial& trial) {
    Load();
    Unload();
    if (IsStillLoaded()) {
        trial.Skip("the module stays loaded");
    }
}

CreatorFunction Stage::Creator() const {
    const CreatorFunction creator = m_Module->FindCreator(m_Subject.m_Component.c_str());
    if (!creator) {
        throw ModuleError("the module has no component of that name");
    }
    return creator;
}

void* Stage::CreateAny(const IID& iid) const {
    IID wanted = iid; // creators take a changeable identifier
    void* object = nullptr;
    return Creator()(nullptr, &wanted, &object) >= 0 ? object : nullptr;
}

SmartPtr<IUnknown> Stage::CreateOrThrow() const {
    auto object = Create<IUnknown>();
    if (!object) {
        throw ModuleError("the component cannot be made");
    }
    return object;
}

std::string Stage::Leaked() const {
    std::string text;
    auto before = m_Before;
    for (const auto& [kind, count] : LiveObjects()) {
        if (const int32_t more = count - before[kind]; more != 0) {
            text += (text.empty() ? "" : ", ") + std::to_string(more) + " " + kind;
        }
    }
    return text;
}

int32_t CountOf(IUnknown* object) {
    object->AddRef();
    return object->Release();
}
