#include "app/input/Finger.h"
#include "app/input/Wheel.h"

#include <gtest/gtest.h>

#include <cmath>

// What becomes of the system's wheel and touch events on their way to the control.

namespace {

std::string Texts(const std::vector<Input>& inputs) {
    std::string texts;
    for (const Input& input : inputs) {
        texts += (texts.empty() ? "" : "; ") + ToText(input);
    }
    return texts;
}

} // namespace

TEST(WheelTest, SmallDeltasAddUpToWholeSteps) {
    Wheel wheel;
    for (uint32_t i = 1; i <= 30; ++i) {
        EXPECT_EQ(wheel.Add(0.1, 100 * i).m_Distance, i % 10 == 0 ? 100 : 0) << i;
    }
    uint32_t time = 5000;
    for (const auto& [delta, distance] : {std::pair(2.75, 200), {-0.5, 0}, {-0.5, -100},
             {std::nan(""), 0}, {1e300, 0}, {1.0, 100}}) { // turning back drops what is left
        EXPECT_EQ(wheel.Add(delta, time += 1000).m_Distance, distance) << delta;
    }
}

TEST(FingerTest, TapIsAClickAndAPanCountsFromWhereTheFingerWentDown) {
    Finger finger;
    finger.GoDown(7, 30, 40, 0);
    EXPECT_EQ(Texts(finger.Move(7, 33, 45, 10)), "");
    EXPECT_EQ(Texts(finger.GoUp(7, 20)), "press 30 40; release 30 40");
    finger.GoDown(7, 30, 40, 1000);
    finger.GoDown(8, 100, 100, 1000);
    EXPECT_EQ(Texts(finger.Move(8, 100, 300, 1010)), "") << "the second finger";
    EXPECT_EQ(Texts(finger.Move(7, 30, 60, 1020)), "touch start 0; touch update 20");
    EXPECT_EQ(Texts(finger.Move(7, 30, 40, 2000)), "touch update 0") << "back where it began";
    EXPECT_EQ(Texts(finger.GoUp(7, 2000)), "") << "no click";
    EXPECT_EQ(finger.UntilNext(2000), std::nullopt) << "too slow to go on";
}

TEST(FingerTest, FingerThatStaysIsASecondaryClickAndNothingMore) {
    Finger finger;
    finger.GoDown(7, 30, 40, 1000);
    EXPECT_EQ(finger.UntilNext(1100), 500);
    EXPECT_EQ(Texts(finger.TakeDue(1599)), "");
    EXPECT_EQ(Texts(finger.TakeDue(1600)), "press 30 40 secondary; release 30 40 secondary");
    EXPECT_EQ(Texts(finger.TakeDue(2600)) + Texts(finger.Move(7, 30, 90, 2600)), "");
    EXPECT_EQ(finger.UntilNext(2600), std::nullopt);
    EXPECT_EQ(Texts(finger.GoUp(7, 2700)), "");
    finger.GoDown(7, 30, 40, 3000);
    finger.Move(7, 30, 60, 3100);
    EXPECT_EQ(Texts(finger.TakeDue(4000)), "") << "it pans";
}

class FlingTest : public testing::Test {
protected:
    /// Pans by 10 pixels in each of so many milliseconds and lets go: how long the pan was.
    double Pan(int64_t every) {
        m_Finger.GoDown(7, 30, 400, m_Now);
        for (int i = 1; i <= 10; ++i) {
            m_Finger.Move(7, 30, 400 + 10 * i, m_Now += every);
        }
        m_Finger.GoUp(7, m_Now);
        return 100;
    }
    /// The length of the pan in a moment.
    double PanIn(int64_t milliseconds) {
        const auto inputs = m_Finger.TakeDue(m_Now + milliseconds);
        return inputs.size() == 1 ? std::get<TouchInput>(inputs.front()).m_PanY : NAN;
    }

    Finger m_Finger;
    int64_t m_Now = 5000;
};

TEST_F(FlingTest, QuickPanGoesOnEverSlowerAndComesToRest) {
    const double left = Pan(10);
    EXPECT_NEAR(PanIn(20) - left, 20, 2) << "as quick as the finger, at first";
    double last = left;
    double lastStep = 1000;
    int64_t time = 16;
    for (; !std::isnan(PanIn(time)); time += 16) {
        const double step = PanIn(time) - last;
        EXPECT_TRUE(step > 0 && step < lastStep);
        last += step;
        lastStep = step;
        EXPECT_EQ(m_Finger.UntilNext(m_Now + time), 16);
    }
    EXPECT_TRUE(last > 2 * left && last < 10 * left) << last;
    EXPECT_EQ(m_Finger.UntilNext(m_Now + time), std::nullopt);
    Pan(100);
    EXPECT_TRUE(std::isnan(PanIn(16))) << "a slow one stays where it is";
    m_Finger.GoDown(7, 30, 400, m_Now);
    m_Finger.Move(7, 30, 300, m_Now + 10);
    m_Finger.GoUp(7, m_Now += 500);
    EXPECT_TRUE(std::isnan(PanIn(16))) << "and so does one that paused";
}

TEST_F(FlingTest, TapStopsItAndIsNoClickAndSoDoesAnythingElse) {
    Pan(10);
    m_Finger.GoDown(7, 30, 40, m_Now + 100);
    EXPECT_TRUE(std::isnan(PanIn(800))) << "nor is it a long press";
    EXPECT_EQ(Texts(m_Finger.GoUp(7, m_Now + 800)), "");
    EXPECT_TRUE(std::isnan(PanIn(801)));
    m_Now += 1000;
    Pan(10);
    m_Finger.GoDown(7, 30, 40, m_Now + 10);
    EXPECT_EQ(Texts(m_Finger.Move(7, 30, 60, m_Now + 20)), "touch start 0; touch update 20");
    m_Finger.GoUp(7, m_Now + 2000);
    m_Now += 3000;
    Pan(10);
    m_Finger.StopFling();
    EXPECT_TRUE(std::isnan(PanIn(16)));
}
