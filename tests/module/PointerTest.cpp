#include "tests/support/Clock.h"
#include "tests/support/LazyItems.h"
#include "tests/support/TreeTest.h"

#include <limits>

// Mouse and touch: what an event does to rows, selection and scroll position, and who hears of it.

namespace {

constexpr int32_t kHeight = 10;
constexpr int32_t kLeft = 20;
constexpr int32_t kTop = 100;
/// Far right of every expander.
constexpr double kLabel = kLeft + 90;

/// A control of rows 10 pixels high in a rectangle that does not begin at the origin.
class PointerTest : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        Listen();
        m_Tree->Control(105, 0);
        m_Tree->SetElementSize(0, kHeight);
    }

    static double RowY(int32_t row) { return kTop + row * kHeight + 5; }
    int32_t Send(int32_t state, int32_t action, int32_t keys, double x, double y) {
        return As<IUIMouseInput>()->Pointer(state, action, keys, x, y, &m_Rect, m_Root.Get());
    }
    int32_t Press(int32_t row, int32_t keys = 0) { return Send(1, 3, keys, kLabel, RowY(row)); }
    /// A click that pairs with no other.
    void Click(int32_t row) {
        AdvanceClock(1'000'000);
        EXPECT_EQ(Press(row), S_OK);
        EXPECT_EQ(Send(1, 2, 0, kLabel, RowY(row)), S_OK);
    }
    /// The only event of that name since the last look.
    Listener::Event TakeEvent(const std::string& name) {
        Listener::Event found{"nothing", nullptr};
        for (const auto& event : m_Listener->m_Events) {
            if (event.name == name) {
                EXPECT_EQ(found.name, "nothing") << "more than one " << name;
                found = event;
            }
        }
        m_Listener->m_Events.clear();
        return found;
    }
    int32_t Top() const {
        int32_t top = -1;
        m_Tree->Inquire(115, &top);
        return top;
    }

    CANVASRect m_Rect = {kLeft, kTop, 200, 400};
};

using HitTestTest = PointerTest;
using TouchTest = PointerTest;

} // namespace

TEST_F(PointerTest, ClickOpensAndClosesARowAndReportsItsCollection) {
    Bind("A\n a1\n a2\nB");
    SetFlags("a1", NODE_EXPANDED | NODE_SELECTED | 7);
    Click(0);
    EXPECT_EQ(Rows(), "A a1 a2 B");
    EXPECT_EQ(Flags("A"), 0x701) << "opened, and always selected";
    EXPECT_EQ(Flags("a1"), 0x302);
    EXPECT_EQ(Flags("a2"), 0x102);
    EXPECT_EQ(SelectedLabel(), "A");
    EXPECT_EQ(m_Listener->m_Events.size(), 3U) << "press, toggle, select";
    auto event = TakeEvent("NodeSelect");
    EXPECT_EQ(event.source, m_Root.Get());
    EXPECT_EQ(event.state, 1);
    EXPECT_EQ(event.first, 0);
    EXPECT_EQ(event.second, NODEACTION_OPENED);
    EXPECT_TRUE(event.node == Item("A").Get());

    Click(0);
    EXPECT_EQ(Rows(), "A B");
    EXPECT_EQ(Flags("A"), 0x501);
    EXPECT_EQ(Flags("a1"), 0x202) << "hidden, and open when it is seen again";
    EXPECT_EQ(TakeEvent("NodeSelect").second, NODEACTION_CLOSED);
}

TEST_F(PointerTest, EmptyCollectionSaysOpenedAndStaysClosed) {
    const auto root = SuperCollection::Make();
    root->Append("empty", SuperCollection::Make()->Identity());
    BindCollection(Query<ISuperCollection>(root->Identity()));
    Click(0);
    EXPECT_EQ(TakeEvent("NodeSelect").second, NODEACTION_OPENED);
    EXPECT_EQ(Flags("empty"), 0x501);
}

TEST_F(PointerTest, SecondReleaseInTimeAndPlaceIsADoubleClick) {
    struct Case {
        int64_t after; ///< microseconds
        double dx, dy;
        int32_t keys;
        bool paired;
    };
    const Case cases[] = {{499'999, 0, 0, 0, true}, {500'000, 0, 0, 0, false},
        {100'000, 1.9, -1.9, 0, true}, {100'000, 2, 0, 0, false}, {100'000, 0, -2, 0, false},
        {100'000, 0, 0, 1, false}, {0, 0, 0, 0, true}};
    Bind("A\nB");
    for (const Case& one : cases) {
        Click(1);
        m_Listener->m_Events.clear();
        AdvanceClock(one.after);
        EXPECT_EQ(Send(1, 2, one.keys, kLabel + one.dx, RowY(1) + one.dy), S_OK);
        const auto event = TakeEvent("NodeSelect");
        EXPECT_EQ(event.source, one.paired ? As<IUnknown>().Get() : m_Root.Get()) << one.after;
        EXPECT_EQ(event.state, one.paired ? 2 : 1) << one.after;
        EXPECT_EQ(event.first, 1);
    }
}

TEST_F(PointerTest, DragReportsContextPlaceAndPressedNode) {
    Bind("A\nB");
    Press(0);
    m_Listener->m_Events.clear();
    EXPECT_EQ(Send(1, 0, 4, kLabel + 9, RowY(0)), S_FALSE) << "a key is held";
    EXPECT_EQ(Send(3, 0, 0, kLabel + 9, RowY(0)), S_FALSE) << "another button is held";
    EXPECT_EQ(m_Listener->TakeNames(), "");
    EXPECT_EQ(Send(1, 0, 0, kLabel + 2, RowY(1) + 0.9), S_FALSE);
    const auto event = TakeEvent("NodeDrag");
    EXPECT_EQ(event.source, m_Root.Get());
    EXPECT_EQ(event.state, 1);
    EXPECT_EQ(event.first, static_cast<int32_t>(kLabel) + 2);
    EXPECT_EQ(event.second, static_cast<int32_t>(RowY(1)));
    EXPECT_TRUE(event.node == Item("A").Get());
}

TEST_F(PointerTest, OptionReportsTheDataObjectOfACollectionRow) {
    const auto root = SuperCollection::Make();
    const auto data = SuperCollection::Make();
    root->Append({"A", SmartPtr(SuperCollection::Make()->Identity()), SmartPtr(data->Identity())});
    BindCollection(Query<ISuperCollection>(root->Identity()));
    m_Tree->Control(136, 1);
    Click(0);
    EXPECT_TRUE(TakeEvent("NodeSelect").node == data->Identity());
}

TEST_F(PointerTest, BoundsAreTestedBeforeEverythingElse) {
    Bind("A\nB");
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double outside[][2] = {{kLeft - 1, kTop}, {kLeft + 200, kTop}, {kLeft, kTop - 1},
        {kLeft, kTop + 401}, {kNaN, kTop}, {kLeft, kNaN}, {kInfinity, kTop}, {kLeft, -kInfinity},
        {1e300, kTop}, {kLeft, -1e300}};
    for (const auto& [x, y] : outside) {
        for (const int32_t state : {0x21, 1, 2}) {
            EXPECT_EQ(Send(state, 3, 300, x, y), E_FAIL) << x << "," << y;
        }
    }
    EXPECT_EQ(Top(), 0);
    EXPECT_EQ(Send(1, -999, 0, kNaN, kNaN), S_OK);
    EXPECT_EQ(Send(1, 3, 0, kLeft, kTop + 400), S_FALSE) << "the bottom edge is inside";
    EXPECT_EQ(As<IUIMouseInput>()->Pointer(1, 3, 0, 0, 0, nullptr, nullptr), E_FAIL);
    m_Rect = {INT32_MAX - 5, INT32_MAX - 5, INT32_MAX, INT32_MAX};
    EXPECT_EQ(Send(1, 3, 0, INT32_MAX, INT32_MAX), S_OK) << "edges beyond 32 bits";
    m_Tree->SetElementSize(0, 0);
    EXPECT_EQ(Send(1, 3, 0, INT32_MAX, INT32_MAX), E_FAIL);
}

TEST_F(PointerTest, PressedItemsFillThemselvesOnceUnlessSwitchedOff) {
    const auto root = SuperCollection::Make();
    const auto folder = LazyFolder::Make();
    const auto names = LazyNames::Make();
    root->Append("folder", folder->Identity());
    root->Append("names", names->Identity());
    BindCollection(Query<ISuperCollection>(root->Identity()));
    m_Tree->Control(136, 0);
    Press(0);
    Press(1);
    EXPECT_EQ(folder->m_Filled + names->m_Filled, 0);
    m_Tree->Control(136, 2);
    for (int i = 0; i < 2; ++i) {
        Press(0, 4);
        Press(1);
        EXPECT_EQ(folder->m_Filled, 1);
        EXPECT_EQ(names->m_Filled, 1);
    }
}

TEST_F(HitTestTest, PointAnswersTheNodeOfItsRow) {
    Bind("A\n a1\nB\nC\nD");
    Open("A");
    m_Rect.height = 30;
    As<IRenderableObject>()->Render(nullptr, &m_Rect, nullptr, 0);
    m_Tree->Control(115, 2);
    SmartPtr<IUnknown> node;
    EXPECT_EQ(m_Tree->HitTest(kLeft, kTop + 19, &m_Rect, node.Receive()), S_OK);
    EXPECT_TRUE(node == Item("C").Get());
    EXPECT_EQ(m_Tree->HitTest(kLeft + 199, kTop, &m_Rect, node.Receive()), S_OK)
        << "also over the scroll bar";
    EXPECT_TRUE(node == Item("B").Get());
    node.Reset();
    const int32_t misses[][2] = {{kLeft - 1, kTop}, {kLeft + 200, kTop}, {kLeft, kTop - 1},
        {kLeft, kTop + 31}, {kLeft, kTop + 30}, {INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MAX}};
    for (const auto& [x, y] : misses) {
        EXPECT_EQ(m_Tree->HitTest(x, y, &m_Rect, node.Receive()), E_FAIL) << x << "," << y;
        EXPECT_FALSE(node);
    }
    EXPECT_EQ(m_Tree->HitTest(0, 0, nullptr, node.Receive()), E_FAIL);
    EXPECT_EQ(m_Tree->HitTest(kLeft, kTop, &m_Rect, nullptr), E_POINTER);
}

TEST_F(TouchTest, PanScrollsAgainstTheStartOfTheGesture) {
    std::string outline;
    for (int i = 0; i < 50; ++i) {
        outline += "row\n";
    }
    Bind(outline);
    As<IRenderableObject>()->Render(nullptr, &m_Rect, nullptr, 0);
    m_Tree->SetElementSize(0, 15);
    m_Tree->Control(115, 10);
    const auto touch = As<IUITouchInput>();
    const auto pan = [&](double phase, double y) {
        EXPECT_EQ(touch->Touch(0, 0, nullptr, phase, 0, 0, 0, 0, 0, y, 0, 0), S_OK);
        return Top();
    };
    EXPECT_EQ(pan(0, 0), 10);
    EXPECT_EQ(m_Listener->TakeNames(), "UIItemChanged");
    EXPECT_EQ(pan(1, 30), 8);
    EXPECT_EQ(pan(2, 20), 8);
    EXPECT_EQ(pan(1, -45), 13);
    m_Listener->m_Events.clear();
    EXPECT_EQ(pan(-1, 300), 13);
    EXPECT_EQ(m_Listener->TakeNames(), "");
    EXPECT_EQ(pan(1, 1e300), 0);
    EXPECT_EQ(pan(1, -std::numeric_limits<double>::infinity()), 49);
    EXPECT_EQ(pan(1, std::numeric_limits<double>::quiet_NaN()), 0);
    m_Tree->Control(115, 7);
    m_Listener->m_Events.clear();
    for (const int32_t height : {0, -3}) {
        m_Tree->SetElementSize(0, height);
        EXPECT_EQ(pan(0, 30), 7);
    }
    EXPECT_EQ(m_Listener->TakeNames(), "");
    m_Tree->SetElementSize(0, 10);
    EXPECT_EQ(pan(1, -20), 9) << "the start was stored all the same";
}
