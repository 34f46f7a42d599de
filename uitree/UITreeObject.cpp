#include "uitree/UITreeImpl.h"

#include "framework/Support.h"

// The control as an object: its interfaces, its life, its parent and its listeners.

// What each base adds to the object: its table pointer and its fields, in that order.
static_assert(sizeof(CObject<CUITree>) == 2 * sizeof(void*));
static_assert(sizeof(IObjectInfoImpl<CUITree>) == sizeof(void*));
static_assert(sizeof(IUIPropInterrogateImpl<CUITree, IUIPropInterrogateEx, 10L>) ==
              2 * sizeof(void*) + 2 * sizeof(int32_t));
static_assert(
    sizeof(IEventSourceImpl<CUITree, &IID_IUnknown>) == 2 * sizeof(void*) + 2 * sizeof(int32_t));
static_assert(std::is_empty_v<_FIREUIContainerEvents<CUITree>>);
static_assert(std::is_empty_v<_FIREUIRefreshEvents<CUITree>>);

CUITree::CUITree() {
    gettimeofday(&m_LastClickTime, nullptr);
}

/// The listeners go while the lock still works, and after everything else that is held, last first.
CUITree::~CUITree() {
    m_PressedNode.Reset();
    m_SelectedCollection.Reset();
    m_ClosedIcon.Reset();
    m_OpenIcon.Reset();
    m_Parent.Reset();
    m_Collection.Reset();
    m_Renderer.Reset();
    m_RenderStyle.Reset();
    m_ScrollBar.Reset();
    SinkList::Close(*this);
    m_Lock.Delete();
}

template <class... Interfaces>
void* CUITree::FindInterface(const IID& iid) {
    void* found = nullptr;
    const auto matches = [&]<class Interface>(Interface* candidate) {
        if (iid == IdentifierOf<Interface>()) {
            found = candidate;
        }
        return found != nullptr;
    };
    (matches(static_cast<Interfaces*>(this)) || ...);
    return found;
}

int32_t CUITree::QueryInterface(const IID& iid, void** object) {
    if (iid == IID_IUnknown) {
        *object = Self();
    } else {
        *object = FindInterface<IObjectInfo, IDataPersist, IEventSource, IParent, IRenderableObject,
            IUINodeContainer, IUIMouseInput, IUIPropInterrogate, IUIPropInterrogateEx,
            IUIPropertyPageSpecify, IUIRefreshableObject, IUITouchInput, IUITree, _IUIRefreshEvent>(
            iid);
    }
    if (!*object) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

int32_t CUITree::AddRef() {
    return m_RefCount.Increment();
}

int32_t CUITree::Release() {
    const int32_t count = m_RefCount.Decrement();
    if (count != 0) {
        return count;
    }
    m_RefCount.HoldWhileDying();
    FinalRelease();
    delete this;
    return 0;
}

int32_t CUITree::FinalConstruct() {
    m_Collection.Attach(BASEObject::CreateNamedCollection());
    m_ScrollBar = CreateHostObject<IUIScrollBar>("UIScrollBar");
    if (m_ScrollBar) {
        m_ScrollBar->Configure(SCROLLBAR_WIDTH, m_ScrollBarWidth);
        m_ScrollBar->SetPos(0);
    }
    LoadIcons();
    m_RenderStyle = CreateHostObject<IPMRenderStyle>("PMRenderStyle");
    if (m_RenderStyle) {
        m_RenderStyle->SetStyleValueC(-1);
        m_RenderStyle->SetStyleValueB(1);
        m_RenderStyle->SetStyleValuePair(-1, 0);
        m_RenderStyle->SetStyleValueA(0);
    }
    m_Renderer = CreateHostObject<IPMRenderer>("PMRenderer");
    return RegisterParameters();
}

void CUITree::LoadIcons() {
    m_OpenIcon.Attach(ICONCreate(CREFString(L"UITreeOpen.png")));
    m_ClosedIcon.Attach(ICONCreate(CREFString(L"UITreeClosed.png")));
}

void CUITree::FinalRelease() {
    m_Known.Bind({});
    m_Collection.Reset();
}

void CUITree::Lock() {
    m_Lock.Lock();
}

void CUITree::Unlock() {
    m_Lock.Unlock();
}

int32_t CUITree::get_Parent(IUnknown** parent) {
    if (!parent) {
        return E_POINTER;
    }
    *parent = SmartPtr(m_Parent).Detach();
    return *parent ? S_OK : E_FAIL;
}

int32_t CUITree::put_Parent(IUnknown* parent) {
    return Perform([&] {
        m_Parent = parent;
        return S_OK;
    });
}

int32_t CUITree::Advise(IUnknown* sink, int32_t flags) {
    return Perform([&] {
        if (Advise(sink, flags, IID__IUIRefreshEvent) >= 0) {
            return S_OK;
        }
        return Advise(sink, flags, IID__IUIContainerEvents);
    });
}
