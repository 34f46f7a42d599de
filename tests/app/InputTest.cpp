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
    finger.GoDown(7, 30, 40);
    EXPECT_EQ(Texts(finger.Move(7, 33, 45)), "");
    EXPECT_EQ(Texts(finger.GoUp(7)), "press 30 40; release 30 40");
    finger.GoDown(7, 30, 40);
    finger.GoDown(8, 100, 100);
    EXPECT_EQ(Texts(finger.Move(8, 100, 300)), "") << "the second finger";
    EXPECT_EQ(Texts(finger.Move(7, 30, 60)), "touch start 0; touch update 20");
    EXPECT_EQ(Texts(finger.Move(7, 30, 40)), "touch update 0") << "back where it began";
    EXPECT_EQ(Texts(finger.GoUp(7)), "") << "no click";
}
