#include "app/Panel.h"
#include "app/Picture.h"
#include "tests/support/TreeTest.h"

// The panel of the window, without one.

namespace {

class PanelTest : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        Bind("A\n a1\nB");
        m_Panel.emplace(m_Tree.Get(), [this](const std::string& text, int32_t status) {
            m_Record += text + (status < 0 ? " failed;" : ";");
        });
        m_Panel->Resize(30 * Panel::kLineHeight);
    }
    void TearDown() override {
        m_Panel.reset();
        TreeTest::TearDown();
    }

    /// The chosen line as the user sees it: "|" behind what is typed, "!" behind what is rejected.
    std::string Chosen() const {
        for (const Panel::Line& line : m_Panel->Lines()) {
            if (line.m_IsChosen) {
                return line.m_Name + ' ' + line.m_Value + (line.m_IsEdited ? "|" : "") +
                       (line.m_IsRejected ? "!" : "");
            }
        }
        return "none";
    }
    std::string m_Record;
    std::optional<Panel> m_Panel;
};

} // namespace

TEST_F(PanelTest, TypingEditsTheChosenLineAndEnterApplies) {
    using enum PanelKey;
    const std::pair<std::variant<PanelKey, const char*, double>, const char*> steps[] = {
        {kUp, "ElementHeight 22"}, {kEnter, "ElementHeight 22"}, {"4", "ElementHeight 4|"},
        {"0x\n", "ElementHeight 40x|"}, {kEnter, "ElementHeight 40x|!"},
        {kBackspace, "ElementHeight 40|"}, {kEnter, "ElementHeight 40"}, {"5", "ElementHeight 5|"},
        {kDown, "TextColor #4B4B4B"}, {kBackspace, "TextColor #4B4B4|"},
        {kEnter, "TextColor #4B4B4|!"}, {"4", "TextColor #4B4B44|"}, {kUp, "ElementHeight 40"},
        {kEnd, "ResetIcons action"}, {"x", "ResetIcons action"}, {kEnter, "ResetIcons action"},
        {kUp, "ClosedIcon set"}, {kBackspace, "ClosedIcon set"}, {kEnter, "ClosedIcon set"},
        {5.5 * 22, "UseDefaultStyle 1"}, {"2", "UseDefaultStyle 2|"},
        {kEnter, "UseDefaultStyle 2|!"}, {5.0 * 22, "UseDefaultStyle 2|!"},
        {0.5 * 22, "UseDefaultStyle 2|!"}, {-1e300, "UseDefaultStyle 2|!"},
        {1e300, "UseDefaultStyle 2|!"}, {kHome, "ElementHeight 40"}};
    m_Tree->Control(4, 22);
    for (const auto& [input, chosen] : steps) {
        if (const auto* text = std::get_if<const char*>(&input)) {
            m_Panel->Type(*text);
        } else if (const auto* y = std::get_if<double>(&input)) {
            m_Panel->Click(*y);
        } else {
            m_Panel->Press(std::get<PanelKey>(input));
        }
        ASSERT_EQ(Chosen(), chosen) << &input - &steps->first;
    }
    EXPECT_EQ(m_Record, "set 4 40;set 172 0;");
    EXPECT_EQ(Value(4), 40);
    m_Panel->Press(kCancel);
    EXPECT_TRUE(m_Panel->IsClosed() && Value(4) == 22) << "all is put back";
    m_Panel.emplace(m_Tree.Get());
    m_Panel->Type("30");
    m_Panel->Press(kEnter);
    m_Panel->Press(kKeep);
    EXPECT_TRUE(m_Panel->IsClosed() && Value(4) == 30);
}

TEST_F(PanelTest, ChosenLineStaysInViewInAnyWindow) {
    m_Panel->Press(PanelKey::kEnd);
    for (const Size size : {Size{1, 1}, Size{2, 5}, Size{40, 3 * Panel::kLineHeight}}) {
        EXPECT_TRUE(DrawPicture(m_Tree.Get(), size, &*m_Panel));
        EXPECT_EQ(Chosen(), "ResetIcons action");
    }
    m_Panel->Press(PanelKey::kHome);
    EXPECT_EQ(Chosen(), "ElementHeight 22");
}
