#include "host/drawing/ScrollBar.h"
#include "tests/support/HostTest.h"

#include <array>
#include <cmath>

namespace {

/// A bar of 101 rows in a strip that shows 10 of them, at x 180 to 199 and y 40 to 260. The thumb
/// is 32 pixels high, so 188 pixels of travel stand for 100 positions.
class ScrollBarTest : public HostTest {
protected:
    void SetUp() override { m_Bar->SetRange(0, 100); }

    /// What the bar says, and its position then.
    std::string Send(int32_t action, double x, double y) {
        const int32_t status =
            m_Bar->Pointer(POINTERSTATE_PRIMARY, action, 0, x, y, &m_Strip, nullptr);
        const char* const answer = status == S_OK      ? "changed "
                                   : status == S_FALSE ? "handled "
                                                       : "not handled ";
        return answer + std::to_string(Pos());
    }
    std::string Press(double x, double y) { return Send(POINTERACTION_PRESS, x, y); }
    std::string Move(double x, double y) { return Send(POINTERACTION_MOVE, x, y); }
    std::string Release(double x, double y) { return Send(POINTERACTION_RELEASE, x, y); }
    int32_t Pos() {
        int32_t pos = -1;
        m_Bar->GetPos(&pos);
        return pos;
    }
    SmartPtr<ScrollBar> m_Bar = ScrollBar::Make();
    CANVASRect m_Strip{180, 40, 20, 220};
};

} // namespace

TEST_F(ScrollBarTest, BarIsShownWhenTheRowsDoNotFitAndItsPositionStaysInTheRange) {
    const auto layOut = [&](CANVASRect area) {
        CANVASRect bar{}, client{};
        const int32_t status = m_Bar->Layout(&area, &bar, &client);
        return std::array{status, bar.left, bar.width, bar.height, client.width, client.height};
    };
    m_Bar->Configure(SCROLLBAR_WIDTH, 22);
    m_Bar->SetPos(500);
    m_Bar->SetRange(0, 9);
    EXPECT_EQ(Pos(), 9);
    EXPECT_EQ(layOut({5, 6, 100, 220}), (std::array{1, 0, 0, 0, 100, 220}));
    EXPECT_EQ(layOut({5, 6, 100, 219}), (std::array{0, 83, 22, 219, 78, 219}));
    EXPECT_EQ(layOut({0, 0, 10, 40}), (std::array{0, 0, 10, 40, 0, 40})) << "narrower than it";
}

TEST_F(ScrollBarTest, ThumbFollowsThePointerAndTheTrackPagesByTheRowsShown) {
    EXPECT_EQ(Press(190, 55), "handled 0");
    EXPECT_EQ(Move(190, 55), "handled 0") << "it does not jump";
    EXPECT_EQ(Move(190, 155), "changed 53");
    EXPECT_EQ(Move(20, 55), "changed 0") << "beside the strip";
    EXPECT_EQ(Move(190, 5000), "changed 100");
    EXPECT_EQ(Release(20, 155), "handled 100") << "the drag's own";
    EXPECT_EQ(Move(20, 55), "not handled 100") << "the drag is over";
    m_Bar->SetPos(0);
    EXPECT_EQ(Press(190, 250), "changed 10");
    EXPECT_EQ(Move(190, 100), "handled 10") << "nothing was grabbed";
    EXPECT_EQ(Release(20, 250), "handled 10") << "no click on a row";
    m_Bar->SetPos(95);
    EXPECT_EQ(Press(190, 260), "changed 100") << "the bottom edge belongs to the strip";
    EXPECT_EQ(Press(190, 41), "changed 90");
    m_Strip.height = 15; // less than a row
    EXPECT_EQ(Press(190, 40), "changed 89");
}

TEST_F(ScrollBarTest, AnyCoordinateAndRangeStaysInTheRange) {
    const std::pair<int32_t, int32_t> ranges[] = {{0, 0}, {0, INT32_MAX}, {INT32_MIN, INT32_MAX}};
    for (const auto& [min, max] : ranges) {
        m_Bar->SetRange(min, max);
        for (const double y : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300, 100.0}) {
            m_Bar->SetPos(min);
            Press(190, 41);
            Move(190, y);
            EXPECT_TRUE(Pos() >= min && Pos() <= max) << y;
        }
    }
}
