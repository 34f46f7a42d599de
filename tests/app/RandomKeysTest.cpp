#include "app/session/Session.h"
#include "host/data/Expansion.h"
#include "tests/support/TreeTest.h"

#include <algorithm>
#include <random>
#include <sstream>

// Random keys, typed letters and searches against a flat model: a list of nodes in display order.

namespace {

constexpr Size kSize{200, 5 * 22};
constexpr int kNone = -1;

/// What keys do with a tree, without any of its interfaces.
class Model {
public:
    explicit Model(std::mt19937& random) {
        std::vector<int> above;
        const int count = int(3 + random() % 30);
        for (int i = 0; i < count; ++i) {
            above.resize(random() % (above.size() + 1));
            const std::string label{char('a' + random() % 3), char('a' + random() % 3)};
            m_Nodes.push_back({above.empty() ? kNone : above.back(), label});
            m_Outline += std::string(above.size(), ' ') + label + "\n";
            above.push_back(i);
        }
    }

    std::vector<int> Rows() const {
        std::vector<int> rows;
        for (int i = 0; i < int(m_Nodes.size()); ++i) {
            if (IsShown(i)) {
                rows.push_back(i);
            }
        }
        return rows;
    }
    std::string Labels() const {
        std::string labels;
        for (const int row : Rows()) {
            labels += (labels.empty() ? "" : " ") + m_Nodes[row].label;
        }
        return labels;
    }

    void Press(Key key) {
        constexpr int kPage = 5;
        const auto rows = Rows();
        const auto found = std::find(rows.begin(), rows.end(), m_Selected);
        const int row = int(found - rows.begin());
        const bool isStart = found == rows.end();
        if (key == Key::kEscape) {
            return;
        }
        const int steps = key == Key::kUp         ? -1
                          : key == Key::kPageUp   ? -kPage
                          : key == Key::kPageDown ? kPage
                                                  : 1;
        if (key == Key::kHome || key == Key::kEnd) {
            m_Selected = key == Key::kHome ? rows.front() : rows.back();
        } else if (isStart) {
            m_Selected = rows.front();
        } else if (key < Key::kRight) {
            m_Selected = rows[std::clamp(row + steps, 0, int(rows.size()) - 1)];
        } else {
            PressOnNode(key, m_Nodes[m_Selected]);
        }
    }

    void Type(const std::string& text) {
        const bool isOneLetter = text.find_first_not_of(text[0]) == std::string::npos;
        const std::string begin = isOneLetter ? text.substr(0, 1) : text;
        SelectNext(
            Rows(), isOneLetter, [&](int node) { return m_Nodes[node].label.starts_with(begin); });
    }

    void Search(const std::string& text, int direction) {
        std::vector<int> all(m_Nodes.size());
        for (int i = 0; i < int(all.size()); ++i) {
            all[direction < 0 ? all.size() - 1 - i : i] = i;
        }
        SelectNext(all, direction != 0,
            [&](int node) { return m_Nodes[node].label.find(text) != std::string::npos; });
        for (int i = m_Selected < 0 ? kNone : m_Nodes[m_Selected].parent; i >= 0;
             i = m_Nodes[i].parent) {
            m_Nodes[i].isOpen = true;
        }
    }

    std::string Selected() const { return m_Selected < 0 ? "" : m_Nodes[m_Selected].label; }
    int SelectedRow() const {
        const auto rows = Rows();
        return int(std::find(rows.begin(), rows.end(), m_Selected) - rows.begin());
    }

    std::string m_Outline;

private:
    struct Node {
        int parent;
        std::string label;
        bool isOpen = false;
    };

    bool IsShown(int node) const {
        const int parent = m_Nodes[node].parent;
        return parent < 0 || (m_Nodes[parent].isOpen && IsShown(parent));
    }
    bool HasChildren(int node) const {
        return node + 1 < int(m_Nodes.size()) && m_Nodes[node + 1].parent == node;
    }

    void PressOnNode(Key key, Node& node) {
        const bool isFolder = HasChildren(m_Selected);
        if (key == Key::kRight && node.isOpen) {
            ++m_Selected;
        } else if (key == Key::kBackspace || (key == Key::kLeft && !node.isOpen)) {
            m_Selected = node.parent < 0 ? m_Selected : node.parent;
        } else if (key == Key::kAsterisk) {
            for (int i = 0; i < int(m_Nodes.size()); ++i) {
                m_Nodes[i].isOpen |= m_Nodes[i].parent == node.parent && HasChildren(i);
            }
        } else {
            const bool opens =
                key == Key::kPlus || key == Key::kRight || (key == Key::kEnter && !node.isOpen);
            node.isOpen = isFolder && opens;
        }
    }

    /// The first in an order that a test accepts, from the selected one on, or behind it.
    template <class Test>
    void SelectNext(const std::vector<int>& order, bool isBehind, const Test& test) {
        const auto at = std::find(order.begin(), order.end(), m_Selected);
        const size_t from = at == order.end() ? 0 : size_t(at - order.begin()) + isBehind;
        for (size_t i = 0; i < order.size(); ++i) {
            const int node = order[(from + i) % order.size()];
            if (test(node)) {
                m_Selected = node;
                return;
            }
        }
    }

    std::vector<Node> m_Nodes;
    int m_Selected = kNone;
};

using RandomKeysTest = TreeTest;

} // namespace

TEST_F(RandomKeysTest, KeysTypingAndSearchAgreeWithAFlatModel) {
    std::mt19937 random(20'261'123);
    const auto text = [&] {
        return std::string(1 + random() % 2, 'a').replace(0, 1, 1, char('a' + random() % 4));
    };
    for (int tree = 0; tree < 200; ++tree) {
        Model model(random);
        m_Tree.Reset(); // a control remembers what was selected in the tree before
        TreeTest::SetUp();
        Bind(model.m_Outline);
        std::ostringstream record;
        Session session(m_Tree.Get(), kSize, record);
        for (int step = 0; step < 100; ++step) {
            const std::string typed = text();
            const auto key = Key(random() % (uint32_t(Key::kAsterisk) + 1));
            m_Clock.Advance(2'000'000);
            switch (random() % 8) {
            case 0:
                session.Feed(TypedInput{typed});
                model.Type(typed);
                break;
            case 1:
                session.Feed(TypedInput{"/" + typed});
                model.Search(typed, 0);
                for (int i = int(random() % 3); i > 0; --i) {
                    const int direction = random() % 2 == 0 ? 1 : -1;
                    session.Feed(KeyInput{direction > 0 ? Key::kDown : Key::kUp});
                    model.Search(typed, direction);
                }
                session.Feed(KeyInput{Key::kEscape});
                break;
            default:
                session.Feed(KeyInput{key});
                model.Press(key);
            }
            ASSERT_EQ(Rows(), model.Labels()) << record.str();
            ASSERT_EQ(SelectedLabel(), model.Selected()) << record.str();
            ASSERT_EQ(session.Marked().m_Focused.value_or(kNone),
                model.Selected().empty() ? kNone : model.SelectedRow());
        }
    }
}
