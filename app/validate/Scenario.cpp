#include "app/validate/Scenario.h"

#include "host/components/HostObject.h"
#include "host/settings/Document.h"
#include "host/settings/XmlFile.h"
#include "host/sources/OutlineSource.h"

#include <sstream>

namespace {

constexpr int32_t kWidth = 160;
constexpr int32_t kHeight = 70;
constexpr int32_t kPaper = 0xFF00FF; ///< a colour that nobody draws in
constexpr const char* kOutline = "A\n a1\n  x\n a2\nB\n b1\nC\nD\n";

/// Hears everything and does nothing.
class SilentListener final
    : public HostObject<SilentListener, _IUIContainerEvents, _IUIRefreshEvent> {
public:
    static constexpr const char* kKind = "SilentListener";

    int32_t NodeSelect(IUnknown*, int32_t, int32_t, int32_t, IUnknown*) override { return S_OK; }
    int32_t NodeDrag(IUnknown*, int32_t, int32_t, int32_t, IUnknown*) override { return S_OK; }
    int32_t UIItemChanged(IUnknown*, int32_t) override { return S_OK; }
};

template <class T>
SmartPtr<T> Shown(Gate* gate, T* object) {
    return gate ? gate->Wrap(object) : SmartPtr<T>(object);
}

} // namespace

SmartPtr<ISuperCollection> DataOf(const std::string& outline) {
    std::istringstream text(outline);
    return ReadOutline(text);
}

SmartPtr<ISuperCollection> Scenario::OrdinaryData() {
    return DataOf(kOutline);
}

Scenario::Scenario(Gate* gate, const SmartPtr<ISuperCollection>& data)
    : m_Data(Shown(gate, data.Get())), m_Second(Shown(gate, DataOf("A\nB\n").Get())),
      m_Item(Shown(gate, Query<IUnknown>(DataOf("x\n").Get()).Get())),
      m_Listener(Shown(gate, SilentListener::Make()->Identity())),
      m_Document(std::make_unique<Document>(Document::InMemory())),
      m_Folders(Shown(gate, m_Document->Root().Get())),
      m_Text(Shown(gate, static_cast<IDataStream*>(XmlFile::Make().Get()))),
      m_Surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)),
      m_Context(cairo_create(m_Surface.get())), m_Canvas{m_Context.get()}, m_Rect{0, 0, kWidth,
                                                                               kHeight} {}

Scenario::~Scenario() = default;

void Scenario::Bind(IUnknown* object, ISuperCollection* data) {
    if (const auto tree = Query<IUITree>(object)) {
        tree->put_Collection(data);
    }
}

int32_t Scenario::Draw(IUnknown* object, UbuntuCanvas& canvas) {
    const auto drawn = Query<IRenderableObject>(object);
    return drawn ? drawn->Render(&canvas, &m_Rect, nullptr, 0) : S_OK;
}

void Scenario::Play(IUnknown* object) {
    const auto source = Query<IEventSource>(object);
    if (source) {
        source->Advise(m_Listener.Get(), 1);
    }
    if (const auto child = Query<IParent>(object)) {
        child->put_Parent(m_Listener.Get());
    }
    Bind(object, m_Data.Get());
    Draw(object, m_Canvas);
    if (const auto tree = Query<IUITree>(object)) {
        Browse(*tree.Get());
    }
    Draw(object, m_Canvas);
    if (const auto input = Query<IUIMouseInput>(object)) {
        Point(*input.Get());
    }
    if (const auto input = Query<IUITouchInput>(object)) {
        for (const double phase : {0.0, 1.0, -1.0}) {
            input->Touch(5, 5, &m_Rect, phase, 0, 0, 0, 0, 0, -40, 0, 0);
        }
    }
    Ask(object);
    Keep(object);
    Draw(object, m_Canvas);
    Close(object);
    if (source) {
        source->Advise(nullptr, ADVISE_DISCONNECT);
    }
}

std::optional<size_t> Scenario::Picture(IUnknown* object) {
    if (const auto tree = Query<IUITree>(object)) {
        tree->SetElementSize(0, 12); // it may have been set to anything
    }
    Bind(object, m_Second.Get());
    const SurfacePtr paper(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight));
    const ContextPtr context(cairo_create(paper.get()));
    FillRect(context.get(), m_Rect, kPaper);
    SetSourceColor(context.get(), ~kPaper); // for who draws with what the host left
    UbuntuCanvas canvas{context.get()};
    if (Draw(object, canvas) < 0) {
        return std::nullopt;
    }
    cairo_surface_flush(paper.get());
    const auto size = size_t(cairo_image_surface_get_stride(paper.get())) * size_t(kHeight);
    const auto* pixels = reinterpret_cast<const char*>(cairo_image_surface_get_data(paper.get()));
    return std::hash<std::string_view>()({pixels, size});
}

void Scenario::Browse(IUITree& tree) {
    SmartPtr<IUnknown> answer;
    tree.MakeNodeVisible(m_Data.Get(), 0);
    tree.SelectNode(1, SELECT_ABSOLUTE | SELECT_CURRENT);
    tree.SelectNode(5, SELECT_ABSOLUTE | SELECT_SCROLL);
    for (const int32_t kind : {SELECTED_NODE, SELECTED_DATA, SELECTED_COLLECTION}) {
        tree.GetSelected(-1, kind, answer.Receive());
    }
    tree.get_Collection(answer.Receive());
    tree.get_Node(0, 2, 0, answer.Receive());
    tree.HitTest(15, 20, &m_Rect, answer.Receive());
    tree.GetContainerSize(nullptr, nullptr, nullptr);
    tree.put_Node(0, 1, 0, m_Item.Get());
    tree.Insert(m_Data.Get(), m_Item.Get(), {}, {}, {});
}

/// A click, a double click, a drag, the other button, and the wheel.
void Scenario::Point(IUIMouseInput& input) {
    const struct {
        int32_t m_State, m_Action, m_Keys;
        double m_X, m_Y;
    } events[] = {{1, POINTERACTION_PRESS, 0, 60, 5}, {1, POINTERACTION_RELEASE, 0, 60, 5},
        {1, POINTERACTION_PRESS, 0, 60, 5}, {1, POINTERACTION_RELEASE, 0, 60, 5},
        {1, POINTERACTION_PRESS, 0, 20, 30}, {1, POINTERACTION_MOVE, 0, 25, 60},
        {1, POINTERACTION_RELEASE, 1, 25, 60}, {2, POINTERACTION_PRESS, 0, 60, 20},
        {1, POINTERACTION_PRESS, 0, kWidth - 3, 60}, {1, POINTERACTION_MOVE, 0, kWidth - 3, 90},
        {1, POINTERACTION_RELEASE, 0, kWidth - 3, 90},
        {POINTERSTATE_WHEEL, POINTERACTION_MOVE, -100, 20, 20},
        {POINTERSTATE_WHEEL | POINTERSTATE_FAST, POINTERACTION_MOVE, 100, 20, 20}};
    for (const auto& [state, action, keys, x, y] : events) {
        input.Pointer(state, action, keys, x, y, &m_Rect, nullptr);
    }
}

void Scenario::Ask(IUnknown* object) {
    SmartPtr<IUnknown> answer;
    if (const auto specify = Query<IUIPropertyPageSpecify>(object)) {
        specify->GetPages(0, reinterpret_cast<INamedCollection**>(answer.Receive()), nullptr);
    }
    if (const auto child = Query<IParent>(object)) {
        child->get_Parent(answer.Receive());
    }
    const auto parameters = Query<IUIPropInterrogateEx>(object);
    int32_t first = 0;
    int32_t last = -1;
    if (!parameters || parameters->ParameterRange(PROPID_ALL, &first, &last) < 0) {
        return;
    }
    for (int32_t number = first; number <= last && number - first < 1000; ++number) {
        int32_t value = 0;
        parameters->Inquire(number, &value);
        if (parameters->InquireEx(number, answer.Receive()) >= 0) {
            parameters->ControlEx(number, answer.Get());
        }
        parameters->Control(number, value);
    }
}

void Scenario::Keep(IUnknown* object) {
    if (const auto persist = Query<IDataPersist>(object)) {
        persist->Save(m_Folders.Get(), 0);
        persist->Load(m_Folders.Get(), 0);
    }
    if (auto properties = Query<IUIPropInterrogateEx>(object)) {
        const auto settings = Adopt(static_cast<IUIPropInterrogatePersist*>(properties.Detach()));
        settings->UIPropInterrogate_SaveXML(nullptr, m_Text.Get(), 0);
        settings->UIPropInterrogate_LoadXML(nullptr, m_Text.Get(), 0);
    }
}

void Scenario::Close(IUnknown* object) {
    if (const auto tree = Query<IUITree>(object)) {
        tree->CompactNodes();
        tree->Clear();
    }
    if (const auto child = Query<IParent>(object)) {
        child->put_Parent(nullptr);
    }
}
