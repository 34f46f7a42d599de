#include "host/settings/StringTable.h"

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/support/FileNames.h"
#include "host/components/CreatableString.h"
#include "host/text/KeyFile.h"
#include "host/text/Numbers.h"
#include "host/text/Text.h"

#include <map>

namespace {

constexpr const char* kSection = "Parameters";

using Texts = std::map<int32_t, std::string>;

/// The texts of one component. The index of an entry is its key.
class ComponentTexts final : public HostObject<ComponentTexts, INamedCollection> {
public:
    static constexpr const char* kKind = "ComponentTexts";

    explicit ComponentTexts(Texts texts) : m_Texts(std::move(texts)) {}

    int32_t GetItem(int32_t index, IUnknown** item) override {
        if (!item) {
            return E_POINTER;
        }
        *item = nullptr;
        const auto found = m_Texts.find(index);
        if (found == m_Texts.end()) {
            return E_INVALIDARG;
        }
        SmartPtr<IString> text;
        const int32_t status = HandOutString(found->second, text.Receive());
        *item = text.Detach();
        return status;
    }

    int32_t FindItem(IString* name, int32_t* index) override {
        if (!index) {
            return E_POINTER;
        }
        *index = 0;
        return Guarded([&] {
            const std::string text = ToUtf8(CREFString(name));
            const auto key = ReadInteger(text);
            if (!key || std::to_string(*key) != text || !m_Texts.contains(*key)) {
                return E_INVALIDARG;
            }
            *index = *key;
            return S_OK;
        });
    }

private:
    Texts m_Texts;
};

/// Only the files of that one folder can be named.
bool IsFileName(const std::string& name) {
    return !name.empty() && name.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
}

Texts ReadTexts(const std::string& component) {
    Texts texts;
    SmartPtr<IString> common;
    if (!IsFileName(component) || FILENAMEGetCommonPath(common.Receive()) < 0) {
        return texts;
    }
    const std::filesystem::path folder(ToUtf8(CREFString(common.Get())));
    const KeyFile file(folder / "_strings" / (component + ".ini"));
    for (const std::string& key : file.KeysOf(kSection)) {
        const auto number = ReadInteger(key);
        const auto text = file.Read(kSection, key);
        if (number && text) {
            texts[*number] = *text;
        }
    }
    return texts;
}

} // namespace

int32_t StringTable::GetTable(IString* component, INamedCollection** table) {
    if (!table) {
        return E_POINTER;
    }
    *table = nullptr;
    return Guarded([&] {
        Texts texts = ReadTexts(ToUtf8(CREFString(component)));
        if (texts.empty()) {
            return E_FAIL;
        }
        *table = ComponentTexts::Make(std::move(texts)).Detach();
        return S_OK;
    });
}
