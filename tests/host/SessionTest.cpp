#include "app/Session.h"
#include "app/Keyboard.h"
#include "tests/support/TreeTest.h"

#include <sstream>

// The host's own part in using a control: the keys.

namespace {

constexpr int32_t kParameterScrollPos = 115;

class SessionTest : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        Bind("A\n a1\n  aa\n a2\nB\nC\n c1");
        m_Session.emplace(m_Tree.Get(), Size{200, 4 * 22}, m_Record);
        DrawPicture(m_Tree.Get(), m_Session->GetSize()); // the control learns the indentation
    }
    void TearDown() override {
        m_Session.reset();
        TreeTest::TearDown();
    }

    /// Presses a key and answers what is selected then.
    std::string Press(Key key) {
        m_Session->Feed(KeyInput{key});
        return SelectedLabel();
    }
    std::ostringstream m_Record;
    std::optional<Session> m_Session;
};

} // namespace

TEST_F(SessionTest, KeysWalkThroughTheTreeAndOpenIt) {
    const std::tuple<Key, const char*, const char*> steps[] = {
        {Key::kDown, "B", "A B C"}, // the first row shown
        {Key::kUp, "A", "A B C"}, {Key::kUp, "A", "A B C"}, {Key::kEnd, "C", "A B C"},
        {Key::kHome, "A", "A B C"}, {Key::kRight, "A", "A a1 a2 B C"},
        {Key::kRight, "a1", "A a1 a2 B C"}, {Key::kRight, "a1", "A a1 aa a2 B C"},
        {Key::kRight, "aa", "A a1 aa a2 B C"}, {Key::kRight, "aa", "A a1 aa a2 B C"},
        {Key::kLeft, "a1", "A a1 aa a2 B C"}, {Key::kHome, "A", "A a1 aa a2 B C"},
        {Key::kLeft, "A", "A B C"}, {Key::kLeft, "A", "A B C"},
        {Key::kRight, "A", "A a1 aa a2 B C"}, // what was open below is again
        {Key::kEnter, "A", "A B C"}, {Key::kDown, "B", "A B C"}, {Key::kEnter, "B", "A B C"}};
    m_Tree->Control(kParameterScrollPos, 1);
    for (const auto& [key, selected, rows] : steps) {
        EXPECT_EQ(Press(key), selected) << rows;
        EXPECT_EQ(Rows(), rows) << selected;
    }
    SetFlags("A", Flags("A") | NODE_SELECTED);
    Press(Key::kEnd);
    EXPECT_EQ(Flags("A") & NODE_SELECTED, 0) << "a key selects one row";
}

TEST_F(SessionTest, KeysBringTheSelectedRowIntoView) {
    Bind("0\n1\n2\n3\n4\n5\n6\n7\n8\n9");
    const std::tuple<Key, const char*, int> steps[] = {{Key::kPageDown, "0", 0},
        {Key::kPageDown, "4", 1}, {Key::kEnd, "9", 6}, {Key::kPageUp, "5", 5},
        {Key::kPageUp, "1", 1}, {Key::kPageUp, "0", 0}};
    for (const auto& [key, selected, firstRow] : steps) {
        EXPECT_EQ(Press(key), selected);
        EXPECT_EQ(Value(kParameterScrollPos), firstRow) << selected;
    }
    m_Tree->Control(kParameterScrollPos, 9);
    EXPECT_EQ(Press(Key::kHome), "0") << "selected, but out of view";
    EXPECT_EQ(Value(kParameterScrollPos), 0);
    m_Tree->Control(4, 0); // no row height
    m_Session->Resize({1, 1});
    EXPECT_EQ(Press(Key::kPageDown), "1");
}
