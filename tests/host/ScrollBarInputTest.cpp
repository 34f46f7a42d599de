#include "host/ScrollBar.h"
#include "tests/host/HostTest.h"

#include <cmath>
#include <limits>

namespace {

constexpr int32_t kUnhandled = E_FAIL;
constexpr int32_t kChanged = S_OK;
constexpr int32_t kHandled = S_FALSE;

/// A bar of 101 rows in a strip that shows 10 of them, at x 180 to 199 and y 40 to 260. The thumb
/// is 21 pixels high, so 199 pixels of travel stand for 100 positions.
class ScrollBarInputTest : public HostTest {
protected:
    void SetUp() override { m_Bar->SetRange(0, 100); }
    void TearDown() override {
        m_Bar.Reset();
        HostTest::TearDown();
    }

    int32_t Press(double x, double y) { return Send(1, POINTERACTION_PRESS, x, y); }
    int32_t Move(double x, double y, int32_t state = 1) {
        return Send(state, POINTERACTION_MOVE, x, y);
    }
    int32_t Release(double x, double y) { return Send(1, POINTERACTION_RELEASE, x, y); }
    int32_t Send(int32_t state, int32_t action, double x, double y) {
        return m_Bar->Pointer(state, action, 0, x, y, &m_Strip, nullptr);
    }
    int32_t Pos() {
        int32_t pos = -1;
        m_Bar->GetPos(&pos);
        return pos;
    }

    SmartPtr<ScrollBar> m_Bar = ScrollBar::Make();
    CANVASRect m_Strip{180, 40, 20, 220};
};

} // namespace

TEST_F(ScrollBarInputTest, Thumb_FollowsThePointerFromWhereItWasGrabbed) {
    EXPECT_EQ(Press(190, 55), kHandled);
    EXPECT_EQ(Move(190, 55), kHandled) << "it does not jump";
    EXPECT_EQ(Move(190, 155), kChanged);
    EXPECT_EQ(Pos(), 50);
    EXPECT_EQ(Move(20, 55), kChanged) << "beside the strip";
    EXPECT_EQ(Pos(), 0);
    EXPECT_EQ(Move(190, 5000), kChanged);
    EXPECT_EQ(Pos(), 100) << "limited to the range";
    EXPECT_EQ(Release(20, 155), kHandled) << "the drag's own";
    EXPECT_EQ(Move(20, 55), kUnhandled) << "the drag is over";
    EXPECT_EQ(Pos(), 100);
}

TEST_F(ScrollBarInputTest, Track_PagesByTheRowsShown) {
    EXPECT_EQ(Press(190, 250), kChanged);
    EXPECT_EQ(Move(190, 100), kHandled) << "nothing was grabbed";
    EXPECT_EQ(Release(20, 250), kHandled) << "no click on a row";
    EXPECT_EQ(Pos(), 10);
    m_Bar->SetPos(95);
    Press(190, 260);
    EXPECT_EQ(Pos(), 100) << "the bottom edge belongs to the strip";
    EXPECT_EQ(Press(190, 41), kChanged);
    EXPECT_EQ(Pos(), 90);
    m_Bar->SetPos(100);
    m_Strip.height = 15; // less than a row
    EXPECT_EQ(Press(190, 40), kChanged);
    EXPECT_EQ(Pos(), 99);
}

TEST_F(ScrollBarInputTest, WhatIsNotTheBars_IsNotHandled) {
    EXPECT_EQ(Press(179.9, 100), kUnhandled);
    EXPECT_EQ(Press(200, 100), kUnhandled);
    EXPECT_EQ(Press(190, 260.5), kUnhandled);
    EXPECT_EQ(Release(20, 100), kUnhandled);
    EXPECT_EQ(Move(190, 100), kHandled) << "a drag of a row over the bar";
    EXPECT_EQ(Move(190, 100, 0), kUnhandled);
    EXPECT_EQ(Send(POINTERSTATE_SECONDARY, POINTERACTION_PRESS, 190, 250), kUnhandled);
    EXPECT_EQ(Send(POINTERSTATE_WHEEL | 1, POINTERACTION_PRESS, 190, 250), kUnhandled);
    EXPECT_EQ(Send(1, 77, 190, 250), kUnhandled);
    m_Strip = {};
    EXPECT_EQ(Press(0, 0), kUnhandled) << "hidden";
    EXPECT_EQ(m_Bar->Pointer(1, POINTERACTION_PRESS, 0, 0, 0, nullptr, nullptr), kUnhandled);
    EXPECT_EQ(Pos(), 0);
}

TEST_F(ScrollBarInputTest, DragWhoseReleaseIsLost_EndsWithTheNextMove) {
    Press(190, 55);
    EXPECT_EQ(Move(190, 155, 0), kUnhandled);
    EXPECT_EQ(Move(190, 155), kHandled);
    EXPECT_EQ(Pos(), 0);
    Press(190, 55);
    const CANVASRect strip = std::exchange(m_Strip, CANVASRect{}); // the rows fit for a while
    EXPECT_EQ(Move(190, 155), kUnhandled);
    m_Strip = strip;
    EXPECT_EQ(Move(190, 155), kHandled);
    EXPECT_EQ(Pos(), 0);
}

TEST_F(ScrollBarInputTest, AnyCoordinateAndRange_StaysInTheRange) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::pair<int32_t, int32_t> ranges[] = {
        {0, 0}, {5, 5}, {0, INT32_MAX}, {INT32_MIN, INT32_MAX}};
    for (const auto& [min, max] : ranges) {
        m_Bar->SetRange(min, max);
        m_Bar->SetPos(min);
        Press(190, 41);
        for (const double y : {std::nan(""), kInfinity, -kInfinity, 1e300, -1e300, 100.0}) {
            Move(190, y);
            EXPECT_GE(Pos(), min) << y;
            EXPECT_LE(Pos(), max) << y;
            EXPECT_EQ(Press(y * 1e300, y * 1e300), kUnhandled) << y;
            Press(190, 41);
        }
    }
}
