// A small module with one fault, which FAULT chooses; without one it is a good module. The
// validator has to find each by the check that is named for it.

#include "framework/Interfaces.h"
#include "framework/Runtime.h"
#include "framework/Support.h"

#include <cairo.h>
#include <memory>
#include <new>
#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

#define COUNT_TOO_MANY 1
#define COUNT_TOO_FEW 2
#define CHANGING_IDENTITY 3
#define ONE_SIDED_QUERY 4
#define EXCEPTION 5
#define OPEN_SAVE 6
#define CHANGED_MATRIX 7
#define RANGE_IGNORED 8
#define SHORT_SAVE 9
#define POINTER_ON_FAILURE 10
#define RUNNING_THREAD 11
#define CRASH 12
#define ENDLESS_LOOP 13
#define SYMBOL_TOO_MANY 14
#define NEVER_UNLOADED 15 // by the linker
#define KEPT_REFERENCE 16
#define DRAWN_OUTSIDE 17
#define MEMORY_LEAK 18
#define LEAK_ON_FAILURE 19
#define LEAK_IN_USE 20
#define DEAD_AFTER_FAULT 21
#define SAVE_OPEN_ON_FAILURE 22
#define FILE_LEAK 23
#define MAPPING_LEAK 24
#define BLIND_TRUST 25
#define XML_NOTHING 26
#define CRASH_IN_PAIR 27

namespace {

constexpr bool Is(int fault) {
    return fault == FAULT;
}

int32_t* volatile gForgotten = nullptr;
bool gIsRunning = false;
bool gIsDead = false;

// The component goes by a name and by numbers for which the host has display names.
constexpr tagREFString kName = {6, L"UITree"};
constexpr int32_t kHeight = 100;
constexpr int32_t kColor = 101;

/// Allocates and frees.
bool HasMemory() {
    int32_t* volatile probe = new (std::nothrow) int32_t(1);
    const bool isThere = probe != nullptr;
    delete probe;
    return isThere;
}

} // namespace

class CBroken;
template <>
MODULE_EXPORT const tagREFString IObjectInfoImpl<CBroken>::m_ObjectName;

class CBroken final : public CObject<CBroken>,
                      public IObjectInfoImpl<CBroken>,
                      public IParent,
                      public IRenderableObject,
                      public IUIPropInterrogateImpl<CBroken, IUIPropInterrogateEx, 10> {
public:
    int32_t QueryInterface(const IID& iid, void** object) override;
    int32_t AddRef() override { return m_RefCount.Increment(); }
    int32_t Release() override;
    int32_t FinalConstruct() override;
    int32_t get_Parent(IUnknown** parent) override;
    int32_t put_Parent(IUnknown* parent) override;
    int32_t Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown*, int32_t) override;
    int32_t ParameterRange(int32_t id, int32_t* minimum, int32_t* maximum) override;
    int32_t UIPropInterrogate_SaveFolderStream(
        INamedCollection* strings, IFolderStream* stream, int32_t flags) override;
    int32_t UIPropInterrogate_SaveXML(
        INamedCollection* strings, IDataStream* stream, int32_t flags) override;

private:
    friend class CObject<CBroken>;
    ~CBroken() = default;
    int32_t Ask(const IID& iid, void** object);

    /// What is asked for IUnknown by a changing identity.
    struct Alias final : IParent {
        explicit Alias(CBroken& whole) : m_Whole(whole) {}
        int32_t QueryInterface(const IID& iid, void** object) override;
        int32_t AddRef() override { return m_Whole.AddRef(); }
        int32_t Release() override { return m_Whole.Release(); }
        int32_t get_Parent(IUnknown** parent) override { return m_Whole.get_Parent(parent); }
        int32_t put_Parent(IUnknown* parent) override { return m_Whole.put_Parent(parent); }
        CBroken& m_Whole;
    };

    Alias m_Alias{*this};
    SmartPtr<IUnknown> m_Parent;
    int32_t m_Height = Is(RANGE_IGNORED) ? 101 : 12; ///< pixels, 1 to 100
    int32_t m_Color = 0x808080;                      ///< 0xRRGGBB
};

int32_t CBroken::Ask(const IID& iid, void** object) {
    *object = nullptr;
    if (iid == IID_IUnknown) {
        *object = static_cast<ObjectBase*>(this);
    } else if (iid == IID_IObjectInfo) {
        *object = static_cast<IObjectInfo*>(this);
    } else if (iid == IID_IParent) {
        *object = static_cast<IParent*>(&m_Alias);
    } else if (iid == IID_IRenderableObject) {
        *object = static_cast<IRenderableObject*>(this);
    } else if (iid == IID_IUIPropInterrogate || iid == IID_IUIPropInterrogateEx) {
        *object = static_cast<IUIPropInterrogateEx*>(this);
    }
    return *object ? (AddRef(), S_OK) : E_NOINTERFACE;
}

int32_t CBroken::QueryInterface(const IID& iid, void** object) {
    const int32_t status = Ask(iid, object);
    if (Is(COUNT_TOO_MANY) && iid == IID_IObjectInfo) {
        AddRef();
    }
    if (Is(COUNT_TOO_FEW) && iid == IID_IObjectInfo) {
        Release();
    }
    return status;
}

int32_t CBroken::Alias::QueryInterface(const IID& iid, void** object) {
    if (Is(ONE_SIDED_QUERY) && iid == IID_IRenderableObject) {
        return *object = nullptr, E_NOINTERFACE;
    }
    const int32_t status = m_Whole.QueryInterface(iid, object);
    if (Is(CHANGING_IDENTITY) && iid == IID_IUnknown) {
        *object = this;
    }
    return status;
}

int32_t CBroken::Release() {
    const int32_t count = m_RefCount.Decrement();
    if (count == 0) {
        m_RefCount.HoldWhileDying();
        FinalRelease();
        delete this;
    }
    return count;
}

int32_t CBroken::FinalConstruct() {
    if (Is(MEMORY_LEAK) || Is(LEAK_ON_FAILURE)) {
        gForgotten = new int32_t[8];
    }
    if (Is(FILE_LEAK)) {
        dup(STDERR_FILENO);
    }
    if (Is(MAPPING_LEAK)) {
        mmap(nullptr, 1, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    }
    const int32_t status = AddParameter(kHeight, PROPTYPE_LONG, &m_Height, 1, 100);
    if (status < 0) {
        return status;
    }
    if (Is(LEAK_ON_FAILURE)) {
        delete[] gForgotten;
    }
    return AddParameter(kColor, PROPTYPE_LONG | PROPFLAG_COLOR, &m_Color);
}

int32_t CBroken::get_Parent(IUnknown** parent) {
    if (!parent) {
        return E_POINTER;
    }
    *parent = SmartPtr(m_Parent).Detach();
    return *parent ? S_OK : E_FAIL;
}

int32_t CBroken::put_Parent(IUnknown* parent) {
    if (Is(KEPT_REFERENCE) && parent) {
        parent->AddRef();
    }
    if (Is(BLIND_TRUST) && parent) {
        CreateHostObject<IUIPropInterrogate>("UIDefault")->Inquire(PROPID_ALL, nullptr);
    }
    if (Is(RUNNING_THREAD) && parent && !std::exchange(gIsRunning, true)) {
        void* const pausing = reinterpret_cast<void*>(&pause); // code that stays when this goes
        pthread_t thread{};
        pthread_create(&thread, nullptr, reinterpret_cast<void* (*)(void*)>(pausing), nullptr);
    }
    m_Parent = parent;
    return S_OK;
}

int32_t CBroken::ParameterRange(int32_t id, int32_t* minimum, int32_t* maximum) {
    while (Is(ENDLESS_LOOP) && id == INT32_MAX && minimum) {
        pause();
    }
    return IUIPropInterrogateImpl::ParameterRange(id, minimum, maximum);
}

int32_t CBroken::Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown*, int32_t) {
    if (Is(CRASH) && !rect) {
        write(STDERR_FILENO, "last words\n", 11);
        return *static_cast<volatile int32_t*>(nullptr);
    }
    if (!canvas || !canvas->m_Context || !rect) {
        return E_POINTER;
    }
    if (Is(DEAD_AFTER_FAULT) && (gIsDead || !HasMemory())) {
        gIsDead = true;
        return S_OK;
    }
    if (Is(CRASH_IN_PAIR) && rect->left == INT32_MAX && rect->width == INT32_MIN) {
        return *static_cast<volatile int32_t*>(nullptr);
    }
    if (Is(LEAK_IN_USE)) {
        gForgotten = new (std::nothrow) int32_t[8];
    }
    cairo_t* context = canvas->m_Context;
    const auto copy = Is(EXCEPTION) ? std::make_unique<CANVASRect>(*rect) : nullptr;
    [[maybe_unused]] const CANVASRect* volatile used = copy.get(); // it would not be made unused
    cairo_save(context);
    if (Is(SAVE_OPEN_ON_FAILURE) && !HasMemory()) {
        return E_FAIL;
    }
    cairo_rectangle(context, rect->left, rect->top, rect->width + (Is(DRAWN_OUTSIDE) ? 1.0 : 0.0),
        rect->height);
    cairo_fill(context);
    if (!Is(OPEN_SAVE)) {
        cairo_restore(context);
    }
    if (Is(CHANGED_MATRIX)) {
        cairo_translate(context, 0, 1);
    }
    return S_OK;
}

int32_t CBroken::UIPropInterrogate_SaveFolderStream(
    INamedCollection* strings, IFolderStream* stream, int32_t flags) {
    if (Is(SHORT_SAVE)) {
        return S_OK;
    }
    return IUIPropInterrogateImpl::UIPropInterrogate_SaveFolderStream(strings, stream, flags);
}

int32_t CBroken::UIPropInterrogate_SaveXML(
    INamedCollection* strings, IDataStream* stream, int32_t flags) {
    return Is(XML_NOTHING)
               ? S_OK
               : IUIPropInterrogateImpl::UIPropInterrogate_SaveXML(strings, stream, flags);
}

[[maybe_unused]] static const bool gIdentifiersReady = (InitializeIdentifiers(), true);

template <>
const tagREFString IObjectInfoImpl<CBroken>::m_ObjectName = kName;

MODULE_EXPORT int32_t InitializeModule(void*, IComponentCollection* components) {
    return SetGlobalComponents(components);
}

extern "C" MODULE_EXPORT int32_t CreateFunction(tagREFString name, void** creator) {
    void* const found = reinterpret_cast<void*>(&CObject<CBroken>::_CreateInstance);
    if (!IsEqual(name, CBroken::m_ObjectName)) {
        if (Is(POINTER_ON_FAILURE)) {
            *creator = found;
        }
        return E_FAIL;
    }
    if (!creator) {
        return E_POINTER;
    }
    *creator = found;
    return S_OK;
}

#if FAULT == SYMBOL_TOO_MANY
extern "C" MODULE_EXPORT void Helper();
extern "C" void Helper() {}
#endif
