#include "bench/Work.h"
#include "framework/settings/ParameterTable.h"
#include "host/settings/TextStream.h"

// Settings that come as XML, and whether a text takes four times what a quarter of it takes or its
// square.

namespace {

constexpr int kWhole = 1'000'000; ///< characters
constexpr int kParts = 4;

/// Elements of different names that are never closed: for each the rest of the text is to be
/// searched.
SmartPtr<TextStream> MakeUnclosed(int length) {
    constexpr int kFirst = 100'000; // names of one length
    std::wstring text;
    for (int number = kFirst; static_cast<int>(text.size()) < length; ++number) {
        text += L"<n" + std::to_wstring(number) + L'>';
    }
    return TextStream::Make(std::move(text));
}

void Load(const Stage& stage, TextStream& text) {
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
