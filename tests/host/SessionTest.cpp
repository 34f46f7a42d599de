#include "app/Session.h"
#include "app/Keyboard.h"
#include "tests/support/Clock.h"
#include "tests/support/LazyItems.h"
#include "tests/support/TreeTest.h"

#include <sstream>

// The host's own part in using a control: keys and double clicks.

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
    void Click(double x, double y, int32_t keys = 0) {
        for (const int32_t action : {POINTERACTION_PRESS, POINTERACTION_RELEASE}) {
            m_Session->Feed(PointerInput{POINTERSTATE_PRIMARY, action, keys, x, y});
        }
    }
    int32_t FirstRow() {
        int32_t position = -1;
        m_Tree->Inquire(kParameterScrollPos, &position);
        return position;
    }
    int32_t MarkCount() {
        int32_t marked = 0;
        for (const char* label : {"A", "a1", "aa", "a2", "B", "C", "c1"}) {
            marked += (Flags(label) & NODE_SELECTED) != 0 ? 1 : 0;
        }
        return marked;
    }

    std::ostringstream m_Record;
    std::optional<Session> m_Session;
};

} // namespace

TEST_F(SessionTest, UpAndDown_SelectOneRowAndStopAtTheEnds) {
    m_Tree->Control(kParameterScrollPos, 1);
    EXPECT_EQ(Press(Key::kDown), "B") << "the first row shown";
    EXPECT_EQ(Press(Key::kUp), "A");
    EXPECT_EQ(Press(Key::kUp), "A");
    EXPECT_EQ(Press(Key::kEnd), "C");
    EXPECT_EQ(Press(Key::kDown), "C");
    Click(150, 11, KEYS_CONTROL);
    Click(150, 33, KEYS_CONTROL);
    EXPECT_EQ(MarkCount(), 3);
    EXPECT_EQ(Press(Key::kUp), "A");
    EXPECT_EQ(MarkCount(), 1);
    EXPECT_EQ(m_Record.str().substr(0, m_Record.str().find("key up")),
        "key down -> 0\n  NodeSelect container=control state=1 index=1 action=none node=\"B\"\n"
        "  UIItemChanged\n");
}

TEST_F(SessionTest, RightAndLeft_WalkThroughTheLevels) {
    Press(Key::kHome);
    EXPECT_EQ(Press(Key::kRight), "A");
    EXPECT_EQ(Rows(), "A a1 a2 B C");
    EXPECT_EQ(Press(Key::kRight), "a1");
    Press(Key::kRight);
    EXPECT_EQ(Press(Key::kRight), "aa");
    EXPECT_EQ(Press(Key::kRight), "aa") << "a leaf";
    EXPECT_EQ(Press(Key::kLeft), "a1");
    EXPECT_EQ(Press(Key::kEnd), "C");
    Press(Key::kHome);
    EXPECT_EQ(Press(Key::kLeft), "A");
    EXPECT_EQ(Rows(), "A B C");
    EXPECT_EQ(Press(Key::kLeft), "A") << "nothing above";
    Press(Key::kRight);
    EXPECT_EQ(Rows(), "A a1 aa a2 B C") << "what was open below is again";
    Press(Key::kEnter);
    EXPECT_EQ(Rows(), "A B C");
    EXPECT_EQ(Press(Key::kDown), "B");
    EXPECT_EQ(Press(Key::kEnter), "B");
    EXPECT_EQ(Rows(), "A B C");
}

TEST_F(SessionTest, Keys_BringTheSelectedRowIntoView) {
    Bind("0\n1\n2\n3\n4\n5\n6\n7\n8\n9");
    EXPECT_EQ(Press(Key::kPageDown), "0");
    EXPECT_EQ(Press(Key::kPageDown), "4");
    EXPECT_EQ(FirstRow(), 1);
    EXPECT_EQ(Press(Key::kEnd), "9");
    EXPECT_EQ(FirstRow(), 6);
    EXPECT_EQ(Press(Key::kPageUp), "5");
    EXPECT_EQ(FirstRow(), 5);
    Press(Key::kPageUp);
    EXPECT_EQ(Press(Key::kPageUp), "0");
    EXPECT_EQ(FirstRow(), 0);
    m_Tree->Control(kParameterScrollPos, 9);
    EXPECT_EQ(Press(Key::kHome), "0") << "selected, but out of view";
    EXPECT_EQ(FirstRow(), 0);
    m_Tree->Control(4, 0); // no row height
    m_Session->Resize({1, 1});
    EXPECT_EQ(Press(Key::kPageDown), "1");
}

TEST_F(SessionTest, KeysOnOddTrees_DoNothingWrong) {
    Bind("");
    for (const Word& key : kKeyWords) {
        EXPECT_EQ(Press(static_cast<Key>(key.m_Value)), "") << key.m_Name;
    }
    const auto root = SuperCollection::Make();
    root->Append("lazy", LazyFolder::Make()->Identity());
    root->Append("empty", SuperCollection::Make()->Identity());
    root->Append("itself", root->Identity());
    BindCollection(SmartPtr<ISuperCollection>(root.Get()));
    Press(Key::kHome);
    Press(Key::kRight);
    EXPECT_EQ(Press(Key::kRight), "filled") << "a folder fills itself to be opened";
    for (int32_t i = 0; i < 50; ++i) {
        Press(Key::kDown);
        Press(Key::kRight);
    }
    EXPECT_EQ(Flags("empty") & NODE_EXPANDED, 0) << "stays closed";
    root->RemoveAll();
    EXPECT_EQ(Press(Key::kUp), "");
}

TEST_F(SessionTest, DoubleClick_TogglesAFolderThatTheClickLeftAlone) {
    Click(150, 11);
    EXPECT_EQ(Rows(), "A a1 a2 B C");
    Click(150, 11);
    EXPECT_EQ(Rows(), "A a1 a2 B C") << "opened by the first click already";
    EXPECT_EQ(SelectedLabel(), "A");
    AdvanceClock(10'000'000);
    Click(150, 33);
    EXPECT_EQ(Rows(), "A a1 a2 B C") << "a deeper row, beside its icon";
    Click(150, 33);
    EXPECT_EQ(Rows(), "A a1 aa a2 B C");
    EXPECT_EQ(SelectedLabel(), "a1");
    m_Session->Feed(PointerInput{POINTERSTATE_SECONDARY, POINTERACTION_PRESS, 0, 150, 33});
    EXPECT_EQ(Rows(), "A a1 aa a2 B C") << "reported alike, but no double click";
}

TEST_F(SessionTest, Drawing_IsAskedForWhenSomethingShows) {
    EXPECT_TRUE(m_Session->TakeChanged()) << "never drawn";
    m_Session->Feed(PointerInput{.m_X = 150, .m_Y = 11});
    m_Session->Feed(PointerInput{.m_State = POINTERSTATE_WHEEL, .m_Keys = 99});
    EXPECT_FALSE(m_Session->TakeChanged());
    m_Session->Feed(PointerInput{POINTERSTATE_SECONDARY, POINTERACTION_PRESS, 0, 150, 11});
    EXPECT_TRUE(m_Session->TakeChanged()) << "a selection without UIItemChanged";
    m_Session->Feed(TouchInput{TOUCHPHASE_START, 0});
    EXPECT_TRUE(m_Session->TakeChanged());
    EXPECT_FALSE(m_Session->TakeChanged());
}
