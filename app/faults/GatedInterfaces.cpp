#include "app/faults/GatedObject.h"
#include "framework/Interfaces.h"
#include "framework/interfaces/CollectionVersion.h"

// Every interface through which a module calls its host, an operation a line.

namespace {

template <class Interface>
class Gated;

template <>
class Gated<IUnknown> final : public GatedBase<IUnknown> {
public:
    using GatedBase::GatedBase;
};

template <>
class Gated<IDataStream> final : public GatedBase<IDataStream> {
public:
    using GatedBase::GatedBase;
};

template <>
class Gated<IString> final : public GatedBase<IString> {
public:
    using GatedBase::GatedBase;

    int32_t GetString(wchar_t** text, int32_t* length) override {
        return Pass(&Base::GetString, text, length);
    }
};

template <>
class Gated<ICreatableString> final : public GatedBase<ICreatableString> {
public:
    using GatedBase::GatedBase;

    int32_t GetString(wchar_t** text, int32_t* length) override {
        return Pass(&Base::GetString, text, length);
    }
    int32_t SetString(tagREFString text) override { return Pass(&Base::SetString, text); }
    int32_t AppendString(tagREFString text) override { return Pass(&Base::AppendString, text); }
};

template <>
class Gated<IVariant> final : public GatedBase<IVariant> {
public:
    using GatedBase::GatedBase;

    double GetDouble() override { return Pass(&Base::GetDouble); }
    int32_t SetLong(int32_t value) override { return Pass(&Base::SetLong, value); }
    int32_t SetDouble(double value) override { return Pass(&Base::SetDouble, value); }
};

template <>
class Gated<IStringTable> final : public GatedBase<IStringTable> {
public:
    using GatedBase::GatedBase;

    int32_t GetTable(IString* component, INamedCollection** table) override {
        return Pass(&Base::GetTable, component, table);
    }
};

/// What has items that are found by their names.
template <class Interface>
class GatedItems : public GatedBase<Interface> {
public:
    using GatedBase<Interface>::GatedBase;

    int32_t GetItem(int32_t index, IUnknown** item) final {
        return this->Pass(&Interface::GetItem, index, item);
    }
    int32_t FindItem(IString* name, int32_t* index) final {
        return this->Pass(&Interface::FindItem, name, index);
    }
};

template <>
class Gated<IComponentCollection> final : public GatedItems<IComponentCollection> {
public:
    using GatedItems::GatedItems;

    int32_t CreateComponent(tagREFString name, const IID* iid, void** object) override {
        Owner().TheGate().NoticeComponent(name);
        const bool isWithheld = Owner().TheGate().IsWithheld(name);
        return PassAny(
            [&](IComponentCollection& host) {
                return isWithheld ? (*object = nullptr, E_FAIL)
                                  : host.CreateComponent(name, iid, object);
            },
            iid, object);
    }
};

template <>
class Gated<IComponentString> final : public GatedBase<IComponentString> {
public:
    using GatedBase::GatedBase;

    int32_t SetObject(IUnknown* object) override { return Pass(&Base::SetObject, object); }
    int32_t GetPart(int32_t part, IString** text) override {
        return Pass(&Base::GetPart, part, text);
    }
    int32_t CreateInstance(const IID& iid, void** object) override {
        return PassAny(
            [&](IComponentString& host) { return host.CreateInstance(iid, object); }, &iid, object);
    }
    int32_t SetPart(int32_t part, tagREFString text) override {
        return Pass(&Base::SetPart, part, text);
    }
};

template <>
class Gated<ISuperCollection> final : public GatedBase<ISuperCollection> {
public:
    using GatedBase::GatedBase;

    int32_t GetCount(int32_t* count) override { return Pass(&Base::GetCount, count); }
    int32_t GetItem(int32_t index, IUnknown** item) override {
        return Pass(&Base::GetItem, index, item);
    }
    int32_t GetItemName(int32_t index, IString** name) override {
        return Pass(&Base::GetItemName, index, name);
    }
    int32_t GetItemData(int32_t index, IUnknown** data) override {
        return Pass(&Base::GetItemData, index, data);
    }
    int32_t GetItemFlags(int32_t index, int32_t* flags) override {
        return Pass(&Base::GetItemFlags, index, flags);
    }
    int32_t SetItemFlags(int32_t index, int32_t flags) override {
        return Pass(&Base::SetItemFlags, index, flags);
    }
    int32_t AddEntry(IString* name, IString* component, IString* owner, int32_t reserved) override {
        return Pass(&Base::AddEntry, name, component, owner, reserved);
    }
    int32_t InsertItem(int32_t index, int32_t a, IUnknown* item, int32_t b, int32_t c) override {
        return Pass(&Base::InsertItem, index, a, item, b, c);
    }
    int32_t RemoveAll() override { return Pass(&Base::RemoveAll); }
};

template <>
class Gated<ICollectionVersion> final : public GatedBase<ICollectionVersion> {
public:
    using GatedBase::GatedBase;

    int32_t GetVersion(uint64_t* version) override { return Pass(&Base::GetVersion, version); }
};

template <>
class Gated<INamedCollection> final : public GatedItems<INamedCollection> {
public:
    using GatedItems::GatedItems;
};

template <>
class Gated<IUINode> final : public GatedBase<IUINode> {
public:
    using GatedBase::GatedBase;

    int32_t get_Object(IUnknown** object) override { return Pass(&Base::get_Object, object); }
    int32_t get_Name(IString** name) override { return Pass(&Base::get_Name, name); }
};

template <>
class Gated<ICollectionMoniker> final : public GatedBase<ICollectionMoniker> {
public:
    using GatedBase::GatedBase;

    int32_t BindToObject(const IID& iid, void** object) override {
        return PassAny(
            [&](ICollectionMoniker& host) { return host.BindToObject(iid, object); }, &iid, object);
    }
};

template <>
class Gated<IObjectInfo> final : public GatedBase<IObjectInfo> {
public:
    using GatedBase::GatedBase;

    int32_t GetName(int32_t which, tagREFString* name) override {
        return Pass(&Base::GetName, which, name);
    }
};

template <>
class Gated<IRenderableObject> final : public GatedBase<IRenderableObject> {
public:
    using GatedBase::GatedBase;

    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int32_t param) override {
        return Pass(&Base::Render, canvas, rect, context, param);
    }
};

template <>
class Gated<IPMRenderStyle> final : public GatedBase<IPMRenderStyle> {
public:
    using GatedBase::GatedBase;

    int32_t SetStyleValueA(int32_t value) override { return Pass(&Base::SetStyleValueA, value); }
    int32_t SetStyleValueB(int32_t value) override { return Pass(&Base::SetStyleValueB, value); }
    int32_t SetStyleSize(int32_t size) override { return Pass(&Base::SetStyleSize, size); }
    int32_t SetStyleValuePair(int32_t first, int32_t second) override {
        return Pass(&Base::SetStyleValuePair, first, second);
    }
    int32_t SetColor(int32_t rgb) override { return Pass(&Base::SetColor, rgb); }
    int32_t SetStyleValue(int32_t value) override { return Pass(&Base::SetStyleValue, value); }
    int32_t SetStyleValueC(int32_t value) override { return Pass(&Base::SetStyleValueC, value); }
};

template <>
class Gated<IPMRenderer> final : public GatedBase<IPMRenderer> {
public:
    using GatedBase::GatedBase;

    int32_t DrawText(IPMRenderStyle* style, tagREFString text, UbuntuCanvas* canvas,
        CANVASRect* rect, int32_t a, int32_t b) override {
        return Pass(&Base::DrawText, style, text, canvas, rect, a, b);
    }
};

template <>
class Gated<IUIScrollBar> final : public GatedBase<IUIScrollBar> {
public:
    using GatedBase::GatedBase;

    int32_t GetPos(int32_t* pos) override { return Pass(&Base::GetPos, pos); }
    int32_t SetPos(int32_t pos) override { return Pass(&Base::SetPos, pos); }
    int32_t SetRange(int32_t min, int32_t max) override { return Pass(&Base::SetRange, min, max); }
    int32_t Configure(int32_t what, int32_t value) override {
        return Pass(&Base::Configure, what, value);
    }
    int32_t Layout(CANVASRect* area, CANVASRect* bar, CANVASRect* client) override {
        return Pass(&Base::Layout, area, bar, client);
    }
};

template <>
class Gated<IUIMouseInput> final : public GatedBase<IUIMouseInput> {
public:
    using GatedBase::GatedBase;

    int32_t Pointer(int32_t state, int32_t action, int32_t keys, double x, double y,
        CANVASRect* rect, IUnknown* context) override {
        return Pass(&Base::Pointer, state, action, keys, x, y, rect, context);
    }
};

template <>
class Gated<IFileArchive> final : public GatedBase<IFileArchive> {
public:
    using GatedBase::GatedBase;

    int32_t SetFileName(IString* fileName) override { return Pass(&Base::SetFileName, fileName); }
    int32_t Populate() override { return Pass(&Base::Populate); }
    int32_t GetContentState(int32_t selector, int32_t* value) override {
        return Pass(&Base::GetContentState, selector, value);
    }
};

template <>
class Gated<IFileNameCollection> final : public GatedBase<IFileNameCollection> {
public:
    using GatedBase::GatedBase;

    int32_t Populate() override { return Pass(&Base::Populate); }
    int32_t GetContentState(int32_t selector, int32_t* value) override {
        return Pass(&Base::GetContentState, selector, value);
    }
};

template <>
class Gated<IRegistryEx> final : public GatedBase<IRegistryEx> {
public:
    using GatedBase::GatedBase;

    int32_t ReadString(const wchar_t* section, const wchar_t* key, wchar_t* buffer) override {
        return Pass(&Base::ReadString, section, key, buffer);
    }
};

template <>
class Gated<IUIPropInterrogate> final : public GatedBase<IUIPropInterrogate> {
public:
    using GatedBase::GatedBase;

    int32_t Inquire(int32_t id, int32_t* value) override { return Pass(&Base::Inquire, id, value); }
    int32_t Control(int32_t id, int32_t value) override { return Pass(&Base::Control, id, value); }
    int32_t ParameterRange(int32_t id, int32_t* minimum, int32_t* maximum) override {
        return Pass(&Base::ParameterRange, id, minimum, maximum);
    }
    int32_t ParameterEnumeration(int32_t id, IUnknown** enumeration) override {
        return Pass(&Base::ParameterEnumeration, id, enumeration);
    }
};

template <>
class Gated<IFolderStream> final : public GatedBase<IFolderStream> {
public:
    using GatedBase::GatedBase;

    int32_t CreateFolder(IString* name, int32_t mode, IFolderStream** folder) override {
        return Pass(&Base::CreateFolder, name, mode, folder);
    }
    int32_t WriteData(IString* entry, const void* data, int32_t size, int32_t mode) override {
        return Pass(&Base::WriteData, entry, data, size, mode);
    }
    int32_t WriteString(IString* entry, IString* value) override {
        return Pass(&Base::WriteString, entry, value);
    }
    int32_t WriteObject(IString* entry, IUnknown* object, int32_t mode) override {
        return Pass(&Base::WriteObject, entry, object, mode);
    }
    int32_t ReadData(IString* entry, void* data, int32_t size, int32_t mode) override {
        return Pass(&Base::ReadData, entry, data, size, mode);
    }
    int32_t ReadString(IString* entry, IString* value) override {
        return Pass(&Base::ReadString, entry, value);
    }
    int32_t OpenFolder(IVariant* key, int32_t mode, IFolderStream** folder) override {
        return Pass(&Base::OpenFolder, key, mode, folder);
    }
    int32_t ReadObject(IString* entry, IUnknown** object, int32_t mode) override {
        return Pass(&Base::ReadObject, entry, object, mode);
    }
};

template <>
class Gated<IXMLStream> final : public GatedBase<IXMLStream> {
public:
    using GatedBase::GatedBase;

    int32_t WriteElement(IString* name, int32_t a, IString* value, int32_t b) override {
        return Pass(&Base::WriteElement, name, a, value, b);
    }
};

template <>
class Gated<_IUIContainerEvents> final : public GatedBase<_IUIContainerEvents> {
public:
    using GatedBase::GatedBase;

    int32_t NodeSelect(IUnknown* container, int32_t state, int32_t index, int32_t action,
        IUnknown* node) override {
        return Pass(&Base::NodeSelect, container, state, index, action, node);
    }
    int32_t NodeDrag(
        IUnknown* context, int32_t state, int32_t x, int32_t y, IUnknown* node) override {
        return Pass(&Base::NodeDrag, context, state, x, y, node);
    }
};

template <>
class Gated<_IUIRefreshEvent> final : public GatedBase<_IUIRefreshEvent> {
public:
    using GatedBase::GatedBase;

    int32_t UIItemChanged(IUnknown* item, int32_t flags) override {
        return Pass(&Base::UIItemChanged, item, flags);
    }
};

template <class... Interfaces>
std::unique_ptr<GatedInterface> MakeOneOf(GatedObject& owner, const IID& iid, IUnknown* object) {
    std::unique_ptr<GatedInterface> made;
    const auto match = [&]<class Interface>(std::type_identity<Interface>) {
        if (iid == IdentifierOf<Interface>()) {
            if (auto inner = Query<Interface>(object)) {
                made = std::make_unique<Gated<Interface>>(owner, std::move(inner));
            }
        }
    };
    (match(std::type_identity<Interfaces>()), ...);
    return made;
}

} // namespace

std::unique_ptr<GatedInterface> MakeGated(GatedObject& owner, const IID& iid, IUnknown* object) {
    return MakeOneOf<IUnknown, IDataStream, IString, ICreatableString, IVariant, IStringTable,
        IComponentCollection, IComponentString, ISuperCollection, ICollectionVersion,
        INamedCollection, IUINode, ICollectionMoniker, IObjectInfo, IRenderableObject,
        IPMRenderStyle, IPMRenderer, IUIScrollBar, IUIMouseInput, IFileArchive, IFileNameCollection,
        IRegistryEx, IUIPropInterrogate, IFolderStream, IXMLStream, _IUIContainerEvents,
        _IUIRefreshEvent>(owner, iid, object);
}
