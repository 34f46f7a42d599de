#include "app/settings/Panel.h"
#include "app/view/Picture.h"
#include "tests/support/TreeTest.h"

// The panel of the window, without one.

namespace {

using PanelTest = TreeTest;

/// The chosen line as the user sees it: "|" behind what is typed, "!" behind what is rejected.
std::string Chosen(const Panel& panel) {
    for (const Panel::Line& line : panel.Lines()) {
        if (line.m_IsChosen) {
            return line.m_Name + ' ' + line.m_Value + (line.m_IsEdited ? "|" : "") +
                   (line.m_IsRejected ? "!" : "");
        }
    }
    return "none";
}

} // namespace

TEST_F(PanelTest, TypingEditsTheChosenLineAndEnterApplies) {
    std::string record;
    m_Tree->Control(4, 22);
    Panel panel(m_Tree.Get(), [&](const std::string& text, int32_t status) {
        record += text + (status < 0 ? " failed;" : ";");
    });
    panel.Resize(30 * Panel::kLineHeight);
    const auto press = [&](PanelKey key) { return panel.Press(key), Chosen(panel); };
    const auto type = [&](const char* text) { return panel.Type(text), Chosen(panel); };
    const auto click = [&](double line) {
        return panel.Click(line * Panel::kLineHeight), Chosen(panel);
    };
    using enum PanelKey;
    EXPECT_EQ(press(kUp), "ElementHeight 22");
    EXPECT_EQ(type("4"), "ElementHeight 4|");
    EXPECT_EQ(type("0x\n"), "ElementHeight 40x|");
    EXPECT_EQ(press(kEnter), "ElementHeight 40x|!");
    EXPECT_EQ(panel.Hint(), "takes a whole number from 8 to 512");
    EXPECT_EQ(press(kBackspace), "ElementHeight 40|");
    EXPECT_EQ(press(kEnter), "ElementHeight 40");
    EXPECT_EQ(press(kDown), "TextColor #4B4B4B");
    EXPECT_EQ(press(kBackspace), "TextColor #4B4B4|");
    EXPECT_EQ(press(kUp), "ElementHeight 40");
    EXPECT_EQ(press(kDown), "TextColor #4B4B4B") << "what was not applied is dropped";
    EXPECT_EQ(press(kEnd), "ResetIcons action");
    EXPECT_EQ(type("x"), "ResetIcons action");
    EXPECT_EQ(press(kEnter), "ResetIcons action");
    EXPECT_EQ(press(kUp), "ClosedIcon set");
    EXPECT_EQ(click(5.5), "UseDefaultStyle 1");
    EXPECT_EQ(click(0.5), "UseDefaultStyle 1") << "above the lines";
    EXPECT_EQ(click(1e300), "UseDefaultStyle 1");
    EXPECT_EQ(record, "set 4 40;set 172 0;");
    EXPECT_EQ(Value(4), 40);
    panel.Press(kCancel);
    EXPECT_TRUE(panel.IsClosed() && Value(4) == 22) << "all is put back";
}

TEST_F(PanelTest, ChosenLineStaysInViewInAnyWindow) {
    Panel panel(m_Tree.Get());
    panel.Press(PanelKey::kEnd);
    for (const Size size : {Size{1, 1}, Size{2, 5}, Size{40, 3 * Panel::kLineHeight}}) {
        EXPECT_TRUE(DrawPicture({m_Tree.Get(), size, &panel}));
        EXPECT_EQ(Chosen(panel), "ResetIcons action");
    }
    panel.Press(PanelKey::kHome);
    EXPECT_EQ(Chosen(panel), "ElementHeight 15");
}
