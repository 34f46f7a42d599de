#include "app/commands/TerminalBar.h"
#include "app/replay/Clock.h"

#include <gtest/gtest.h>
#include <optional>
#include <sstream>

TEST(TerminalBarTest, BarIsShownAfterASecondAndErasedInTheEnd) {
    constexpr const char* kErased = "\r\033[K";
    StandingClock clock;
    for (const bool isTerminal : {true, false}) {
        std::ostringstream terminal;
        const auto written = [&] {
            std::string text = terminal.str();
            terminal.str("");
            return text;
        };
        const auto expect = [&](const std::string& text) {
            EXPECT_EQ(written(), isTerminal ? kErased + text : "");
        };
        std::optional<TerminalBar> bar(std::in_place, "folder/big.json", terminal, isTerminal);
        clock.Advance(999'000);
        EXPECT_TRUE(bar->Advance({1, 4}));
        EXPECT_EQ(written(), "") << "what takes no longer shows nothing";
        clock.Advance(2'000);
        EXPECT_TRUE(bar->Advance({1, 4}));
        expect("[#####               ] 25 %  big.json");
        bar->Advance({1, 4});
        EXPECT_EQ(written(), "");
        bar->Advance({2'500'000, 0});
        expect("2 MB  big.json");
        bar->Advance({2'500, 0, true});
        expect("2000 entries  big.json");
        bar.reset();
        expect("");
    }
}
