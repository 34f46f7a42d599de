#include "app/Finger.h"
#include "app/Wheel.h"

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

TEST(WheelTest, SmallDeltas_AddUpToWholeSteps) {
    Wheel wheel;
    int32_t distance = 0;
    for (uint32_t i = 1; i <= 30; ++i) {
        const Wheel::Turn turn = wheel.Add(0.1, 100 * i);
        distance += turn.m_Distance;
        EXPECT_EQ(turn.m_Distance, i % 10 == 0 ? 100 : 0) << i;
        EXPECT_FALSE(turn.m_IsFast);
    }
    EXPECT_EQ(distance, 300);
    EXPECT_EQ(wheel.Add(2.75, 5000).m_Distance, 200);
    EXPECT_EQ(wheel.Add(-0.5, 6000).m_Distance, 0) << "the rest of the other direction is dropped";
    EXPECT_EQ(wheel.Add(-0.5, 7000).m_Distance, -100);
    EXPECT_EQ(wheel.Add(std::nan(""), 8000).m_Distance, 0);
    EXPECT_EQ(wheel.Add(1e300, 8000).m_Distance, 0);
    EXPECT_EQ(wheel.Add(1, 9000).m_Distance, 100) << "undisturbed";
}

TEST(WheelTest, ManyStepsInAMoment_AreFast) {
    Wheel wheel;
    for (uint32_t i = 0; i < 7; ++i) {
        EXPECT_FALSE(wheel.Add(1, 15 * i).m_IsFast) << i;
    }
    EXPECT_TRUE(wheel.Add(1, 15 * 7).m_IsFast);
    EXPECT_FALSE(wheel.Add(1, 400).m_IsFast) << "slow again";
    EXPECT_TRUE(wheel.Add(-20, 500).m_IsFast);
}

TEST(FingerTest, Tap_IsAClickWhereItBegan) {
    Finger finger;
    finger.GoDown(7, 30, 40);
    EXPECT_EQ(Texts(finger.Move(7, 33, 45)), "");
    EXPECT_EQ(Texts(finger.GoUp(7)), "press 30 40; release 30 40");
    EXPECT_EQ(Texts(finger.GoUp(7)), "");
}

TEST(FingerTest, Pan_StartsAtZeroAndCountsFromWhereTheFingerWentDown) {
    Finger finger;
    finger.GoDown(7, 30, 40);
    finger.GoDown(8, 100, 100);
    EXPECT_EQ(Texts(finger.Move(8, 100, 300)), "") << "the second finger";
    EXPECT_EQ(Texts(finger.Move(7, 30, 60)), "touch start 0; touch update 20");
    EXPECT_EQ(Texts(finger.Move(7, 30, 10)), "touch update -30");
    EXPECT_EQ(Texts(finger.Move(7, 30, 40)), "touch update 0") << "back where it began";
    EXPECT_EQ(Texts(finger.GoUp(8)), "");
    EXPECT_EQ(Texts(finger.GoUp(7)), "") << "no click";
    finger.GoDown(8, 1, 2);
    EXPECT_EQ(Texts(finger.GoUp(8)), "press 1 2; release 1 2");
}
