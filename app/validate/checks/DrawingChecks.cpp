#include "app/validate/Candidate.h"
#include "app/validate/CanvasWatch.h"
#include "app/validate/Scenario.h"
#include "host/components/CreatableString.h"
#include "host/data/Expansion.h"
#include "host/data/SuperCollection.h"
#include "host/text/Text.h"

#include <cstring>

// What drawing leaves behind, where it reaches, and whether what is drawn is what is hit.

namespace {

constexpr int32_t kWidth = 160;
constexpr int32_t kHeight = 120;

/// A picture in one colour, with a canvas on it.
class Paper {
public:
    Paper()
        : m_Surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)),
          m_Context(cairo_create(m_Surface.get())), m_Canvas{m_Context.get()} {
        FillRect(Context(), {0, 0, kWidth, kHeight}, kColor);
        SetSourceColor(Context(), ~kColor); // for who draws with what the host left
    }

    cairo_t* Context() const { return m_Context.get(); }
    UbuntuCanvas* Canvas() { return &m_Canvas; }
    /// The pixels outside the rectangle that are not as they were.
    int Stains(const CANVASRect& rect) const {
        cairo_surface_flush(m_Surface.get());
        int stains = 0;
        for (int32_t y = 0; y < kHeight; ++y) {
            for (int32_t x = 0; x < kWidth; ++x) {
                const bool isInside = x >= rect.left && x - rect.left < rect.width &&
                                      y >= rect.top && y - rect.top < rect.height;
                stains += !isInside && PixelAt(x, y) != kColor ? 1 : 0;
            }
        }
        return stains;
    }

private:
    static constexpr int32_t kColor = 0xFF00FF;

    int32_t PixelAt(int32_t x, int32_t y) const {
        uint32_t pixel = 0;
        const auto stride = cairo_image_surface_get_stride(m_Surface.get());
        std::memcpy(&pixel,
            cairo_image_surface_get_data(m_Surface.get()) + ptrdiff_t{y} * stride +
                ptrdiff_t{x} * 4,
            sizeof(pixel));
        return static_cast<int32_t>(pixel & 0xFFFFFF);
    }

    SurfacePtr m_Surface;
    ContextPtr m_Context;
    UbuntuCanvas m_Canvas;
};

/// Names that are no text: code points that there are not, a zero, nothing, and no name at all.
class OddNames final : public HostObject<OddNames, SuperCollectionBase> {
public:
    static constexpr const char* kKind = "OddNames";

    OddNames() {
        for (int i = 0; i < 8; ++i) {
            Append("", DataOf("x\n").Get());
        }
    }
    int32_t GetItemName(int32_t index, IString** name) override {
        const std::wstring texts[] = {std::wstring(1, wchar_t(0xD800)), std::wstring(3, L'\0'), L"",
            std::wstring(1, wchar_t(-1)), std::wstring(1, wchar_t(0x110000)), L"\n\t\x1b",
            std::wstring(10'000, L'W')};
        *name = nullptr;
        if (index < 0 || static_cast<size_t>(index) >= std::size(texts)) {
            return E_FAIL;
        }
        *name = CreatableString::Make(texts[index]).Detach();
        return S_OK;
    }
};

/// The trees that a drawing is tried with; a component that is no tree draws the same thrice.
std::vector<SmartPtr<ISuperCollection>> Trees() {
    std::vector<SmartPtr<ISuperCollection>> trees = {DataOf(""),
        DataOf("A\n a\n  x\nB\nC\nD\nE\nF\nG\nH\nI\nJ\nK\n"),
        SmartPtr<ISuperCollection>(OddNames::Make().Get())};
    OpenLevels(trees[1].Get(), 2);
    return trees;
}

void Bind(const Candidate& candidate, ISuperCollection* data) {
    if (auto* tree = candidate.As<IUITree>()) {
        tree->put_Collection(data);
        OpenLevels(data, 2);
    }
}

void DrawOn(Trial& trial, IRenderableObject& object, CANVASRect rect) {
    Paper paper;
    cairo_translate(paper.Context(), 3, 2);
    cairo_set_source_rgb(paper.Context(), 0.25, 0.5, 0.75);
    CanvasWatch watch(paper.Context());
    object.Render(paper.Canvas(), &rect, nullptr, 0);
    const char* fault = watch.Fault();
    trial.Expect(!fault, fault ? fault : "");
}

void LeavesTheCanvas(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    auto* object = candidate.Need<IRenderableObject>(trial, "picture");
    int pictures = 0;
    for (const auto& data : Trees()) {
        Bind(candidate, data.Get());
        for (const CANVASRect& rect : {CANVASRect{0, 0, kWidth, kHeight},
                 CANVASRect{10, 10, 60, 40}, CANVASRect{0, 0, 0, 0}, CANVASRect{5, 5, -5, -5}}) {
            DrawOn(trial, *object, rect);
            ++pictures;
        }
    }
    trial.Measure(std::to_string(pictures) + " pictures");
}

void StaysInside(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    auto* object = candidate.Need<IRenderableObject>(trial, "picture");
    int pictures = 0;
    for (const auto& data : Trees()) {
        Bind(candidate, data.Get());
        for (CANVASRect rect : {CANVASRect{20, 15, 80, 60}, CANVASRect{0, 0, 40, 33},
                 CANVASRect{-10, -10, 50, 50}, CANVASRect{100, 90, 500, 500},
                 CANVASRect{20, 20, 7, 7}, CANVASRect{300, 300, 50, 50}}) {
            Paper paper;
            object->Render(paper.Canvas(), &rect, nullptr, 0);
            const int stains = paper.Stains(rect);
            trial.Expect(stains == 0, std::to_string(stains) + " pixels outside the rectangle");
            ++pictures;
        }
    }
    trial.Measure(std::to_string(pictures) + " pictures");
}

/// What was drawn as text, and where.
struct DrawnText {
    std::string m_Text;
    CANVASRect m_Rect;
};

/// The host's text renderer, which writes down instead.
class NotingRenderer final : public HostObject<NotingRenderer, IPMRenderer> {
public:
    static constexpr const char* kKind = "NotingRenderer";

    explicit NotingRenderer(std::vector<DrawnText>& texts) : m_Texts(texts) {}
    int32_t DrawText(IPMRenderStyle*, tagREFString text, UbuntuCanvas*, CANVASRect* rect, int32_t,
        int32_t) override {
        m_Texts.push_back({ToUtf8(text), *rect});
        return S_OK;
    }

private:
    std::vector<DrawnText>& m_Texts;
};

/// The label of a node of the tree, found in the data.
std::string LabelOf(ISuperCollection* data, IUnknown* node) {
    std::string label;
    VisitRows(data, [&](ISuperCollection* collection, int32_t index, int32_t) {
        SmartPtr<IUnknown> item;
        SmartPtr<IString> name;
        collection->GetItem(index, item.Receive());
        collection->GetItemName(index, name.Receive());
        if (item == node) {
            label = ToUtf8(CREFString(name.Get()));
        }
        return true;
    });
    return label;
}

void ExpectHits(Trial& trial, IUITree& tree, ISuperCollection* data, CANVASRect rect,
    const std::vector<DrawnText>& texts) {
    for (const auto& [text, place] : texts) {
        for (const int32_t y : {place.top, place.top + place.height - 1}) {
            SmartPtr<IUnknown> node;
            tree.HitTest(place.left + 1, y, &rect, node.Receive());
            trial.Expect(LabelOf(data, node.Get()) == text,
                "where '" + text + "' is drawn, '" + LabelOf(data, node.Get()) + "' is hit");
        }
    }
}

void Hits(Trial& trial) {
    Stage stage(trial.TheSubject());
    std::vector<DrawnText> texts;
    stage.TheHost().Register(L"PMRenderer", [&](const IID& iid, void** object) {
        return NotingRenderer::Make(texts)->QueryInterface(iid, object);
    });
    stage.Load();
    const Candidate candidate(stage);
    auto* tree = candidate.Need<IUITree>(trial, "tree");
    auto* object = candidate.Need<IRenderableObject>(trial, "picture");
    const auto data = DataOf("A\n a1\n  x\n  y\n a2\nB\nC\n c\nD\nE\nF\nG\nH\nI\nJ\nK\nL\nM\n");
    tree->put_Collection(data.Get());
    OpenLevels(data.Get(), 2);
    size_t rows = 0;
    for (const int32_t height : {15, 22, 7}) {
        tree->SetElementSize(0, height);
        for (int32_t first = 0; first < 18; first += 5) {
            tree->SelectNode(first, SELECT_ABSOLUTE | SELECT_SCROLL | SELECT_UNMARKED);
            CANVASRect rect{10, 8, 140, 100};
            texts.clear();
            object->Render(Paper().Canvas(), &rect, nullptr, 0);
            trial.Expect(!texts.empty(), "nothing is drawn");
            ExpectHits(trial, *tree, data.Get(), rect, texts);
            rows += texts.size();
        }
    }
    trial.Measure(std::to_string(rows) + " rows");
}

} // namespace

std::span<const Check> DrawingChecks() {
    static constexpr Check checks[] = {
        {"draw.canvas",
            "A drawing leaves matrix, source, path and saves of the canvas as they were.",
            "Render: every cairo_save has its cairo_restore, on every path", &LeavesTheCanvas},
        {"draw.clip", "A drawing stays inside its rectangle.",
            "Render: the clip, and what is drawn before and after it", &StaysInside},
        {"draw.hits", "Each row is hit where it is drawn.",
            "HitTest and Render: one geometry for both", &Hits},
    };
    return checks;
}
