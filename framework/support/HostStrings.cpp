#include "framework/support/HostStrings.h"

#include "framework/runtime/Components.h"
#include "framework/support/Format.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>

namespace {

constexpr unsigned int kNumberCapacity = 256;

/// Makes objects of a component of the module "Collections" through a component description, which
/// is made once and kept.
void* CreateDescribed(
    SmartPtr<IComponentString>& description, const wchar_t* component, const IID& iid) {
    if (!description) {
        const CreatorFunction creator =
            MODULECreateFunction(CREFString(L"CollectionsEx"), CREFString(L"ComponentString"));
        if (!creator) {
            return nullptr;
        }
        IID descriptionIID = IID_IComponentString;
        creator(nullptr, &descriptionIID, description.ReceiveAny());
        if (!description) {
            return nullptr;
        }
        if (description->SetPart(COMPONENTPART_MODULE, CREFString(L"Collections")) < 0 ||
            description->SetPart(COMPONENTPART_NAME, CREFString(component)) < 0) {
            description.Reset(); // it would describe something else
            return nullptr;
        }
    }
    void* object = nullptr;
    description->CreateInstance(iid, &object);
    return object;
}

template <class Value>
ICreatableString* CreateFormatted(const wchar_t* format, Value value) {
    wchar_t text[kNumberCapacity];
    _swprintf(text, kNumberCapacity, format, value);
    return ISCreate(text);
}

} // namespace

ICreatableString* CREFString::CreateString() {
    static SmartPtr<IComponentString> gStringComponent;
    return static_cast<ICreatableString*>(
        CreateDescribed(gStringComponent, L"CreatableString", IID_ICreatableString));
}

IVariant* CREFString::CreateVariant() {
    static SmartPtr<IComponentString> gVariantComponent;
    return static_cast<IVariant*>(CreateDescribed(gVariantComponent, L"Variant", IID_IVariant));
}

ICreatableString* ISCreate(const wchar_t* text) {
    return ISCreate(CREFString(text));
}

ICreatableString* ISCreate(const tagREFString& text) {
    auto created = Adopt(CREFString::CreateString());
    const bool isFilled = created && created->SetString(text) >= 0;
    return isFilled ? created.Detach() : nullptr;
}

ICreatableString* ISCreate(int32_t value) {
    return CreateFormatted(L"%i", value);
}

ICreatableString* ISCreate(double value) {
    // Not through the C library's formats: their decimal point is the locale's.
    constexpr int kDecimals = 6;
    char digits[kNumberCapacity - 1];
    const auto [end, error] = std::to_chars(
        std::begin(digits), std::end(digits), value, std::chars_format::fixed, kDecimals);
    const char* fits = error == std::errc() ? end : digits;
    wchar_t text[kNumberCapacity] = {};
    std::copy(static_cast<const char*>(digits), fits, text);
    return ISCreate(text);
}

ICreatableString* ISCreateHex(int32_t value) {
    return CreateFormatted(L"#%06X", value);
}

ICreatableString* ISCreateName(const char* name) {
    auto created = Adopt(CREFString::CreateString());
    const char* end = name + std::strlen(name);
    while (created && name < end) {
        wchar_t character = 0;
        const int used = std::mbtowc(&character, name, static_cast<size_t>(end - name));
        if (used <= 0) {
            break;
        }
        created->AppendString({1, &character});
        name += used;
    }
    return created.Detach();
}
