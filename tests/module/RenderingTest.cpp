#include "tests/support/TreeTest.h"

#include "framework/Support.h"
#include "host/text/Text.h"
#include "uitree/UITreeImpl.h"

#include <cairo.h>

// Drawing: which host objects are called, in which order, with which rectangles.

namespace {

std::string Text(const CANVASRect& rect) {
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + "," +
           std::to_string(rect.width) + "," + std::to_string(rect.height);
}

bool IsClipped(cairo_t* context) {
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_clip_extents(context, &left, &top, &right, &bottom);
    return right < 200;
}

/// Any helper of the control, or an item with an image: writes down what it is asked, and answers
/// failure where the control must not care.
class Helper final : public HostObject<Helper, IUIScrollBar, IUIMouseInput, IRenderableObject,
                         IFileArchive, IPMRenderStyle, IPMRenderer, IUIPropInterrogate> {
public:
    static constexpr const char* kKind = "Helper";
    Helper(std::string& log, std::string name) : m_Log(log), m_Name(std::move(name)) {}

    int32_t GetPos(int32_t* pos) override {
        *pos = m_Pos;
        return Note("pos", {});
    }
    int32_t SetPos(int32_t pos) override { return Note("set", {pos}); }
    int32_t SetRange(int32_t min, int32_t max) override { return Note("range", {min, max}); }
    int32_t Configure(int32_t what, int32_t value) override {
        return Note("configure", {what, value});
    }
    int32_t Layout(CANVASRect* area, CANVASRect* bar, CANVASRect* client) override {
        EXPECT_EQ(Text(*bar) + Text(*client), "0,0,0,00,0,0,0");
        Note("layout " + Text(*area), {});
        *bar = {area->left + area->width - 10, area->top, 10, area->height};
        *client = {area->left, area->top, area->width - 10, area->height};
        return m_Status;
    }
    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int32_t param) override {
        EXPECT_EQ(context, nullptr);
        const char* clip = IsClipped(canvas->m_Context) ? "" : " unclipped";
        return Note(m_Name + " " + Text(*rect) + " p" + std::to_string(param) + clip, {});
    }
    int32_t Pointer(int32_t state, int32_t action, int32_t keys, double x, double y,
        CANVASRect* rect, IUnknown* context) override {
        Note("pointer " + Text(*rect) + (context ? " in" : " without"),
            {state, action, keys, int(x * 100), int(y * 100)});
        return m_Answer;
    }
    int32_t SetFileName(IString* fileName) override {
        m_Name = ToUtf8(CREFString(fileName)).find("Open") < 99 ? "open" : "closed";
        return S_OK;
    }
    int32_t Populate() override { return S_OK; }
    int32_t GetContentState(int32_t, int32_t*) override { return E_FAIL; }
    int32_t SetStyleValueA(int32_t value) override { return Note("A", {value}); }
    int32_t SetStyleValueB(int32_t value) override { return Note("B", {value}); }
    int32_t SetStyleSize(int32_t size) override { return Note("size", {size}); }
    int32_t SetStyleValuePair(int32_t a, int32_t b) override { return Note("pair", {a, b}); }
    int32_t SetColor(int32_t rgb) override { return Note("color", {rgb}); }
    int32_t SetStyleValue(int32_t value) override { return Note("value", {value}); }
    int32_t SetStyleValueC(int32_t value) override { return Note("C", {value}); }
    int32_t DrawText(IPMRenderStyle*, tagREFString text, UbuntuCanvas*, CANVASRect* rect, int32_t a,
        int32_t b) override {
        EXPECT_EQ(a | b, 0);
        return Note("'" + ToUtf8(text) + "' " + Text(*rect), {});
    }

    int32_t Inquire(int32_t id, int32_t* value) override {
        if (id == 10 && m_TextSize < 0) {
            return E_FAIL;
        }
        *value = id == 3 ? 22 : id == 10 ? m_TextSize : -1;
        return S_OK;
    }
    int32_t Control(int32_t, int32_t) override { return E_FAIL; }
    int32_t ParameterRange(int32_t, int32_t*, int32_t*) override { return E_FAIL; }
    int32_t ParameterEnumeration(int32_t, IUnknown**) override { return E_FAIL; }

    int m_TextSize = 13; ///< of the host's default sizes; negative: there is none
    int m_Pos = 0;
    int m_Status = 1;      ///< of Layout; 0 has the bar drawn
    int m_Answer = E_FAIL; ///< of Pointer
    /// What else it does while it is asked.
    std::function<void()> m_Act = [] {};

private:
    int32_t Note(const std::string& what, std::initializer_list<int> values) {
        m_Log += Line(what, values) + "; ";
        if (what.starts_with("layout") || what.starts_with("image")) {
            m_Act();
        }
        return E_FAIL;
    }

    std::string& m_Log;
    std::string m_Name;
};

/// Stands for other objects: as a node, a moniker, an object with a name, a collection, or several
/// of them, by its bases. A moniker of nothing fails and leaves garbage.
template <class... Bases>
class Wrapper final : public HostObject<Wrapper<Bases...>, Bases...> {
public:
    static constexpr const char* kKind = "Wrapper";

    explicit Wrapper(const wchar_t* name, IUnknown* object = nullptr, IUnknown* bound = nullptr)
        : m_Name(name), m_Object(object), m_Bound(bound) {}

    int32_t get_Object(IUnknown** object) {
        *object = SmartPtr(m_Object).Detach();
        return E_FAIL; // nobody cares
    }
    int32_t get_Name(IString** name) {
        *name = m_Name ? ISCreate(m_Name) : nullptr;
        return E_FAIL;
    }
    int32_t BindToObject(const IID& iid, void** object) {
        *object = this;
        return m_Bound ? m_Bound->QueryInterface(iid, object) : E_FAIL;
    }
    int32_t GetName(int32_t kind, tagREFString* name) {
        *name = CREFString(kind == 0 ? m_Name : nullptr);
        return S_OK;
    }

private:
    const wchar_t* m_Name;
    SmartPtr<IUnknown> m_Object, m_Bound;
};

/// Does not tell the flag words of its items.
struct Unreadable final : HostObject<Unreadable, SuperCollectionBase> {
    static constexpr const char* kKind = "Unreadable";
    int32_t GetItemFlags(int32_t, int32_t* flags) override {
        *flags = -1;
        return E_FAIL;
    }
};

using Node = Wrapper<IUINode>;
using Moniker = Wrapper<ICollectionMoniker>;
using Both = Wrapper<IUINode, ICollectionMoniker>;
using NamedItem = Wrapper<SuperCollectionBase, IObjectInfo>;

/// A control whose helpers all write into one log, on a canvas of 200 by 200 pixels.
class RenderingTest : public TreeTest {
protected:
    void SetUp() override {
        for (const wchar_t* name :
            {L"CIFFileEx", L"PMRenderStyle", L"PMRenderer", L"UIScrollBar", L"UIDefault"}) {
            m_Host->Register(name, [this](const IID& iid, void** object) {
                const bool isDefaults = iid == IID_IUIPropInterrogate;
                const auto helper = isDefaults ? m_Defaults : Helper::Make(m_Log, "bar");
                m_Bar = iid == IID_IUIScrollBar ? helper : m_Bar;
                return helper->QueryInterface(iid, object);
            });
        }
        TreeTest::SetUp();
        m_Tree->Control(105, 0);
    }
    void TearDown() override {
        cairo_destroy(m_Canvas.m_Context);
        cairo_surface_destroy(m_Surface);
        TreeTest::TearDown();
    }

    /// What a drawing into `rect` did, in order.
    std::string Render(CANVASRect rect = {0, 0, 110, 100}) {
        m_Log.clear();
        m_Status = As<IRenderableObject>()->Render(&m_Canvas, &rect, nullptr, 5);
        EXPECT_FALSE(IsClipped(m_Canvas.m_Context)) << "the clip is left behind";
        return std::exchange(m_Log, {});
    }
    /// The same without the scroll bar's part before.
    std::string Drawn(CANVASRect rect = {0, 0, 110, 100}) {
        const std::string log = Render(rect);
        return log.substr(log.find("pos; ") + 5);
    }
    /// The labels drawn, in order.
    std::string Labels(CANVASRect rect = {0, 0, 110, 100}) {
        std::string labels;
        std::istringstream log(Render(rect));
        for (std::string skipped, label; getline(getline(log, skipped, '\''), label, '\'');) {
            labels += (labels.empty() ? "" : " ") + label;
        }
        return labels;
    }

    std::string m_Log;
    SmartPtr<Helper> m_Bar, m_Defaults = Helper::Make(m_Log, "defaults");
    cairo_surface_t* m_Surface = cairo_image_surface_create(CAIRO_FORMAT_A8, 200, 200);
    UbuntuCanvas m_Canvas = {.m_Context = cairo_create(m_Surface)};
    int m_Status = 0;
};

} // namespace

TEST_F(RenderingTest, HelpersAreSetUpInOrderAtCreationAndBinding) {
    EXPECT_EQ(m_Log, "configure 2 22; set 0; C -1; B 1; pair -1 0; A 0; ");
    const std::tuple<int, int, int, const char*> cases[] = {{0, 7, 15, ""},
        {1, 12, 22, "size 12; "}, {1, 30, 30, "size 30; "}, {0, 7, 30, ""},
        {1, -1, 22, "size 0; "}};
    for (const auto& [enabled, textSize, height, size] : cases) {
        m_Log.clear();
        m_Defaults->m_TextSize = textSize;
        m_Tree->Control(105, enabled);
        Bind("A");
        EXPECT_EQ(m_Log, std::string("C -1; A 0; B 1; pair -1 0; ") + size + "set 0; ");
        int32_t elementWidth = -1, elementHeight = -1;
        EXPECT_EQ(m_Tree->GetElementSize(&elementWidth, &elementHeight), S_OK);
        EXPECT_EQ(std::pair(elementWidth, elementHeight), std::pair(0, height));
    }
}

TEST_F(RenderingTest, LayoutDecidesWhatIsShown) {
    EXPECT_EQ(Render(), "") << "no row";
    EXPECT_EQ(m_Status, E_FAIL);
    Bind("A");
    const std::string before = "range 0 0; layout 5,7,110,100; pos; ";
    const std::string row = before + "value 0; color 4934475; 'A' 35,7,100,15; ";
    const std::pair<int, std::string> cases[] = {
        {0, row + "bar 105,7,10,100 p5 unclipped; "}, {1, row}, {E_FAIL, before}};
    for (const auto& [status, log] : cases) {
        m_Bar->m_Status = status;
        EXPECT_EQ(Render({5, 7, 110, 100}), log);
        EXPECT_EQ(m_Status, S_OK);
    }
    for (const int height : {0, -5}) {
        EXPECT_EQ(m_Tree->SetElementSize(0, height), S_OK);
        EXPECT_EQ(Render(), "");
        EXPECT_EQ(m_Status, E_FAIL);
    }
}

TEST_F(RenderingTest, OpenRowDrawsItsIconThenItsRowsThenItself) {
    const auto image = Helper::Make(m_Log, "image");
    const auto open = SuperCollection::Make();
    const auto empty = SuperCollection::Make();
    open->Append({"leaf", SmartPtr(image->Identity()), {}, NODE_SELECTED | NODE_VISIBLE | 2});
    const auto root = BindItems({{"a", open->Identity()}, {"b", empty->Identity()}});
    root->SetItemFlags(0, NODE_EXPANDED | NODE_VISIBLE | 1);
    root->SetItemFlags(1, NODE_EXPANDED | NODE_VISIBLE | 1);
    const std::string style = "value 0; color 4934475; ";
    EXPECT_EQ(Drawn(), "open 0,0,15,15 p0; image 31,16,13,13 p1; color 16711680; "
                       "'leaf' 45,15,100,15; " +
                           style +
                           "'a' 30,0,100,15; "
                           "open 0,30,15,15 p0; " +
                           style + "'b' 30,30,100,15; ");
    BindCollection(m_Root);
    open->SetItemFlags(0, 2);
    As<IUIPropInterrogateEx>()->ControlEx(170, nullptr);
    EXPECT_EQ(Drawn({0, 0, 110, 15}), "closed 0,0,15,15 p0; " + style + "'a' 30,0,100,15; ");
    As<IUIPropInterrogateEx>()->ControlEx(171, nullptr);
    EXPECT_EQ(Drawn({0, 0, 110, 15}), style + "'a' 30,0,100,15; ");
}

TEST_F(RenderingTest, WholeRowsAreDrawnFromTheScrollPositionOnBranchesAfterTheirRows) {
    Bind("A\n a1\n  x\n  y\n a2\nB\n b1\nC");
    EXPECT_EQ(Labels(), "A B C");
    for (const char* label : {"A", "a1", "B"}) {
        Open(label);
    }
    const struct {
        int position, height;
        const char* labels;
    } cases[] = {{0, 100, "x y a1 a2 A B"}, {0, 14, ""}, {0, 15, "A"}, {0, 30, "a1 A"},
        {0, 60, "x y a1 A"}, {3, 100, "y a2 b1 B C"}, {3, 45, "y a2 B"}, {7, 100, "C"},
        {8, 100, ""}, {-1, 100, ""}, {INT32_MAX, 100, ""}, {INT32_MIN, 100, ""}};
    for (const auto& [position, height, labels] : cases) {
        m_Bar->m_Pos = position;
        EXPECT_EQ(Labels({0, 0, 110, height}), labels) << position << ", " << height;
        EXPECT_EQ(m_Status, S_OK);
    }
    Bind("A\n a1\n  x\n a2\n  z\nB");
    for (const char* label : {"A", "a1", "a2"}) {
        Open(label);
    }
    m_Bar->m_Pos = 2;
    EXPECT_EQ(Labels(), "x z a2 B") << "the drawing ends below and goes on above, twice";
}

TEST_F(RenderingTest, RowsOfACollectionAreDrawnFromTheCounterUpToTheLimit) {
    Bind("A\nB");
    using Operation = int32_t (*)(
        CUITree*, ISuperCollection*, int32_t, int32_t*, int32_t, UbuntuCanvas*, CANVASRect&);
    auto* control = static_cast<CUITree*>(m_Tree.Get());
    const auto render = (*reinterpret_cast<Operation**>(control))[35]; // of the primary table
    CANVASRect rect = {0, 0, 110, 100};
    const std::string style = "value 0; color 4934475; ";
    const std::string a = style + "'A' 30,15,110,15; ", b = style + "'B' 30,30,110,15; ";
    const std::tuple<int, int, int, int, std::string> cases[] = {{3, 2, S_OK, 3, ""},
        {2, 2, E_FAIL, 2, ""}, {1, 2, E_FAIL, 2, a}, {1, 3, E_FAIL, 3, a + b},
        {1, 4, S_OK, 3, a + b}};
    for (const auto& [before, limit, status, after, log] : cases) {
        SCOPED_TRACE(testing::Message() << before << " of " << limit);
        m_Log.clear();
        int32_t counter = before;
        EXPECT_EQ(render(control, m_Root.Get(), 0, &counter, limit, &m_Canvas, rect), status);
        EXPECT_EQ(counter, after);
        EXPECT_EQ(m_Log, log);
    }
    const auto unreadable = Unreadable::Make();
    unreadable->Append("C", Node::Make(nullptr)->Identity());
    m_Log.clear();
    int32_t counter = 0;
    EXPECT_EQ(render(control, unreadable.Get(), 0, &counter, 2, &m_Canvas, rect), S_OK);
    EXPECT_EQ(m_Log, style + "'C' 15,0,110,15; ") << "it has no level";
    const auto ring = SuperCollection::Make();
    ring->Append("R", ring->Identity());
    ring->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | 1);
    counter = 0;
    EXPECT_EQ(render(control, ring.Get(), 0, &counter, 9, &m_Canvas, rect), S_OK);
    EXPECT_EQ(counter, 1) << "it is not drawn in itself";
    ring->RemoveAll();
    EXPECT_EQ(render(control, nullptr, 0, &counter, 2, &m_Canvas, rect), E_FAIL);
    EXPECT_EQ(render(control, m_Root.Get(), 0, nullptr, 2, &m_Canvas, rect), E_POINTER);
}

TEST_F(RenderingTest, LabelsComeFromTheNodeThenTheCollectionThenAWord) {
    const auto none = Node::Make(nullptr);
    const auto root = SuperCollection::Make();
    root->Append("kept", Node::Make(L"o")->Identity());
    root->Append("kept", Node::Make(L"")->Identity());
    root->Append("kept", none->Identity());
    root->Append("", none->Identity());
    root->Append({{}, SmartPtr(none->Identity()), {}, 0});
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    EXPECT_EQ(Labels(), "o kept kept  Node");
}

TEST_F(RenderingTest, ItemsAreLookedThroughTheirWrappersAndSlidesAreLeaves) {
    const auto slide = NamedItem::Make(L"pmslide");
    const auto slides = NamedItem::Make(L"PMSlides");
    for (const auto& item : {slide, slides}) {
        item->Append({"below", SmartPtr(SuperCollection::Make()->Identity()), {}, NODE_VISIBLE});
    }
    IUnknown* leaf = slide->Identity();
    IUnknown* branch = slides->Identity();
    const auto moniker = Moniker::Make(nullptr, nullptr, branch);
    BindItems({{"leaf", leaf}, {"leaf", Both::Make(nullptr, leaf, leaf)->Identity()},
        {"leaf", Node::Make(nullptr)->Identity()}, {"leaf", Moniker::Make(nullptr)->Identity()},
        {"branch", branch}, {"branch", Node::Make(nullptr, branch)->Identity()},
        {"branch", moniker->Identity()},
        {"branch", Node::Make(nullptr, moniker->Identity())->Identity()},
        {"branch", Both::Make(nullptr, nullptr, branch)->Identity()},
        {"branch", Both::Make(nullptr, moniker->Identity(), branch)->Identity()}});
    const auto query = [](const SmartPtr<Node>& item) {
        SmartPtr<IObjectInfo> info;
        return QueryItem(item->Identity(), IID_IObjectInfo, info.Receive());
    };
    EXPECT_EQ(query(Node::Make(nullptr)), E_NOINTERFACE);
    EXPECT_EQ(query(Node::Make(nullptr, leaf)), S_OK);
    SmartPtr<IObjectInfo> info;
    EXPECT_EQ(QueryItem(leaf, IID_IObjectInfo, info.Receive()), S_OK);
    EXPECT_EQ(RowCount(), 16) << "four leaves, and six branches with one row below each";
    const auto node = Node::Make(nullptr, Helper::Make(m_Log, "image")->Identity());
    const auto bound = Moniker::Make(nullptr, nullptr, node->Identity());
    BindItems({{"A", Node::Make(nullptr, bound->Identity())->Identity()}});
    EXPECT_TRUE(Drawn().starts_with("image"));
}

TEST_F(RenderingTest, CollectionInsideItselfIsNotEnteredAgain) {
    const auto inner = SuperCollection::Make();
    const auto outer = SuperCollection::Make();
    outer->Append("outer", outer->Identity());
    outer->Append("inner", inner->Identity());
    inner->Append("up", outer->Identity());
    inner->Append("again", inner->Identity());
    BindCollection(SmartPtr<ISuperCollection>(outer.Get()));
    for (const int index : {0, 1}) {
        inner->SetItemFlags(index, NODE_VISIBLE | NODE_EXPANDED);
        outer->SetItemFlags(index, NODE_VISIBLE | NODE_EXPANDED | 1);
    }
    EXPECT_EQ(RowCount(), 4);
    EXPECT_EQ(Labels(), "outer up again inner");
    EXPECT_EQ(m_Tree->Insert(m_Tree.Get(), nullptr, {}, {}, {}), S_OK) << "searches everything";
    EXPECT_EQ(m_Tree->CompactNodes(), S_OK);
    EXPECT_EQ(RowCount(), 2);
    inner->RemoveAll();
    outer->RemoveAll();
}

TEST_F(RenderingTest, CollectionInsideItselfFarDownIsNotEnteredAgainThere) {
    constexpr size_t kDepth = 40; // more levels than lie within a walk
    constexpr size_t kRing = kDepth - 2;
    std::vector<SmartPtr<SuperCollection>> chain;
    for (size_t level = 0; level < kDepth; ++level) {
        chain.push_back(SuperCollection::Make());
    }
    for (size_t level = 0; level < kDepth; ++level) {
        const auto& below = chain[level + 1 < kDepth ? level + 1 : kRing];
        chain[level]->Append("down", below->Identity());
    }
    chain[kRing]->Append("and again", chain[kRing + 1]->Identity());
    BindCollection(SmartPtr<ISuperCollection>(chain[0].Get()));
    for (const auto& each : chain) {
        each->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | 1);
    }
    chain[kRing]->SetItemFlags(1, NODE_VISIBLE | NODE_EXPANDED | 1);
    EXPECT_EQ(RowCount(), int32_t(kDepth) + 2) << "what is last is shown twice";
    for (const auto& each : chain) {
        each->RemoveAll();
    }
}

TEST_F(RenderingTest, ScrollBarIsOfferedTheRawEventInItsContextBeforeTheRows) {
    Bind("A");
    Listen();
    const std::tuple<int, int, size_t> cases[] = {{E_FAIL, S_OK, 1}, {S_OK, S_OK, 1}, {5, S_OK, 0}};
    for (const auto& [answer, status, events] : cases) {
        m_Bar->m_Answer = answer;
        m_Log.clear();
        m_Listener->m_Events.clear();
        EXPECT_EQ(TreeTest::Pointer(1, 3, 1, 0.75, 0.5, {0, 0, 110, 100}, m_Root.Get()), status);
        EXPECT_EQ(m_Log.substr(0, m_Log.find("pos")),
            "range 0 0; layout 0,0,110,100; pointer 100,0,10,100 in 1 3 1 75 50; ");
        EXPECT_EQ(m_Listener->m_Events.size(), events);
    }
    SmartPtr<IUnknown> node;
    CANVASRect rect = {0, 0, 110, 100};
    EXPECT_EQ(m_Tree->HitTest(105, 5, &rect, node.Receive()), S_OK) << "a row is under the bar";
}

TEST_F(RenderingTest, HugeRectanglesAreSaturated) {
    Bind("A\nB");
    m_Tree->SetElementSize(0, 1'500'000'000);
    EXPECT_EQ(Drawn({2'000'000'000, 2'000'000'000, -2'147'483'000, INT32_MAX}),
        "value 0; color 4934475; 'A' 2147483647,2000000000,2147483010,1500000000; ");
}

TEST_F(RenderingTest, WhoIsAskedMayChangeTheControlMeanwhile) {
    const auto intruder = Helper::Make(m_Log, "image");
    const auto root = BindItems({{"a", intruder->Identity()}, {"b", intruder->Identity()}});
    CANVASRect rect = {0, 0, 110, 100};
    SmartPtr<IUnknown> node;
    const std::pair<std::function<int()>, int> cases[] = {
        {[&] { return m_Tree->HitTest(5, 5, &rect, node.Receive()); }, E_FAIL},
        {[&] { return Pointer(1, 2, 0, 5, 5); }, S_FALSE},
        {[&] { return (Render(), m_Status); }, S_OK}};
    for (const auto& [operation, status] : cases) {
        m_Tree->Control(4, 15);
        m_Bar->m_Act = [&] { m_Tree->Control(4, 0); };
        EXPECT_EQ(operation(), status) << "the row height is gone";
    }
    m_Bar->m_Act = [] {};
    m_Tree->Control(4, 15);
    intruder->m_Act = [&] {
        m_Tree->Control(PROP_ELEMENTHEIGHT, 20);
        m_Tree->Control(PROP_TEXTCOLOR, 0x112233);
    };
    const std::string log = Render();
    EXPECT_NE(log.find("color 1122867; 'a' 30,0,"), log.npos) << "its label comes after";
    EXPECT_NE(log.find("'b' 40,20,"), log.npos) << "the next row is the first so high";
    m_Tree->Control(PROP_ELEMENTHEIGHT, 15);
    intruder->m_Act = [&] {
        As<IUIPropInterrogateEx>()->ControlEx(170, nullptr);
        As<IUIPropInterrogateEx>()->ControlEx(171, nullptr);
        m_Tree->Control(4, 0);
        m_Tree->put_Collection(Outline("X").Get());
        root->RemoveAll();
    };
    EXPECT_EQ(Labels(), "a");
}
