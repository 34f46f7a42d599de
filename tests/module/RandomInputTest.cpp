#include "tests/support/Clock.h"
#include "tests/support/Listener.h"
#include "tests/support/TreeTest.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

// Random input against a flat model that shares nothing with the control: a list of nodes in
// display order. After every step the flag words, the selection, the scroll position, the status
// and the events have to agree. UITREE_STEPS and UITREE_SEED choose another run.

namespace {

constexpr int32_t kHeight = 10;
constexpr int32_t kRectHeight = 3000; ///< all rows fit, so the bar is not shown
constexpr CANVASRect kRect = {30, 40, 300, kRectHeight};

int64_t Option(const char* name, int64_t fallback) {
    const char* text = std::getenv(name);
    return text ? std::atoll(text) : fallback;
}

struct ModelNode {
    std::string label;
    int parent = -1;
    int index = 0; ///< in its collection
    int32_t flags = 0;
    std::vector<int> children = {};
};

class Model {
public:
    /// A random forest in display order.
    explicit Model(std::mt19937& random);

    std::string Outline() const;

    int32_t Press(int32_t keys, double x, double y);
    int32_t Release(int32_t keys, double x, double y);
    int32_t SecondaryPress(double x, double y);
    int32_t Move(double x, double y);
    int32_t Wheel(int32_t state, int32_t keys, double x, double y);
    void Touch(double phase, double pan);
    void Select(int32_t row, int32_t flags);
    void Open(int node);
    void Compact();

    std::vector<int> Rows() const;
    std::vector<int> Siblings(int node) const;

    std::vector<ModelNode> nodes;
    int64_t now = 0; ///< microseconds
    int selected = -1;
    int32_t top = 0;
    int32_t selectOnPress = 1, clearAll = 1, rootZone = 0, childZone = 1;
    std::string events;

private:
    bool Accept(double x, double y);
    int NodeAt(double y) const;
    void Scroll(double position);
    void Mark(int node, bool marked);
    void Fire(const std::string& event) { events += event + ";"; }
    void FireSelect(const std::string& container, int32_t state, int node, int32_t action);
    std::string Container(int node) const;
    bool InToggleZone(int node, double x) const;

    bool m_Down = false;
    double m_PressX = 0, m_PressY = 0;
    int m_Pressed = -1;
    int64_t m_ClickTime = -1'000'000'000;
    double m_ClickX = -2, m_ClickY = -2;
    int32_t m_TouchStart = 0;
    int32_t m_LastRow = INT32_MAX; ///< the bar's range
};

Model::Model(std::mt19937& random) {
    std::vector<int> open;
    const int count = 5 + static_cast<int>(random() % 50);
    std::vector<int> roots;
    for (int i = 0; i < count; ++i) {
        open.resize(open.empty() ? 0 : random() % (open.size() + 1));
        ModelNode node{"n" + std::to_string(i), open.empty() ? -1 : open.back()};
        auto& siblings = node.parent < 0 ? roots : nodes[static_cast<size_t>(node.parent)].children;
        node.index = static_cast<int>(siblings.size());
        node.flags = node.parent < 0 ? 0x101 : 0;
        siblings.push_back(i);
        nodes.push_back(node);
        open.push_back(i);
    }
}

std::string Model::Outline() const {
    std::string outline;
    for (const ModelNode& node : nodes) {
        for (int above = node.parent; above >= 0;
             above = nodes[static_cast<size_t>(above)].parent) {
            outline += ' ';
        }
        outline += node.label + "\n";
    }
    return outline;
}

std::vector<int> Model::Rows() const {
    std::vector<int> rows;
    std::vector<bool> shown;
    for (size_t i = 0; i < nodes.size(); ++i) {
        const bool above = nodes[i].parent < 0 || shown[static_cast<size_t>(nodes[i].parent)];
        shown.push_back(above && (nodes[i].flags & NODE_VISIBLE) != 0);
        if (shown.back()) {
            rows.push_back(static_cast<int>(i));
        }
    }
    return rows;
}

std::vector<int> Model::Siblings(int node) const {
    std::vector<int> siblings;
    for (size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i].parent == nodes[static_cast<size_t>(node)].parent) {
            siblings.push_back(static_cast<int>(i));
        }
    }
    return siblings;
}

/// Whether a point is the control's, which then tells the bar how many rows there are.
bool Model::Accept(double x, double y) {
    const double column = std::trunc(x);
    const double line = std::trunc(y);
    if (column < kRect.left || column >= kRect.left + kRect.width || line < kRect.top ||
        line > kRect.top + kRect.height) {
        return false;
    }
    m_LastRow = static_cast<int32_t>(Rows().size()) - 1;
    Scroll(top);
    return true;
}

int Model::NodeAt(double y) const {
    const auto rows = Rows();
    const auto row = static_cast<size_t>(static_cast<int>(y - kRect.top) / kHeight + top);
    return row < rows.size() ? rows[row] : -1;
}

void Model::Scroll(double position) {
    top =
        static_cast<int32_t>(std::clamp(std::trunc(position), 0.0, static_cast<double>(m_LastRow)));
}

void Model::Mark(int node, bool marked) {
    if (node >= 0) {
        int32_t& flags = nodes[static_cast<size_t>(node)].flags;
        flags = marked ? flags | NODE_SELECTED : flags & 0x3FF;
    }
}

std::string Model::Container(int node) const {
    const int parent = nodes[static_cast<size_t>(node)].parent;
    return parent < 0 ? "root" : nodes[static_cast<size_t>(parent)].label;
}

void Model::FireSelect(const std::string& container, int32_t state, int node, int32_t action) {
    const ModelNode& at = nodes[static_cast<size_t>(node)];
    Fire("select " + container + " " + std::to_string(state) + " " + std::to_string(at.index) +
         " " + std::to_string(action) + " " + at.label);
}

int32_t Model::Press(int32_t keys, double x, double y) {
    if (!Accept(x, y)) {
        return E_FAIL;
    }
    const int node = NodeAt(y);
    if (node < 0) {
        return S_FALSE;
    }
    m_Down = true;
    m_PressX = std::trunc(x);
    m_PressY = std::trunc(y);
    m_Pressed = node;
    if ((keys & 0x0C) != 0 || selectOnPress == 0) {
        return S_OK;
    }
    if (selected >= 0 && clearAll != 0) {
        for (const int sibling : Siblings(selected)) {
            Mark(sibling, false);
        }
    }
    Mark(selected, false);
    selected = -1;
    if (nodes[static_cast<size_t>(node)].children.empty()) {
        nodes[static_cast<size_t>(node)].flags ^= NODE_SELECTED;
        selected = node;
    }
    Fire("changed");
    return S_OK;
}

bool Model::InToggleZone(int node, double x) const {
    const int32_t level = nodes[static_cast<size_t>(node)].flags & 0xFF;
    const int32_t iconOnly = level == 0 ? 0 : level == 1 ? rootZone : childZone;
    return iconOnly == 0 || x <= kRect.left + kHeight * level;
}

int32_t Model::Release(int32_t keys, double x, double y) {
    if (!Accept(x, y)) {
        return E_FAIL;
    }
    const int node = NodeAt(y);
    if (node < 0) {
        return S_FALSE;
    }
    ModelNode& at = nodes[static_cast<size_t>(node)];
    if (now - m_ClickTime < 500'000 && keys == 0 && std::abs(std::trunc(x - m_ClickX)) <= 1 &&
        std::abs(std::trunc(y - m_ClickY)) <= 1) {
        FireSelect("tree", 2, node, 0);
        m_ClickX = m_ClickY = -2;
        return S_OK;
    }
    m_ClickTime = now;
    m_ClickX = std::trunc(x);
    m_ClickY = std::trunc(y);
    m_Down = false;
    int32_t action = 0;
    if (!at.children.empty() && InToggleZone(node, x)) {
        action = (at.flags & NODE_EXPANDED) != 0 ? 2 : 1;
        at.flags = (at.flags & 0x1FF) | (action == 1 ? NODE_EXPANDED : 0);
        for (const int child : at.children) {
            int32_t& flags = nodes[static_cast<size_t>(child)].flags;
            flags = (flags & NODE_EXPANDED) | ((at.flags & 0xFF) + 1) |
                    (action == 1 ? NODE_VISIBLE : 0);
        }
        Fire("changed");
    }
    if (keys == 0) {
        Mark(selected, false);
    }
    at.flags ^= NODE_SELECTED;
    selected = node;
    FireSelect(Container(node), 1 | keys, node, action);
    return S_OK;
}

int32_t Model::SecondaryPress(double x, double y) {
    if (!Accept(x, y)) {
        return E_FAIL;
    }
    if (const int node = NodeAt(y); node >= 0) {
        Mark(selected, false);
        Mark(node, true);
        selected = node;
        FireSelect("tree", 2, node, 0);
    }
    return S_FALSE;
}

int32_t Model::Move(double x, double y) {
    if (!Accept(x, y)) {
        return E_FAIL;
    }
    const bool away =
        std::abs(std::trunc(x - m_PressX)) > 1 || std::abs(std::trunc(y - m_PressY)) > 1;
    if (NodeAt(y) >= 0 && m_Down && away) {
        Fire("drag " + std::to_string(static_cast<int>(x)) + " " +
             std::to_string(static_cast<int>(y)) + " " +
             nodes[static_cast<size_t>(m_Pressed)].label);
    }
    return S_FALSE;
}

int32_t Model::Wheel(int32_t state, int32_t keys, double x, double y) {
    if (!Accept(x, y)) {
        return E_FAIL;
    }
    if (const int32_t steps = keys / 100; steps != 0) {
        Scroll(top + steps * ((state & 0x0C) != 0 ? 10 : 1));
        Fire("changed");
    }
    return S_OK;
}

void Model::Touch(double phase, double pan) {
    if (phase == 0) {
        m_TouchStart = top;
    }
    if (phase >= 0) {
        Scroll(m_TouchStart - pan / kHeight);
        Fire("changed");
    }
}

void Model::Select(int32_t row, int32_t flags) {
    const auto rows = Rows();
    const int32_t wanted = (flags & 1) != 0 ? row : row - top;
    const int node = wanted >= 0 && wanted < static_cast<int32_t>(rows.size())
                         ? rows[static_cast<size_t>(wanted)]
                         : -1;
    if ((flags & 4) != 0) {
        Scroll(row);
    }
    if ((flags & 8) == 0 && node >= 0) {
        Mark(selected, false);
        Mark(node, true);
    }
    if ((flags & 2) != 0) {
        selected = node;
        const int32_t index = node >= 0    ? nodes[static_cast<size_t>(node)].index
                              : wanted < 0 ? -1
                                           : static_cast<int32_t>(rows.size());
        Fire("select tree 1 " + std::to_string(index) + " 0 " +
             ((flags & 8) == 0 && node >= 0 ? nodes[static_cast<size_t>(node)].label : "-"));
    }
}

void Model::Open(int node) {
    for (const int sibling : Siblings(node)) {
        int32_t& flags = nodes[static_cast<size_t>(sibling)].flags;
        flags = (flags & 0xFF) | NODE_VISIBLE;
    }
    ModelNode& at = nodes[static_cast<size_t>(node)];
    at.flags |= NODE_EXPANDED;
    for (const int child : at.children) {
        int32_t& flags = nodes[static_cast<size_t>(child)].flags;
        flags = (flags & NODE_EXPANDED) | NODE_VISIBLE | (((at.flags & 0xFF) + 1) & 0xFF);
    }
}

void Model::Compact() {
    const auto rows = Rows();
    for (const int row : rows) {
        ModelNode& node = nodes[static_cast<size_t>(row)];
        node.flags &= node.parent < 0 ? 0x1FF : 0xFF;
    }
}

class RandomInputTest : public TreeTest {
protected:
    void SetUp() override { m_Listener = Listener::Make(); }
    void TearDown() override {
        m_Listener->m_Events.clear();
        m_Listener.Reset();
        m_Places.clear();
        TreeTest::TearDown();
    }

    /// A new control that shows the model's tree.
    void Begin(const Model& model) {
        m_Tree.Reset();
        TreeTest::SetUp();
        As<IEventSource>()->Advise(m_Listener->Identity(), 1);
        m_Tree->Control(105, 0);
        m_Tree->SetElementSize(0, kHeight);
        Bind(model.Outline());
        m_Places.clear();
        for (const ModelNode& node : model.nodes) {
            m_Places.push_back(Find(node.label));
        }
    }
    int Below(int bound) { return static_cast<int>(m_Random() % static_cast<uint32_t>(bound)); }
    int32_t Send(int32_t state, int32_t action, int32_t keys) {
        CANVASRect rect = kRect;
        return As<IUIMouseInput>()->Pointer(state, action, keys, m_X, m_Y, &rect, m_Root.Get());
    }

    void MovePointer(const Model& model);
    void Step(Model& model);
    void StepWheel(Model& model);
    void StepTouch(Model& model);
    void StepSelect(Model& model);
    void StepOpen(Model& model);
    void StepClock(Model& model);
    void Compare(Model& model);
    std::string TakeEvents();
    std::string LabelOfObject(IUnknown* object) const;

    std::mt19937 m_Random;
    SmartPtr<Listener> m_Listener;
    std::vector<Place> m_Places;
    double m_X = 0;
    double m_Y = 0;
    const char* m_Did = "";
};

/// Every third time it stays where it is, for double clicks and clicks without a drag.
void RandomInputTest::MovePointer(const Model& model) {
    if (Below(3) != 0) {
        const auto rows = static_cast<int>(model.Rows().size());
        m_X = kRect.left - 3 + Below(900) / 10.0;
        m_Y = kRect.top - 3 + Below((rows + 2) * kHeight * 10) / 10.0;
    }
}

void RandomInputTest::Step(Model& model) {
    MovePointer(model);
    const int32_t keys = Below(4) == 0 ? Below(16) : 0;
    const int choice = Below(12);
    if (choice < 2) {
        m_Did = "press";
        const int32_t expected = model.Press(keys, m_X, m_Y);
        EXPECT_EQ(Send(1, 3, keys), expected);
    } else if (choice < 5) {
        m_Did = "release";
        const int32_t expected = model.Release(keys, m_X, m_Y);
        EXPECT_EQ(Send(1, 2, keys), expected);
    } else if (choice == 5) {
        m_Did = "secondary press";
        const int32_t expected = model.SecondaryPress(m_X, m_Y);
        EXPECT_EQ(Send(2, 3, keys), expected);
    } else if (choice == 6) {
        m_Did = "move";
        const int32_t expected = model.Move(m_X, m_Y);
        EXPECT_EQ(Send(1, 0, 0), expected);
    } else {
        constexpr void (RandomInputTest::*kOthers[])(Model&) = {&RandomInputTest::StepWheel,
            &RandomInputTest::StepTouch, &RandomInputTest::StepSelect, &RandomInputTest::StepOpen,
            &RandomInputTest::StepClock};
        (this->*kOthers[choice - 7])(model);
    }
}

void RandomInputTest::StepWheel(Model& model) {
    m_Did = "wheel";
    const int32_t state = 0x20 | (Below(3) == 0 ? 4 << Below(2) : 0);
    const int32_t distance = Below(1000) - 500;
    const int32_t expected = model.Wheel(state, distance, m_X, m_Y);
    EXPECT_EQ(Send(state, 0, distance), expected);
}

void RandomInputTest::StepTouch(Model& model) {
    m_Did = "touch";
    const double phase = Below(4) - 1;
    const double pan = Below(2000) / 10.0 - 100;
    model.Touch(phase, pan);
    As<IUITouchInput>()->Touch(0, 0, nullptr, phase, 0, 0, 0, 0, 0, pan, 0, 0);
}

void RandomInputTest::StepSelect(Model& model) {
    m_Did = "select";
    const int32_t row = Below(60) - 3;
    const int32_t flags = Below(16);
    model.Select(row, flags);
    m_Tree->SelectNode(row, flags);
}

void RandomInputTest::StepOpen(Model& model) {
    if (Below(20) == 0) {
        m_Did = "compact";
        model.Compact();
        m_Tree->CompactNodes();
    } else if (Below(3) == 0) {
        m_Did = "open";
        const int node = Below(static_cast<int>(model.nodes.size()));
        const Place& place = m_Places[static_cast<size_t>(node)];
        model.Open(node);
        m_Tree->MakeNodeVisible(place.collection.Get(), place.index);
    }
}

void RandomInputTest::StepClock(Model& model) {
    m_Did = "clock and switches";
    const int64_t elapsed = Below(2) == 0 ? 499'999 + Below(2) : Below(700'000);
    model.now += elapsed;
    AdvanceClock(elapsed);
    const std::pair<int32_t, int32_t*> switches[] = {{145, &model.selectOnPress},
        {146, &model.clearAll}, {147, &model.rootZone}, {148, &model.childZone}};
    const auto& [id, field] = switches[Below(4)];
    *field = Below(2);
    m_Tree->Control(id, *field);
}

std::string RandomInputTest::LabelOfObject(IUnknown* object) const {
    if (!object) {
        return "-";
    }
    for (const Place& place : m_Places) {
        SmartPtr<IUnknown> item;
        place.collection->GetItem(place.index, item.Receive());
        if (item == object) {
            return LabelOf(*place.collection.Get(), place.index);
        }
    }
    return IsSameObject(m_Root.Get(), object) ? "root" : "tree";
}

std::string RandomInputTest::TakeEvents() {
    std::string events;
    for (const Listener::Event& event : std::exchange(m_Listener->m_Events, {})) {
        const std::string numbers =
            std::to_string(event.first) + " " + std::to_string(event.second) + " ";
        if (event.name == "UIItemChanged") {
            events += "changed;";
        } else if (event.name == "NodeSelect") {
            events += "select " + LabelOfObject(event.source) + " " + std::to_string(event.state) +
                      " " + numbers + LabelOfObject(event.node.Get()) + ";";
        } else {
            events += "drag " + numbers + LabelOfObject(event.node.Get()) + ";";
        }
    }
    return events;
}

void RandomInputTest::Compare(Model& model) {
    for (size_t i = 0; i < model.nodes.size(); ++i) {
        int32_t flags = 0;
        m_Places[i].collection->GetItemFlags(m_Places[i].index, &flags);
        EXPECT_EQ(flags, model.nodes[i].flags) << model.nodes[i].label;
    }
    EXPECT_EQ(RowCount(), static_cast<int32_t>(model.Rows().size()));
    EXPECT_EQ(SelectedLabel(),
        model.selected < 0 ? "" : model.nodes[static_cast<size_t>(model.selected)].label);
    int32_t top = -1;
    m_Tree->Inquire(115, &top);
    EXPECT_EQ(top, model.top);
    EXPECT_EQ(TakeEvents(), std::exchange(model.events, {}));
}

} // namespace

TEST_F(RandomInputTest, ControlAgreesWithAFlatModelAfterEveryStep) {
    constexpr int64_t kStepsPerTree = 500;
    const int64_t steps = Option("UITREE_STEPS", 100'000);
    const auto seed = static_cast<uint32_t>(Option("UITREE_SEED", 20'240'607));
    m_Random.seed(seed);
    for (int64_t first = 0; first < steps; first += kStepsPerTree) {
        Model model(m_Random);
        Begin(model);
        for (int64_t step = first; step < first + kStepsPerTree; ++step) {
            Step(model);
            Compare(model);
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step << ": " << m_Did;
        }
    }
}
