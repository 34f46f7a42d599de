#include "uitree/UITreeImpl.h"

#include "framework/Support.h"
#include "framework/runtime/OutParameter.h"

// The control's parameters, its settings page, and the way to its stored settings.

namespace {

constexpr uint32_t kColor = PROPTYPE_LONG | PROPFLAG_COLOR;
/// Carried by parameters that are registered with the range 0..1.
constexpr uint32_t kRanged = 0x10;
/// What Inquire answers for the scroll position, which stands in no record.
constexpr int32_t kScrollPosFlags = 0x80003;

} // namespace

int32_t CUITree::RegisterParameters() {
    const struct {
        int32_t id;
        uint32_t flags;
        void* field;
        int32_t maximum;
    } parameters[] = {
        {PROP_ELEMENTHEIGHT, PROPTYPE_LONG, &m_ElementHeight, 0},
        {PROP_TEXTCOLOR, kColor, &m_TextColor, 0},
        {PROP_COLOR101, kColor, &m_Color101, 0},
        {PROP_COLOR102, kColor, &m_Color102, 0},
        {PROP_USEDEFAULTSTYLE, PROPTYPE_LONG | kRanged, &m_UseDefaultStyle, 1},
        {PROP_ROOTTOGGLEONICONONLY, PROPTYPE_LONG | kRanged, &m_RootToggleOnIconOnly, 1},
        {PROP_CHILDTOGGLEONICONONLY, PROPTYPE_LONG | kRanged, &m_ChildToggleOnIconOnly, 1},
        {PROP_OPENICON, PROPTYPE_OBJECT | kRanged, &m_OpenIcon, 1},
        {PROP_CLOSEDICON, PROPTYPE_OBJECT | kRanged, &m_ClosedIcon, 1},
        {PROP_RESETICONS, PROPTYPE_ACTION, &m_ResetIcons, 0},
    };
    for (const auto& parameter : parameters) {
        if (AddParameter(parameter.id, parameter.flags, parameter.field, 0, parameter.maximum) !=
            S_OK) {
            return E_FAIL;
        }
    }
    return S_OK;
}

int32_t CUITree::Inquire(int32_t id, int32_t* value) {
    const auto answerSwitch = [value](int32_t field) {
        Store(value, field);
        return field == 0 ? S_FALSE : S_OK;
    };
    switch (id) {
    case PROP_SELECTONPRESS:
        return answerSwitch(m_SelectOnPress);
    case PROP_CLEARALLONSELECT:
        return answerSwitch(m_ClearAllOnSelect);
    case PROP_SCROLLPOS:
        Store(value, 0);
        return Perform([&] {
            if (m_ScrollBar) {
                m_ScrollBar->GetPos(value);
            }
            return kScrollPosFlags;
        });
    default:
        return IUIPropInterrogateImpl::Inquire(id, value);
    }
}

int32_t CUITree::Control(int32_t id, int32_t value) {
    switch (id) {
    case PROP_RESERVED104:
    case PROP_RESERVED116:
        return S_OK;
    case PROP_SCROLLPOS:
        return Perform([&] { return m_ScrollBar ? m_ScrollBar->SetPos(value) : E_FAIL; });
    case PROP_OPTIONS:
        m_Options = value;
        return S_OK;
    case PROP_SELECTONPRESS:
        m_SelectOnPress = value;
        return S_OK;
    case PROP_CLEARALLONSELECT:
        m_ClearAllOnSelect = value;
        return S_OK;
    case PROP_RESETICONS:
        return Perform([&] {
            LoadIcons();
            return Refresh(0);
        });
    default:
        return IUIPropInterrogateImpl::Control(id, value);
    }
}

int32_t CUITree::GetPages(int32_t /*page*/, INamedCollection** pages, IUnknown** /*reserved*/) {
    if (!pages) {
        return E_POINTER;
    }
    *pages = nullptr;
    return Perform([&] {
        auto list = Adopt(BASEObject::CreateNamedCollection());
        if (!list) {
            return E_FAIL;
        }
        const auto name = Adopt(ISCreate(m_ObjectName));
        const auto page = Adopt(ISCreate(CREFString(L"UIPropPages.UIPropInterrogatePropPage")));
        const auto owner = Adopt(ISCreate(m_ObjectName));
        list->AddEntry(name.Get(), page.Get(), owner.Get(), 0);
        // The list travels as its ISuperCollection interface, whatever the pointer type says.
        *pages = reinterpret_cast<INamedCollection*>(list.Detach());
        return S_OK;
    });
}

int32_t CUITree::Save(IDataStream* stream, int32_t flags) {
    return Perform([&] {
        const auto folder = Query<IFolderStream>(stream);
        return folder ? UIPropInterrogate_SaveFolderStream(nullptr, folder.Get(), flags) : S_OK;
    });
}

int32_t CUITree::Load(IDataStream* stream, int32_t flags) {
    return Perform([&] {
        const auto folder = Query<IFolderStream>(stream);
        return folder ? UIPropInterrogate_LoadFolderStream(folder.Get(), flags) : S_OK;
    });
}
