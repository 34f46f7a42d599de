#include "tests/support/TreeTest.h"

#include <limits>

// Mouse and touch, where random input does not go: extremes, lazy items, data, the scroll bar.

namespace {

constexpr int kLeft = 20;
constexpr int kTop = 100;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct NamelessArchive : IFileArchive {
    using Interface = IFileArchive;
    int32_t SetFileName(IString*) override { return E_FAIL; }
};

/// An item that fills itself when asked to, and counts how often it was.
template <class Archive, int32_t kState>
class Lazy final : public HostObject<Lazy<Archive, kState>, SuperCollectionBase, Archive> {
public:
    static constexpr const char* kKind = "Lazy";

    int32_t Populate() override {
        this->Append("filled", SuperCollection::Make()->Identity());
        return ++m_Filled;
    }
    int32_t GetContentState(int32_t selector, int32_t* value) override {
        if (m_Filled > 0 || selector != kState) { // who says nothing is not filled
            *value = selector == kState ? m_Filled : -1;
        }
        return E_FAIL; // of no interest
    }
    int32_t m_Filled = 0;
};
using LazyFolder = Lazy<NamelessArchive, CONTENTSTATE_ARCHIVE>;
using LazyNames = Lazy<IFileNameCollection, CONTENTSTATE_FILENAMES>;

/// A control of rows 10 pixels high in a rectangle that does not begin at the origin.
class PointerTest : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        Listen();
        m_Tree->Control(105, 0);
        m_Tree->SetElementSize(0, 10);
    }
    int Send(int state, int action, int keys, double x, double y) {
        return Pointer(state, action, keys, x, y, m_Rect, m_Root.Get());
    }
    /// A pointer event on the label of a row, far right of the expander.
    int SendTo(int row, int action) { return Send(1, action, 0, kLeft + 90, kTop + row * 10 + 5); }
    /// The event heard last, and none since.
    Listener::Event Last() {
        auto events = std::exchange(m_Listener->m_Events, {});
        return events.empty() ? Listener::Event() : events.back();
    }
    CANVASRect m_Rect = {kLeft, kTop, 200, 400};
};

} // namespace

TEST_F(PointerTest, EmptyCollectionSaysOpenedStaysClosedAndMayReportItsData) {
    const auto root = SuperCollection::Make();
    const auto empty = SuperCollection::Make();
    root->Append({"A", SmartPtr(empty->Identity()), SmartPtr(root->Identity())});
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    m_Tree->Control(136, 1);
    SendTo(0, 2);
    const auto select = Last();
    EXPECT_EQ(select.text, "NodeSelect 1 0 1");
    EXPECT_TRUE(select.node == root->Identity());
    EXPECT_EQ(Flags("A"), 0x501);
    m_Tree->Control(136, 0);
    SendTo(0, 2);
    EXPECT_TRUE(Last().node == empty->Identity());
    root->RemoveAll();
}

TEST_F(PointerTest, LazyItemsAreFilledOnceWhenShownOrPressedUnlessSwitchedOff) {
    const auto folder = LazyFolder::Make();
    const auto names = LazyNames::Make();
    const auto shown = LazyFolder::Make();
    BindItems({{"folder", folder->Identity()}, {"names", names->Identity()},
        {"shown", shown->Identity()}});
    for (const int expected : {0, 1, 1}) {
        m_Tree->Control(136, expected * 2);
        SendTo(0, 3);
        SendTo(1, 3);
        EXPECT_EQ(folder->m_Filled, expected);
        EXPECT_EQ(names->m_Filled, expected);
        m_Tree->MakeNodeVisible(m_Root.Get(), 2);
        EXPECT_EQ(shown->m_Filled, 1);
        EXPECT_EQ(Rows(), "folder names shown filled") << "filled before it is shown";
    }
}

TEST_F(PointerTest, BoundsAreTestedBeforeEverythingElse) {
    Bind("A\nB");
    const double outside[][2] = {{kNaN, kTop}, {kLeft, kNaN}, {kInfinity, kTop},
        {kLeft, -kInfinity}, {1e300, kTop}, {kLeft, -1e300}, {kLeft, kTop + 401}};
    for (const auto& [x, y] : outside) {
        for (const int state : {0x21, 1, 2}) {
            EXPECT_EQ(Send(state, 3, 300, x, y), E_FAIL) << x << "," << y;
        }
    }
    EXPECT_EQ(Send(1, -999, 0, kNaN, kNaN), S_OK);
    EXPECT_EQ(Send(1, 3, 0, kLeft, kTop + 400), S_FALSE) << "the bottom edge is inside";
    EXPECT_EQ(As<IUIMouseInput>()->Pointer(1, 3, 0, 0, 0, nullptr, nullptr), E_FAIL);
    SmartPtr<IUnknown> node;
    EXPECT_EQ(m_Tree->HitTest(0, 0, nullptr, node.Receive()), E_FAIL);
    EXPECT_EQ(m_Tree->HitTest(INT32_MIN, kTop, &m_Rect, node.Receive()), E_FAIL);
    EXPECT_EQ(m_Tree->HitTest(kLeft, kTop, &m_Rect, nullptr), E_POINTER);
    m_Rect = {INT32_MAX - 5, INT32_MAX - 5, INT32_MAX, INT32_MAX};
    EXPECT_EQ(Send(1, 3, 0, INT32_MAX, INT32_MAX), S_OK) << "edges beyond 32 bits";
    m_Tree->SetElementSize(0, 0);
    EXPECT_EQ(Send(1, 3, 0, INT32_MAX, INT32_MAX), E_FAIL);
}

TEST_F(PointerTest, TouchPansToTheEndsAndNeedsARowHeight) {
    Bind("A\nB\nC\nD\nE\nF\nG\nH\nI");
    Draw({0, 0, 100, 20});
    const std::tuple<int, double, double, int> cases[] = {{10, 1, 1e300, 0}, {10, 1, -kInfinity, 8},
        {10, 1, kNaN, 0}, {10, 1, -50, 5}, {0, 0, 30, 5}, {-3, 0, 30, 5}, {10, -1, 30, 5},
        {10, 1, -10, 6}};
    for (const auto& [height, phase, pan, top] : cases) {
        m_Tree->SetElementSize(0, height);
        EXPECT_EQ(As<IUITouchInput>()->Touch(0, 0, nullptr, phase, 0, 0, 0, 0, 0, pan, 0, 0), S_OK);
        EXPECT_EQ(Value(115), top) << pan;
        EXPECT_EQ(Last().text, height > 0 && phase >= 0 ? "UIItemChanged 0" : "");
    }
}
