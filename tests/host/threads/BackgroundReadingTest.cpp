#include "host/data/Expansion.h"
#include "host/sources/Source.h"
#include "tests/support/HostTest.h"

#include <fcntl.h>
#include <future>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

// A source that is read on a thread of its own, and may be stopped.

namespace {

constexpr std::chrono::minutes kAtMost(1); // only a test that fails waits so long

/// A pipe by its name, which a reading waits for.
class BackgroundReadingTest : public HostTest {
protected:
    BackgroundReadingTest() { mkfifo(m_Pipe.c_str(), 0600); }

    static bool HasNews(const BackgroundReading& reading, int milliseconds = 0) {
        pollfd waiting{reading.News(), POLLIN, 0};
        return poll(&waiting, 1, milliseconds) == 1;
    }
    static SourceMaker Nothing() {
        return SourceMaker([](const FolderHelpers&) {
            return SmartPtr<ISuperCollection>(SuperCollection::Make().Get());
        });
    }
    std::function<SourceMaker(ReadProgress&)> ReadPipe() const {
        return [path = m_Pipe](ReadProgress& progress) {
            return ReadSource(path, SourceKind::kByContent, &progress);
        };
    }

    TemporaryFolder m_Folder;
    std::string m_Pipe = m_Folder / "pipe";
};

/// Stops once, where this share of all that is to be done is.
class StopsBehind final : public ReadProgress {
public:
    explicit StopsBehind(double share) : m_Share(share) {}
    bool Advance(const ReadState& state) override {
        const bool isBehind = double(state.m_Done) >= m_Share * double(state.m_Whole);
        return !isBehind || std::exchange(m_IsStopped, true);
    }

private:
    double m_Share;
    bool m_IsStopped = false;
};

} // namespace

TEST_F(BackgroundReadingTest, ItTellsHowFarItIsAndThatItIsOver) {
    std::promise<void> isAdvanced;
    std::promise<void> mayEnd;
    BackgroundReading reading([&](ReadProgress& progress) {
        progress.Advance({9, 36});
        isAdvanced.set_value();
        mayEnd.get_future().wait();
        return Nothing();
    });
    isAdvanced.get_future().wait();
    EXPECT_TRUE(HasNews(reading));
    EXPECT_EQ(reading.TakeNews(), "25 %");
    EXPECT_FALSE(HasNews(reading));
    mayEnd.set_value();
    EXPECT_TRUE(reading.WaitFor(kAtMost));
    EXPECT_TRUE(HasNews(reading));
    EXPECT_EQ(reading.TakeNews(), "");
    EXPECT_FALSE(reading.WasStopped());
    EXPECT_TRUE(reading.Take()({}));
}

TEST_F(BackgroundReadingTest, StopEndsOneHalfOfAReadingAndNotTheOther) {
    BackgroundReading reading([&](ReadProgress& progress) {
        for (size_t done = 0; progress.Advance({done, 0}); ++done) {
        }
        EXPECT_TRUE(progress.Advance({1, 2}));
        return Nothing();
    });
    reading.Stop();
    EXPECT_TRUE(reading.WaitFor(kAtMost));
    EXPECT_TRUE(reading.WasStopped());
}

TEST_F(BackgroundReadingTest, PipeThatIsStoppedIsShownUpToThere) {
    std::string text = "[";
    while (text.size() < 1'500'000) {
        text += "[1],";
    }
    BackgroundReading reading(ReadPipe());
    const int pipe = open(m_Pipe.c_str(), O_WRONLY);
    for (std::string_view rest = text; !rest.empty();) {
        rest.remove_prefix(size_t(std::max<ssize_t>(write(pipe, rest.data(), rest.size()), 0)));
    }
    while (reading.TakeNews() != "1 MB") {
        ASSERT_TRUE(HasNews(reading, 60'000));
    }
    reading.Stop();
    ASSERT_TRUE(reading.WaitFor(kAtMost));
    close(pipe);
    const auto failures = std::make_shared<ReadFailures>();
    const auto tree = reading.Take()({failures});
    int32_t count = 0;
    tree->GetCount(&count);
    EXPECT_GT(count, 250'000);
    EXPECT_TRUE(failures->Lines().empty()) << "that it breaks off is no fault";
}

TEST_F(BackgroundReadingTest, WhatIsStoppedWhileItIsGoneThroughIsShownUpToThere) {
    // What stands in front, a row that is repeated, whether it is below another.
    const std::tuple<const char*, const char*, bool> texts[] = {
        {"", "a\n", false}, {"[", "[1],", false}, {"<r>", "<a b=''/>", true}};
    for (const auto& [begin, row, isBelow] : texts) {
        std::ofstream(m_Folder / "text") << begin << Repeated(row, 500'000);
        StopsBehind progress(0.75);
        const auto failures = std::make_shared<ReadFailures>();
        const auto tree =
            OpenSource(m_Folder / "text", SourceKind::kByContent, {failures}, &progress);
        OpenLevels(tree.Get(), 1);
        const auto shown = isBelow ? CollectionBelow(tree.Get(), 0) : tree;
        int32_t count = 0;
        shown->GetCount(&count);
        EXPECT_GT(count, 200'000) << row;
        EXPECT_LT(count, 400'000) << row;
        EXPECT_TRUE(failures->Lines().empty()) << row;
    }
}

TEST_F(BackgroundReadingTest, ReadingTouchesNothingThatTheWindowUsesMeanwhile) {
    const auto shown = SuperCollection::Make();
    shown->Append("row", shown->Identity());
    const std::pair<const char*, const char*> texts[] = {
        {"", "A\n  b\n    c\n"}, {"[", "[{\"a\": 1}],"}, {"<r>", "<a b=''>c</a>"}};
    for (const auto& [begin, row] : texts) {
        std::ofstream(m_Folder / "text") << begin << Repeated(row, 20'000);
        BackgroundReading reading([path = m_Folder / "text"](ReadProgress& progress) {
            return ReadSource(path, SourceKind::kByContent, &progress);
        });
        uint64_t version = 0;
        do { // what a window does whose tree is still empty
            EXPECT_EQ(shown->SetItemFlags(0, NODE_VISIBLE | 1), S_OK);
            EXPECT_EQ(shown->GetVersion(&version), S_OK);
        } while (!reading.WaitFor(std::chrono::milliseconds(0)));
        EXPECT_TRUE(reading.Take()({}));
    }
    shown->RemoveAll();
}

TEST_F(BackgroundReadingTest, LeavingDoesNotWaitForAPipeThatIsSilent) {
    const BackgroundReading neverWrittenTo(ReadPipe());
    const int pipe = open(m_Pipe.c_str(), O_RDWR);
    { const BackgroundReading silent(ReadPipe()); }
    close(pipe);
}

TEST_F(BackgroundReadingTest, WhatGoesWrongIsThrownWhereItIsAskedFor) {
    BackgroundReading reading([](ReadProgress& progress) {
        return ReadSource("/nowhere", SourceKind::kByContent, &progress);
    });
    EXPECT_TRUE(reading.WaitFor(kAtMost));
    EXPECT_THROW(reading.Take(), SourceMissing);
}
