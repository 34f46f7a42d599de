// A module of its own with one component, "Swatch": an item that draws itself as a square of its
// colour, which is its parameter 1.

#include "framework/Interfaces.h"
#include "framework/Runtime.h"
#include "framework/Support.h"

#include <cairo.h>

class CSwatch;
template <>
MODULE_EXPORT const tagREFString IObjectInfoImpl<CSwatch>::m_ObjectName;

class CSwatch final : public CObject<CSwatch>,
                      public IObjectInfoImpl<CSwatch>,
                      public IRenderableObject,
                      public IUIPropInterrogateImpl<CSwatch, IUIPropInterrogateEx, 10> {
public:
    int32_t QueryInterface(const IID& iid, void** object) override;
    int32_t AddRef() override { return m_RefCount.Increment(); }
    int32_t Release() override;
    int32_t FinalConstruct() override;
    void Lock() override { m_Lock.Lock(); }
    void Unlock() override { m_Lock.Unlock(); }

    int32_t Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown*, int32_t) override;

private:
    friend class CObject<CSwatch>;
    ~CSwatch() { m_Lock.Delete(); }

    CResourceLock m_Lock;
    int32_t m_Color = 0x808080; ///< 0xRRGGBB
};

int32_t CSwatch::QueryInterface(const IID& iid, void** object) {
    *object = nullptr;
    if (iid == IID_IUnknown) {
        *object = static_cast<ObjectBase*>(this);
    } else if (iid == IID_IObjectInfo) {
        *object = static_cast<IObjectInfo*>(this);
    } else if (iid == IID_IRenderableObject) {
        *object = static_cast<IRenderableObject*>(this);
    } else if (iid == IID_IUIPropInterrogate || iid == IID_IUIPropInterrogateEx) {
        *object = static_cast<IUIPropInterrogateEx*>(this);
    }
    return *object ? (AddRef(), S_OK) : E_NOINTERFACE;
}

int32_t CSwatch::Release() {
    const int32_t count = m_RefCount.Decrement();
    if (count == 0) {
        m_RefCount.HoldWhileDying();
        FinalRelease();
        delete this;
    }
    return count;
}

int32_t CSwatch::FinalConstruct() {
    return AddParameter(1, PROPTYPE_LONG | PROPFLAG_COLOR, &m_Color);
}

int32_t CSwatch::Render(UbuntuCanvas* canvas, CANVASRect* rect, IUnknown*, int32_t) {
    if (!canvas || !canvas->m_Context || !rect) {
        return E_POINTER;
    }
    const auto part = [this](int shift) { return ((m_Color >> shift) & 0xFF) / 255.0; };
    cairo_save(canvas->m_Context); // the host's colour stays the host's
    cairo_set_source_rgb(canvas->m_Context, part(16), part(8), part(0));
    cairo_rectangle(canvas->m_Context, rect->left, rect->top, rect->width, rect->height);
    cairo_fill(canvas->m_Context);
    cairo_restore(canvas->m_Context);
    return S_OK;
}

// What every module has: identifiers before anything else runs, and two entry points.

[[maybe_unused]] static const bool gIdentifiersReady = (InitializeIdentifiers(), true);

template <>
const tagREFString IObjectInfoImpl<CSwatch>::m_ObjectName = {6, L"Swatch"};

MODULE_EXPORT int32_t InitializeModule(void*, IComponentCollection* components) {
    return SetGlobalComponents(components);
}

extern "C" MODULE_EXPORT int32_t CreateFunction(tagREFString name, void** creator) {
    if (!IsEqual(name, CSwatch::m_ObjectName)) {
        return E_FAIL;
    }
    if (!creator) {
        return E_POINTER;
    }
    *creator = reinterpret_cast<void*>(&CObject<CSwatch>::_CreateInstance);
    return S_OK;
}
