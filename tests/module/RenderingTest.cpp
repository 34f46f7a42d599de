#include "tests/support/TreeTest.h"

#include "framework/Support.h"
#include "host/Text.h"

#include <cairo.h>
#include <gmock/gmock.h>

// Drawing: which host objects are called, in which order, with which rectangles.

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// What the helpers of the control were asked to do, in order.
using Log = std::vector<std::string>;

std::string Text(const CANVASRect& rect) {
    return std::to_string(rect.left) + "," + std::to_string(rect.top) + "," +
           std::to_string(rect.width) + "," + std::to_string(rect.height);
}

bool IsClipped(cairo_t* context) {
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_clip_extents(context, &left, &top, &right, &bottom);
    return right < 200;
}

/// Any helper of the control: writes down what it is asked, and answers failure where the control
/// must not care.
class Helper final : public HostObject<Helper, IUIScrollBar, IRenderableObject, IFileArchive,
                         IPMRenderStyle, IPMRenderer> {
public:
    static constexpr const char* kKind = "Helper";
    Helper(Log& log, std::string name) : m_Log(log), m_Name(std::move(name)) {}

    int32_t GetPos(int32_t* pos) override {
        *pos = m_Pos;
        return Note("pos", {});
    }
    int32_t SetPos(int32_t pos) override {
        m_Pos = pos;
        return Note("set", {pos});
    }
    int32_t SetRange(int32_t min, int32_t max) override { return Note("range", {min, max}); }
    int32_t Configure(int32_t what, int32_t value) override {
        return Note("configure", {what, value});
    }
    int32_t Layout(CANVASRect* area, CANVASRect* bar, CANVASRect* client) override {
        EXPECT_EQ(Text(*bar) + Text(*client), "0,0,0,00,0,0,0");
        m_Log.push_back("layout " + Text(*area));
        if (m_Act) {
            m_Act();
        }
        if (m_Status >= 0) {
            *bar = {area->left + area->width - 10, area->top, 10, area->height};
            *client = {area->left, area->top, area->width - 10, area->height};
        }
        return m_Status;
    }

    int32_t Render(
        UbuntuCanvas* canvas, CANVASRect* rect, IUnknown* context, int32_t param) override {
        EXPECT_EQ(context, nullptr);
        m_Log.push_back(m_Name + " " + Text(*rect) + " p" + std::to_string(param) +
                        (IsClipped(canvas->m_Context) ? "" : " unclipped"));
        return E_FAIL;
    }
    int32_t SetFileName(IString* fileName) override {
        const std::string path = ToUtf8(CREFString(fileName));
        m_Name = path.find("Open") == std::string::npos ? "closed" : "open";
        return S_OK;
    }
    int32_t Populate() override { return S_OK; }
    int32_t GetContentState(int32_t, int32_t*) override { return E_FAIL; }

    int32_t SetStyleValueA(int32_t value) override { return Note("A", {value}); }
    int32_t SetStyleValueB(int32_t value) override { return Note("B", {value}); }
    int32_t SetStyleSize(int32_t size) override { return Note("size", {size}); }
    int32_t SetStyleValuePair(int32_t first, int32_t second) override {
        return Note("pair", {first, second});
    }
    int32_t SetColor(int32_t rgb) override { return Note("color", {rgb}); }
    int32_t SetStyleValue(int32_t value) override { return Note("value", {value}); }
    int32_t SetStyleValueC(int32_t value) override { return Note("C", {value}); }

    int32_t DrawText(IPMRenderStyle*, tagREFString text, UbuntuCanvas*, CANVASRect* rect,
        int32_t first, int32_t second) override {
        EXPECT_EQ(first + second, 0);
        m_Log.push_back("'" + ToUtf8(text) + "' " + Text(*rect));
        return E_FAIL;
    }

    int32_t m_Pos = 0;
    int32_t m_Status = 0;        ///< of Layout
    std::function<void()> m_Act; ///< what else Layout does

private:
    int32_t Note(std::string what, std::initializer_list<int32_t> values) {
        for (const int32_t value : values) {
            what += " " + std::to_string(value);
        }
        m_Log.push_back(what);
        return E_FAIL;
    }

    Log& m_Log;
    std::string m_Name;
};

/// A node that has a label and stands for nothing.
class Node final : public HostObject<Node, IUINode> {
public:
    static constexpr const char* kKind = "Node";
    explicit Node(const wchar_t* name) : m_Name(name) {}
    int32_t get_Object(IUnknown** object) override {
        *object = nullptr;
        return E_FAIL;
    }
    int32_t get_Name(IString** name) override {
        *name = m_Name ? ISCreate(m_Name) : nullptr;
        return S_OK;
    }
    const wchar_t* m_Name;
};

/// An item that acts while it is drawn.
class Intruder final : public HostObject<Intruder, IRenderableObject> {
public:
    static constexpr const char* kKind = "Intruder";
    explicit Intruder(std::function<void()> act) : m_Act(std::move(act)) {}
    int32_t Render(UbuntuCanvas*, CANVASRect*, IUnknown*, int32_t) override {
        m_Act();
        return S_OK;
    }
    std::function<void()> m_Act;
};

/// A control whose helpers all write into one log, on a canvas of 110 by 100 pixels.
class RenderingTest : public TreeTest {
protected:
    RenderingTest() {
        m_Host->Register(L"UIScrollBar", [this](const IID& iid, void** object) {
            m_Bar = Helper::Make(m_Log, "bar");
            return m_Bar->QueryInterface(iid, object);
        });
        for (const wchar_t* name : {L"CIFFileEx", L"PMRenderStyle", L"PMRenderer"}) {
            m_Host->Register(name, [this](const IID& iid, void** object) {
                return Helper::Make(m_Log, "")->QueryInterface(iid, object);
            });
        }
    }

    void SetUp() override {
        TreeTest::SetUp();
        m_Constructed.swap(m_Log);
        m_Tree->Control(105, 0);
        m_Surface = cairo_image_surface_create(CAIRO_FORMAT_A8, 200, 200);
        m_Canvas.m_Context = cairo_create(m_Surface);
    }
    void TearDown() override {
        cairo_destroy(m_Canvas.m_Context);
        cairo_surface_destroy(m_Surface);
        m_Bar.Reset();
        TreeTest::TearDown();
    }

    /// What one Render into `rect` did, without the parts of the scroll bar's set-up.
    Log Render(CANVASRect rect = {0, 0, 110, 100}) {
        m_Log.clear();
        m_Status = As<IRenderableObject>()->Render(&m_Canvas, &rect, nullptr, 5);
        return std::exchange(m_Log, {});
    }
    /// The labels drawn by a Render, in order.
    std::string DrawnLabels(CANVASRect rect = {0, 0, 110, 100}) {
        std::string labels;
        for (const std::string& line : Render(rect)) {
            if (line.front() == '\'') {
                labels += (labels.empty() ? "" : " ") + line.substr(1, line.find('\'', 1) - 1);
            }
        }
        return labels;
    }
    Log m_Log;
    Log m_Constructed;
    SmartPtr<Helper> m_Bar;
    cairo_surface_t* m_Surface = nullptr;
    UbuntuCanvas m_Canvas = {};
    int32_t m_Status = 0;
};

} // namespace

TEST_F(RenderingTest, ConstructionConfiguresTheHelpersInOrder) {
    EXPECT_THAT(
        m_Constructed, ElementsAre("configure 2 22", "set 0", "C -1", "B 1", "pair -1 0", "A 0"));
}

TEST_F(RenderingTest, BindingSetsTheStyleUpAgainAndScrollsToTheTop) {
    m_Tree->Control(105, 1);
    Bind("A");
    EXPECT_THAT(m_Log, ElementsAre("C -1", "A 0", "B 1", "pair -1 0", "size 13", "set 0"));
}

TEST_F(RenderingTest, PassCallsItsHelpersInOrderAndLeavesNoClip) {
    Bind("A");
    EXPECT_THAT(Render({5, 7, 110, 100}),
        ElementsAre("range 0 0", "layout 5,7,110,100", "pos", "value 0", "color 4934475",
            "'A' 35,7,100,15", "bar 105,7,10,100 p5 unclipped"));
    EXPECT_EQ(m_Status, S_OK);
    EXPECT_FALSE(IsClipped(m_Canvas.m_Context));
}

TEST_F(RenderingTest, OpenRowDrawsItsIconThenItsRowsThenItself) {
    const auto root = SuperCollection::Make();
    const auto open = SuperCollection::Make();
    const auto picture = Helper::Make(m_Log, "image");
    open->Append("leaf", picture->Identity());
    open->SetItemFlags(0, NODE_SELECTED | NODE_VISIBLE | 2);
    root->Append("open", open->Identity());
    BindCollection(Query<ISuperCollection>(root->Identity()));
    root->SetItemFlags(0, NODE_EXPANDED | NODE_VISIBLE | 1);
    auto log = Render();
    EXPECT_THAT(Log(log.begin() + 3, log.end() - 1),
        ElementsAre("open 0,0,15,15 p0", "image 31,16,13,13 p1", "color 16711680",
            "'leaf' 45,15,100,15", "value 0", "color 4934475", "'open' 30,0,100,15"));
    root->SetItemFlags(0, NODE_VISIBLE | 1);
    open->SetItemFlags(0, 2);
    log = Render();
    EXPECT_THAT(Log(log.begin() + 3, log.end() - 1),
        ElementsAre("closed 0,0,15,15 p0", "value 0", "color 4934475", "'open' 30,0,100,15"));
}

TEST_F(RenderingTest, OnlyWholeRowsAreDrawnFromTheScrollPositionOn) {
    Bind("A\nB\nC\nD\nE\nF\nG\nH");
    EXPECT_EQ(DrawnLabels({0, 0, 110, 100}), "A B C D E F") << "100 pixels hold 6 rows of 15";
    EXPECT_EQ(DrawnLabels({0, 0, 110, 14}), "");
    m_Bar->m_Pos = 3;
    EXPECT_EQ(DrawnLabels({0, 0, 110, 40}), "D E");
    EXPECT_EQ(DrawnLabels(), "D E F G H");
    for (const int32_t position : {8, -1, INT32_MAX, INT32_MIN}) {
        m_Bar->m_Pos = position;
        EXPECT_EQ(DrawnLabels(), "");
        EXPECT_EQ(m_Status, S_OK);
    }
}

TEST_F(RenderingTest, WalkGoesUpAgainFromDeepInsideAnOpenBranch) {
    Bind("A\n a1\n  x\n  y\n a2\nB\n b1\nC");
    for (const char* label : {"A", "a1", "B"}) {
        Open(label);
    }
    EXPECT_EQ(Rows(), "A a1 x y a2 B b1 C");
    m_Bar->m_Pos = 3;
    EXPECT_EQ(DrawnLabels(), "y a2 b1 B C") << "a row with rows below follows them";
    EXPECT_EQ(DrawnLabels({0, 0, 110, 45}), "y a2 B") << "b1 does not fit";
    m_Bar->m_Pos = 0;
    EXPECT_EQ(DrawnLabels({0, 0, 110, 30}), "a1 A");
    EXPECT_EQ(DrawnLabels({0, 0, 110, 60}), "x y a1 A");
}

TEST_F(RenderingTest, EmptyOpenCollectionTakesOneRow) {
    const auto root = SuperCollection::Make();
    root->Append("empty", SuperCollection::Make()->Identity());
    root->Append("next", SuperCollection::Make()->Identity());
    BindCollection(Query<ISuperCollection>(root->Identity()));
    root->SetItemFlags(0, NODE_EXPANDED | NODE_VISIBLE | 1);
    const Log log = Render();
    EXPECT_EQ(log[3], "open 0,0,15,15 p0");
    EXPECT_EQ(log[7], "closed 0,15,15,15 p0");
}

TEST_F(RenderingTest, NothingIsDrawnWithoutRows) {
    EXPECT_THAT(Render(), IsEmpty());
    EXPECT_EQ(m_Status, E_FAIL);
    Bind("A");
    for (const int32_t height : {0, -5}) {
        m_Tree->SetElementSize(0, height);
        EXPECT_THAT(Render(), IsEmpty());
        EXPECT_EQ(m_Status, E_FAIL);
    }
}

TEST_F(RenderingTest, LayoutDecidesWhatIsShown) {
    Bind("A");
    m_Bar->m_Status = 1;
    EXPECT_THAT(Render(), ElementsAre("range 0 0", "layout 0,0,110,100", "pos", "value 0",
                              "color 4934475", "'A' 30,0,100,15"));
    m_Bar->m_Status = E_FAIL;
    EXPECT_THAT(Render(), ElementsAre("range 0 0", "layout 0,0,110,100", "pos"));
    EXPECT_EQ(m_Status, S_OK);
    EXPECT_FALSE(IsClipped(m_Canvas.m_Context));
}

TEST_F(RenderingTest, LabelsComeFromTheNodeThenTheCollectionThenAWord) {
    const auto root = SuperCollection::Make();
    root->Append("kept", Node::Make(L"own")->Identity());
    root->Append("kept", Node::Make(L"")->Identity());
    root->Append("kept", Node::Make(nullptr)->Identity());
    root->Append("", Node::Make(nullptr)->Identity());
    root->Append({{}, SmartPtr(Node::Make(nullptr)->Identity()), {}, 0});
    BindCollection(Query<ISuperCollection>(root->Identity()));
    EXPECT_EQ(DrawnLabels(), "own kept kept  Node");
}

TEST_F(RenderingTest, RemovedIconsAreSkipped) {
    Bind("A\n a1");
    As<IUIPropInterrogateEx>()->ControlEx(171, nullptr);
    auto log = Render();
    EXPECT_EQ(log[3], "value 0");
    As<IUIPropInterrogateEx>()->ControlEx(171, m_Root.Get());
    log = Render();
    EXPECT_EQ(log[3], "value 0") << "an icon that cannot draw itself";
}

TEST_F(RenderingTest, HugeRectanglesAreSaturated) {
    Bind("A\nB");
    m_Tree->SetElementSize(0, 1'500'000'000);
    m_Bar->m_Status = 1;
    const auto log = Render({2'000'000'000, 2'000'000'000, -2'147'483'000, INT32_MAX});
    ASSERT_EQ(log.size(), 6U);
    EXPECT_EQ(log.back(), "'A' 2147483647,2000000000,2147483010,1500000000");
}

TEST_F(RenderingTest, ItemThatDrawsItselfMayChangeTheControlMeanwhile) {
    const auto root = SuperCollection::Make();
    const auto intruder = Intruder::Make([&] {
        const auto properties = As<IUIPropInterrogateEx>();
        properties->ControlEx(170, nullptr);
        properties->ControlEx(171, nullptr);
        properties->Control(4, 0);
        m_Tree->put_Collection(Outline("X").Get());
        root->RemoveAll();
    });
    root->Append("a", intruder->Identity());
    root->Append("b", intruder->Identity());
    m_Root = Query<ISuperCollection>(root->Identity());
    m_Tree->put_Collection(m_Root.Get());
    EXPECT_EQ(DrawnLabels(), "a");
    m_Tree->Clear();
}

TEST_F(RenderingTest, ScrollBarMayTakeTheRowHeightWhileItIsAsked) {
    Bind("A\n a1");
    SetFlags("A", INT32_MAX);
    m_Bar->m_Act = [&] { m_Tree->Control(4, 0); };
    CANVASRect rect = {0, 0, 110, 100};
    SmartPtr<IUnknown> node;
    const auto ask = [&](const auto& operation) {
        m_Tree->Control(4, 15);
        return operation();
    };
    EXPECT_EQ(ask([&] { return m_Tree->HitTest(5, 5, &rect, node.Receive()); }), E_FAIL);
    const auto input = As<IUIMouseInput>();
    EXPECT_EQ(ask([&] { return input->Pointer(1, 2, 0, 5, 5, &rect, nullptr); }), S_FALSE);
    EXPECT_EQ(ask([&] { return (Render(), m_Status); }), S_OK);
    m_Bar->m_Act = nullptr;
    EXPECT_EQ(ask([&] { return input->Pointer(1, 2, 0, 5, 5, &rect, nullptr); }), S_OK)
        << "any flag word is a flag word";
}
