#include "bench/Work.h"
#include "framework/settings/ParameterTable.h"
#include "host/components/HostObject.h"

// Settings that come as XML, and whether a text takes four times what a quarter of it takes or its
// square.

namespace {

constexpr int kWhole = 1'000'000; ///< characters
constexpr int kParts = 4;

/// A text as the stream of a host's.
class Text final : public HostObject<Text, IDataStream, IXMLStream, IString> {
public:
    static constexpr const char* kKind = "Text";

    explicit Text(std::wstring text) : m_Text(std::move(text)) {}
    int32_t WriteElement(IString*, int32_t, IString*, int32_t) override { return E_FAIL; }
    int32_t GetString(wchar_t** text, int32_t* length) override {
        *text = m_Text.data();
        *length = static_cast<int32_t>(m_Text.size());
        return S_OK;
    }

private:
    std::wstring m_Text;
};

/// Elements of different names that are never closed: for each the rest of the text is to be
/// searched.
SmartPtr<Text> MakeUnclosed(int length) {
    constexpr int kFirst = 100'000; // names of one length
    std::wstring text;
    for (int number = kFirst; static_cast<int>(text.size()) < length; ++number) {
        text += L"<n" + std::to_wstring(number) + L'>';
    }
    return Text::Make(std::move(text));
}

void Load(const Stage& stage, Text& text) {
    auto properties = Query<IUIPropInterrogateEx>(stage.Tree());
    Adopt(static_cast<IUIPropInterrogatePersist*>(properties.Detach()))
        ->UIPropInterrogate_LoadXML(nullptr, &text, 0);
}

} // namespace

void AddSettings() {
    const auto whole = MakeUnclosed(kWhole);
    const auto part = MakeUnclosed(kWhole / kParts);
    Measure({"load settings/" + std::to_string(kWhole) + "/unclosed", 100'000,
        [] {
            return MakeTree({Data::kSuper, Vouched::kNo}, Shape::kFlat, 1);
        },
        [](Stage&) {}, [whole](Stage& stage) { Load(stage, *whole.Get()); },
        [part](Stage& stage) {
            for (int i = 0; i < kParts; ++i) {
                Load(stage, *part.Get());
            }
        }});
}
