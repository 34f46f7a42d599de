#include "tests/support/TreeTest.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

// Random input against a flat model that shares nothing with the control: a list of nodes in
// display order. After every step the flag words, the selection, the scroll position, the status
// and the events have to agree. UITREE_STEPS and UITREE_SEED choose another run.

namespace {

constexpr int kHeight = 8;
constexpr CANVASRect kRect = {-30, -40, 300, 3000}; ///< all rows fit, so the bar is not shown
constexpr const char* kChanged = "UIItemChanged 0 tree -;";

int64_t Option(const char* name, int64_t fallback) {
    const char* text = std::getenv(name);
    return text ? std::atoll(text) : fallback;
}

std::string LabelOf(int node) {
    return node < 0 ? "-" : "n" + std::to_string(node);
}

bool IsAway(double x, double y, double fromX, double fromY) {
    return std::abs(std::trunc(x - fromX)) > 1 || std::abs(std::trunc(y - fromY)) > 1;
}

class Model {
public:
    struct Node {
        int parent;
        int index; ///< in its collection
        int flags;
        std::vector<int> children = {};
    };

    static constexpr int kNone = -1, kOutside = -2;

    explicit Model(std::mt19937& random) {
        std::vector<int> open;
        const int count = int(5 + random() % 50);
        for (int i = 0; i < count; ++i) {
            open.resize(random() % (open.size() + 1));
            const int parent = open.empty() ? -1 : open.back();
            nodes.push_back({parent, 0, parent < 0 ? 0x101 : 0});
            auto& siblings = parent < 0 ? m_Roots : nodes[parent].children;
            nodes[i].index = int(siblings.size());
            siblings.push_back(i);
            outline += std::string(open.size(), ' ') + LabelOf(i) + "\n";
            open.push_back(i);
        }
    }

    std::vector<int> Rows() const {
        std::vector<int> rows;
        std::vector<bool> shown;
        for (const Node& node : nodes) {
            const bool above = node.parent < 0 || shown[node.parent];
            shown.push_back(above && (node.flags & NODE_VISIBLE) != 0);
            if (shown.back()) {
                rows.push_back(int(shown.size()) - 1);
            }
        }
        return rows;
    }

    /// The node at a place; kNone where no row is.
    int NodeAt(double x, double y) {
        const double right = std::trunc(x) - kRect.left;
        const double down = std::trunc(y) - kRect.top;
        if (right < 0 || right >= kRect.width || down < 0 || down > kRect.height) {
            return kOutside;
        }
        LayOut();
        const auto rows = Rows();
        const size_t row = size_t(int(y - kRect.top) / kHeight + top);
        return row < rows.size() ? rows[row] : kNone;
    }

    int Pointer(int state, int action, int keys, double x, double y) {
        const int node = NodeAt(x, y);
        if (node == kOutside) {
            return E_FAIL;
        }
        if ((state & 0x20) != 0) {
            if (const int steps = keys / 100; steps != 0) {
                Scroll(top + steps * ((state & 0x0C) != 0 ? 10 : 1));
                events += kChanged;
            }
            return S_OK;
        }
        if (node == kNone) {
            return S_FALSE;
        }
        if (state == 2 && action == 3) {
            Unmark(selected);
            nodes[node].flags |= NODE_SELECTED;
            selected = node;
            Fire("tree", 2, nodes[node].index, 0, node);
        } else if (state == 1 && action == 0 && keys == 0 && m_Pressed >= 0 &&
                   IsAway(x, y, m_PressX, m_PressY)) {
            events += Line("NodeDrag", {1, int(x), int(y)}) + " root " + LabelOf(m_Pressed) + ";";
        }
        if ((state & 1) == 0 || action == 0) {
            return S_FALSE;
        }
        action == 3 ? Press(node, keys, x, y) : Release(node, keys, x, y);
        return S_OK;
    }

    void Touch(double phase, double pan) {
        if (phase == 0) {
            m_TouchStart = top;
        }
        if (phase >= 0) {
            Scroll(m_TouchStart - pan / kHeight);
            events += kChanged;
        }
    }

    void Select(int row, int flags) {
        const auto rows = Rows();
        const int count = int(rows.size());
        const int wanted = (flags & 1) != 0 ? row : row - top;
        const int node = wanted >= 0 && wanted < count ? rows[wanted] : -1;
        if ((flags & 4) != 0) {
            Scroll(row);
        }
        const bool marks = (flags & 8) == 0 && node >= 0;
        if (marks) {
            Unmark(selected);
            nodes[node].flags |= NODE_SELECTED;
        }
        if ((flags & 2) != 0) {
            selected = node;
            const int index = node >= 0 ? nodes[node].index : wanted < 0 ? -1 : count;
            Fire("tree", 1, index, 0, marks ? node : -1);
        }
    }

    void Open(int node) {
        for (const int sibling : Siblings(node)) {
            nodes[sibling].flags = (nodes[sibling].flags & 0xFF) | NODE_VISIBLE;
        }
        nodes[node].flags |= NODE_EXPANDED;
        ShowChildren(node, true);
    }

    void Draw() {
        LayOut();
        m_Indent = kHeight;
    }

    void Compact() {
        std::vector<bool> reached;
        for (Node& node : nodes) {
            const bool isRoot = node.parent < 0;
            const bool isShown = (node.flags & NODE_VISIBLE) != 0;
            reached.push_back(isRoot || (reached[node.parent] && isShown));
            if (reached.back()) {
                node.flags &= isRoot ? 0x1FF : 0xFF;
            }
        }
    }

    std::vector<Node> nodes;
    std::string outline;
    int64_t now = 0; ///< microseconds
    int selected = -1, top = 0;
    int selectOnPress = 1, clearAll = 1, rootZone = 0, childZone = 1;
    std::string events;

private:
    const std::vector<int>& Siblings(int node) const {
        return nodes[node].parent < 0 ? m_Roots : nodes[nodes[node].parent].children;
    }
    void LayOut() {
        m_LastRow = double(Rows().size()) - 1;
        Scroll(top);
    }
    void Scroll(double position) { top = int(std::clamp(std::trunc(position), 0., m_LastRow)); }
    void Unmark(int node) {
        if (node >= 0) {
            nodes[node].flags &= 0x3FF;
        }
    }
    void ShowChildren(int node, bool show) {
        for (const int child : nodes[node].children) {
            nodes[child].flags = (nodes[child].flags & NODE_EXPANDED) |
                                 ((nodes[node].flags & 0xFF) + 1) | (show ? NODE_VISIBLE : 0);
        }
    }
    void Fire(const std::string& container, int state, int index, int action, int node) {
        const std::string text = Line("NodeSelect", {state, index, action});
        events += text + " " + container + " " + LabelOf(node) + ";";
    }

    void Press(int node, int keys, double x, double y) {
        m_PressX = std::trunc(x);
        m_PressY = std::trunc(y);
        m_Pressed = node;
        if ((keys & 0x0C) != 0 || selectOnPress == 0) {
            return;
        }
        if (selected >= 0 && clearAll != 0) {
            for (const int sibling : Siblings(selected)) {
                Unmark(sibling);
            }
        }
        Unmark(selected);
        selected = -1;
        if (nodes[node].children.empty()) {
            nodes[node].flags ^= NODE_SELECTED;
            selected = node;
        }
        events += kChanged;
    }

    /// The action of a click: 1 opened, 2 closed, 0 neither.
    int Toggle(int node, double x) {
        const int level = nodes[node].flags & 0xFF;
        const int iconOnly = level == 0 ? 0 : level == 1 ? rootZone : childZone;
        if (nodes[node].children.empty() || (iconOnly != 0 && x > kRect.left + m_Indent * level)) {
            return 0;
        }
        const bool opens = (nodes[node].flags & NODE_EXPANDED) == 0;
        nodes[node].flags = (nodes[node].flags & 0x1FF) | (opens ? NODE_EXPANDED : 0);
        ShowChildren(node, opens);
        events += kChanged;
        return opens ? 1 : 2;
    }

    void Release(int node, int keys, double x, double y) {
        if (now - m_ClickTime < 500'000 && keys == 0 && !IsAway(x, y, m_ClickX, m_ClickY)) {
            Fire("tree", 2, nodes[node].index, 0, node);
            m_ClickX = m_ClickY = -2;
            return;
        }
        m_ClickTime = now;
        m_ClickX = std::trunc(x);
        m_ClickY = std::trunc(y);
        m_Pressed = -1;
        const int action = Toggle(node, x);
        if (keys == 0) {
            Unmark(selected);
        }
        nodes[node].flags ^= NODE_SELECTED;
        selected = node;
        const int parent = nodes[node].parent;
        Fire(parent < 0 ? "root" : LabelOf(parent), 1 | keys, nodes[node].index, action, node);
    }

    std::vector<int> m_Roots;
    double m_LastRow = INT32_MAX; ///< the bar's range
    int m_Indent = 10;            ///< until the first drawing
    int m_Pressed = -1;           ///< -1 when the button is up
    double m_PressX = 0, m_PressY = 0, m_ClickX = -2, m_ClickY = -2;
    int64_t m_ClickTime = 0;
    int m_TouchStart = 0;
};

class RandomInputTest : public TreeTest {
protected:
    void SetUp() override {}

    /// A new control that shows the model's tree.
    void Begin(const Model& model) {
        m_Tree.Reset();
        TreeTest::SetUp();
        Listen();
        m_Tree->Control(105, 0);
        m_Tree->SetElementSize(0, kHeight);
        Bind(model.outline);
        m_Places.clear();
        for (int i = 0; i < int(model.nodes.size()); ++i) {
            m_Places.push_back(Find(LabelOf(i)));
        }
    }
    int Below(int bound) { return int(m_Random() % uint32_t(bound)); }

    void Step(Model& model) {
        if (Below(3) != 0) { // else the same place again, for double clicks
            m_X = kRect.left - 3 + Below(Below(8) == 0 ? 3060 : 900) / 10.0;
            m_Y = kRect.top - 3 + Below((int(model.Rows().size()) + 2) * kHeight * 10) / 10.0;
        }
        const int keys = Below(4) == 0 ? Below(16) : 0;
        switch (Below(6)) {
        case 0:
            return StepPointer(model, 1, 3, keys);
        case 1:
            return StepPointer(model, 1, 2, keys);
        case 2:
            return StepPointer(model, 1 + Below(3), Below(2) * 3, keys);
        case 3:
            return StepPointer(
                model, 0x20 | (Below(3) == 0 ? 4 << Below(2) : 0), 0, Below(999) - 500);
        case 4:
            return StepOperation(model);
        default:
            return StepClock(model);
        }
    }

    void StepPointer(Model& model, int state, int action, int keys) {
        m_Did = Line("pointer", {state, action, keys});
        const int expected = model.Pointer(state, action, keys, m_X, m_Y);
        EXPECT_EQ(Pointer(state, action, keys, m_X, m_Y, kRect, m_Root.Get()), expected);
    }

    void StepOperation(Model& model) {
        const int choice = Below(20);
        m_Did = Line("operation", {choice});
        if (choice < 8) {
            const int row = Below(60) - 3;
            const int flags = Below(16);
            model.Select(row, flags);
            m_Tree->SelectNode(row, flags);
        } else if (choice < 11) {
            SmartPtr<IUnknown> hit;
            CANVASRect rect = kRect;
            const int node = model.NodeAt(int(m_X), int(m_Y));
            const int status = m_Tree->HitTest(int(m_X), int(m_Y), &rect, hit.Receive());
            EXPECT_EQ(status, node < 0 ? E_FAIL : S_OK);
            EXPECT_EQ(LabelOfObject(hit.Get()), LabelOf(node));
        } else if (choice < 15) {
            const double phase = Below(4) - 1;
            const double pan = Below(2000) / 10.0 - 100;
            model.Touch(phase, pan);
            As<IUITouchInput>()->Touch(0, 0, nullptr, phase, 0, 0, 0, 0, 0, pan, 0, 0);
        } else if (choice == 15) { // the host shows or hides a node, but never all of them
            const int node = 1 + Below(int(model.nodes.size()) - 1);
            m_Places[node].SetFlags(model.nodes[node].flags ^= NODE_VISIBLE);
        } else if (choice == 16) {
            model.Draw();
            Draw(kRect);
        } else if (choice < 19) {
            const int node = Below(int(model.nodes.size()));
            model.Open(node);
            m_Tree->MakeNodeVisible(m_Places[node].collection.Get(), m_Places[node].index);
        } else {
            model.Compact();
            m_Tree->CompactNodes();
        }
    }

    void StepClock(Model& model) {
        m_Did = "clock and switches";
        const int64_t elapsed = Below(2) == 0 ? 499'999 + Below(2) : Below(700'000);
        model.now += elapsed;
        m_Clock.Advance(elapsed);
        const std::pair<int, int*> switches[] = {{145, &model.selectOnPress},
            {146, &model.clearAll}, {147, &model.rootZone}, {148, &model.childZone}};
        const auto& [id, field] = switches[Below(4)];
        *field = Below(2);
        m_Tree->Control(id, *field);
    }

    std::string LabelOfObject(IUnknown* object) const {
        for (const Place& place : m_Places) {
            if (object && place.Item() == object) {
                return place.Label();
            }
        }
        return !object                              ? "-"
               : IsSameObject(m_Root.Get(), object) ? "root"
               : IsSameObject(m_Tree.Get(), object) ? "tree"
                                                    : "stranger";
    }

    void Compare(Model& model) {
        for (size_t i = 0; i < model.nodes.size(); ++i) {
            EXPECT_EQ(m_Places[i].Flags(), model.nodes[i].flags) << LabelOf(int(i));
        }
        const auto rows = model.Rows();
        EXPECT_EQ(RowCount(), int(rows.size()));
        const int row = Below(RowCount() + 1);
        SmartPtr<IUnknown> node;
        m_Tree->get_Node(0, row, 0, node.Receive());
        EXPECT_EQ(LabelOfObject(node.Get()), row < RowCount() ? LabelOf(rows[row]) : "-");
        EXPECT_EQ(SelectedLabel(), model.selected < 0 ? "" : LabelOf(model.selected));
        EXPECT_EQ(Value(115), model.top);
        std::string events;
        for (const Listener::Event& event : std::exchange(m_Listener->m_Events, {})) {
            events += event.text + " " + LabelOfObject(event.source) + " " +
                      LabelOfObject(event.node.Get()) + ";";
        }
        EXPECT_EQ(events, std::exchange(model.events, {}));
    }

    std::mt19937 m_Random;
    std::vector<Place> m_Places;
    double m_X = 0, m_Y = 0;
    std::string m_Did;
};

} // namespace

TEST_F(RandomInputTest, ControlAgreesWithAFlatModelAfterEveryStep) {
    constexpr int64_t kStepsPerTree = 500;
    const int64_t steps = Option("UITREE_STEPS", 100'000);
    const auto seed = uint32_t(Option("UITREE_SEED", 20'240'607));
    m_Random.seed(seed);
    for (int64_t first = 0; first < steps; first += kStepsPerTree) {
        Vouch(first / kStepsPerTree % 2 == 0);
        Model model(m_Random);
        Begin(model);
        for (int64_t step = first; step < first + kStepsPerTree; ++step) {
            Step(model);
            Compare(model);
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step << ": " << m_Did;
        }
    }
}
