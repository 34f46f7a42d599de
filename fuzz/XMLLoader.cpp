// The loader of XML settings: any text sets the parameters to something, which survives a save and
// a load.

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/settings/PropInterrogate.h"
#include "framework/support/HostStrings.h"
#include "fuzz/Input.h"
#include "host/components/HostObject.h"

#include <cmath>
#include <string>

namespace {

/// The parameters' names are "P1", "P2" and so on.
class Names final : public HostObject<Names, INamedCollection> {
public:
    static constexpr const char* kKind = "Names";
    int32_t GetItem(int32_t index, IUnknown** item) override {
        *item = ISCreate((L"P" + std::to_wstring(index)).c_str());
        return S_OK;
    }
    int32_t FindItem(IString*, int32_t*) override { return E_FAIL; }
};

class Text final : public HostObject<Text, IDataStream, IXMLStream, IString> {
public:
    static constexpr const char* kKind = "Text";
    explicit Text(std::vector<wchar_t> text = {}) : m_Text(std::move(text)) {}

    int32_t WriteElement(IString* name, int32_t, IString* value, int32_t) override {
        const auto append = [&](std::wstring_view text) {
            m_Text.insert(m_Text.end(), text.begin(), text.end());
        };
        for (const auto& part : {std::pair{L"<", CREFString(name)}, {L">", CREFString(value)},
                 {L"</", CREFString(name)}}) {
            append(part.first);
            append(ViewOf(part.second));
        }
        append(L">");
        return S_OK;
    }
    int32_t GetString(wchar_t** text, int32_t* length) override {
        *text = m_Text.data();
        *length = static_cast<int32_t>(m_Text.size());
        return S_OK;
    }

    std::vector<wchar_t> m_Text;
};

class Settings final : public CObject<Settings>,
                       public IUIPropInterrogateImpl<Settings, IUIPropInterrogateEx, 10l> {
public:
    Settings() {
        const std::pair<uint32_t, void*> parameters[] = {{PROPTYPE_BYTE, &m_Byte},
            {PROPTYPE_SHORT, &m_Short}, {PROPTYPE_LONG | PROPFLAG_COLOR, &m_Color},
            {PROPTYPE_FLOAT, &m_Float}, {PROPTYPE_DOUBLE, &m_Double}};
        for (const auto& [flags, field] : parameters) {
            AddParameter(static_cast<int32_t>(flags & PROPTYPE_MASK), flags, field);
        }
    }
    int32_t QueryInterface(const IID&, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    int32_t AddRef() override { return m_RefCount.Increment(); }
    int32_t Release() override { return m_RefCount.Decrement(); }

    void Load(Text& text) {
        UIPropInterrogate_LoadXML(m_Names.Get(), static_cast<IDataStream*>(&text), 0);
        // From here on the whole part of a number wraps around when it is read.
        constexpr double kWraps = 0x1p63;
        m_Float = std::abs(m_Float) < kWraps ? m_Float : 0;
        m_Double = std::abs(m_Double) < kWraps ? m_Double : 0;
    }
    SmartPtr<Text> Save() {
        auto text = Text::Make();
        UIPropInterrogate_SaveXML(m_Names.Get(), static_cast<IDataStream*>(text.Get()), 0);
        return text;
    }

private:
    SmartPtr<Names> m_Names = Names::Make();
    uint8_t m_Byte = 1;
    int16_t m_Short = 2;
    int32_t m_Color = 3;
    float m_Float = 4;
    double m_Double = 5;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Input input(data, size);
    Settings first;
    first.Load(*Text::Make(input.Text()).Get());
    const auto saved = first.Save();
    Settings second;
    second.Load(*saved.Get());
    Require(second.Save()->m_Text == saved->m_Text);
    return 0;
}
