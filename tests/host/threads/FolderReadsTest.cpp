#include "tests/host/threads/ReadsTest.h"

#include "host/folders/FolderSource.h"

#include <atomic>
#include <future>
#include <thread>

// Folders that are looked into beside the window's thread.

namespace {

constexpr size_t kFiles = 100;

constexpr size_t kHeldAt = 10;

/// Holds a reading where it has found so many entries, once.
class Holder final : public ReadProgress {
public:
    Holder(ReadProgress& progress, std::promise<void>& isHeld, std::promise<void>& mayGoOn)
        : m_Progress(progress), m_IsHeld(isHeld), m_MayGoOn(mayGoOn) {}

    bool Advance(const ReadState& state) override {
        if (state.m_Done == kHeldAt) {
            m_IsHeld.set_value();
            m_MayGoOn.get_future().wait();
        }
        return m_Progress.Advance(state);
    }

private:
    ReadProgress& m_Progress;
    std::promise<void>& m_IsHeld;
    std::promise<void>& m_MayGoOn;
};

class FolderReadsTest : public ReadsTest {
protected:
    FolderReadsTest() {
        std::filesystem::create_directory(m_Path);
        for (size_t i = 0; i < kFiles; ++i) {
            std::ofstream(m_Path / std::to_string(i)).flush();
        }
    }

    SmartPtr<FolderSource> Open(bool isBeside) {
        const auto folder = FolderSource::Make(m_Path.string(),
            FolderHelpers{m_Failures, m_Watch, isBeside ? m_Reads : nullptr, m_Look});
        EXPECT_EQ(folder->Populate(), S_OK);
        return folder;
    }
    void ReadOn(FolderSource& folder) { ReadsTest::ReadOn(folder, &folder); }
    static std::vector<std::string> Names(const SmartPtr<FolderSource>& folder) {
        return ReadsTest::Names(*folder.Get());
    }

    decltype(FolderHelpers::m_Look) m_Look = &ScanFolder;
    std::filesystem::path m_Path = m_Folder / "many";
};

} // namespace

TEST_F(FolderReadsTest, FolderSaysThatItIsReadAndThenIsLikeOneReadAtOnce) {
    const auto folder = Open(true);
    EXPECT_EQ(Names(folder), std::vector<std::string>{"reading\u2026"});
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder), Names(Open(false)));
    EXPECT_EQ(m_Reads->TakeNews(), "");
    const auto again = Names(folder);
    std::ofstream(m_Path / "new").flush();
    folder->ReadAgain(0);
    EXPECT_EQ(Names(folder), again) << "what is known stays meanwhile";
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder).size(), again.size() + 1);
}

TEST_F(FolderReadsTest, ChangeMeanwhileIsNotLost) {
    std::promise<void> isRead;
    std::promise<void> mayEnd;
    bool isFirst = true;
    m_Look = [&](const std::string& path, const FolderPath* step, ReadProgress* progress) {
        FolderScan scan = ScanFolder(path, step, progress);
        if (std::exchange(isFirst, false)) {
            isRead.set_value();
            mayEnd.get_future().wait();
        }
        return scan;
    };
    const auto folder = Open(true);
    isRead.get_future().wait();
    std::ofstream(m_Path / "new").flush();
    m_Watch->Take();
    mayEnd.set_value();
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder).size(), kFiles + 1);
}

TEST_F(FolderReadsTest, FolderThatNeverRestsIsShownAllTheSame) {
    std::atomic<bool> isBusy = true;
    m_Look = [&](const std::string& path, const FolderPath* step, ReadProgress* progress) {
        FolderScan scan = ScanFolder(path, step, progress);
        if (isBusy) {
            std::ofstream(m_Path / "busy").flush();
            std::filesystem::remove(m_Path / "busy");
        }
        return scan;
    };
    const auto folder = Open(true);
    while (Names(folder).size() < kFiles) {
        AwaitNews(*folder.Get());
    }
    isBusy = false;
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder).size(), kFiles);
}

TEST_F(FolderReadsTest, FolderThatMemoryDidNotHoldIsReadWhenItIsOpenedAgain) {
    bool isFirst = true;
    m_Look = [&](const std::string& path, const FolderPath* step, ReadProgress* progress) {
        if (std::exchange(isFirst, false)) {
            throw std::bad_alloc();
        }
        return ScanFolder(path, step, progress);
    };
    const auto folder = Open(true);
    ReadOn(*folder.Get());
    EXPECT_TRUE(Names(folder).empty());
    EXPECT_EQ(folder->Populate(), S_OK);
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder).size(), kFiles);
}

TEST_F(FolderReadsTest, WatchThatSeveralThreadsUseIsLeftToTheLastOfThem) {
    std::atomic<int> busy = 4;
    std::vector<std::thread> threads;
    for (int i = busy; i > 0; --i) {
        threads.emplace_back([&] {
            for (int turn = 0; turn < 500; ++turn) {
                const WatchedFolder first(m_Watch, m_Path.string());
                const WatchedFolder second(m_Watch, (m_Folder / "").string());
            }
            --busy;
        });
    }
    while (busy > 0) {
        m_Watch->Take();
    }
    for (std::thread& each : threads) {
        each.join();
    }
    EXPECT_EQ(CountWatches(*m_Watch), 0);
    const WatchedFolder held(m_Watch, m_Path.string());
    std::ofstream(m_Path / "new").flush();
    m_Watch->Take();
    EXPECT_TRUE(held.IsChanged());
}

TEST_F(FolderReadsTest, StoppedItIsShownUpToThere) {
    std::promise<void> isHeld;
    std::promise<void> mayGoOn;
    m_Look = [&](const std::string& path, const FolderPath* step, ReadProgress* progress) {
        Holder holder(*progress, isHeld, mayGoOn);
        return ScanFolder(path, step, &holder);
    };
    const auto folder = Open(true);
    isHeld.get_future().wait();
    m_Reads->Stop();
    mayGoOn.set_value();
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder).size(), kHeldAt);
    EXPECT_TRUE(m_Failures->Lines().empty());
}

TEST_F(FolderReadsTest, StoppedWhenItIsReadAgainItKeepsItsRows) {
    struct Ending final : ReadProgress {
        bool Advance(const ReadState& state) override { return state.m_Done < kHeldAt; }
    } ending;
    bool isFirst = true;
    m_Look = [&](const std::string& path, const FolderPath* step, ReadProgress*) {
        return ScanFolder(path, step, std::exchange(isFirst, false) ? nullptr : &ending);
    };
    const auto folder = Open(true);
    ReadOn(*folder.Get());
    const auto before = Names(folder);
    EXPECT_EQ(before.size(), kFiles);
    folder->ReadAgain(0);
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder), before);
}

TEST_F(FolderReadsTest, AFewThreadsReadAllFolders) {
    std::atomic<int> busy = 0;
    std::atomic<int> most = 0;
    m_Look = [&](const std::string& path, const FolderPath* step, ReadProgress* progress) {
        const int now = ++busy;
        for (int known = most; known < now && !most.compare_exchange_weak(known, now);) {
        }
        FolderScan scan = ScanFolder(path, step, progress);
        --busy;
        return scan;
    };
    std::vector<SmartPtr<FolderSource>> folders;
    for (int i = 0; i < 50; ++i) {
        folders.push_back(Open(true));
    }
    for (const auto& folder : folders) {
        ReadOn(*folder.Get());
        EXPECT_EQ(Names(folder).size(), kFiles);
    }
    EXPECT_LE(most, 4);
}

TEST_F(FolderReadsTest, FolderThatIsDroppedIsForgotten) {
    const void* dropped = Open(true).Get();
    EXPECT_FALSE(m_Reads->IsBegun(dropped));
    const auto left = Open(true); // and the rest ends without it
}

TEST_F(FolderReadsTest, QuickFolderIsThereAtOnceAndOneThatIsGoneSaysSo) {
    m_Reads = std::make_shared<BackgroundReads>(std::chrono::minutes(1));
    EXPECT_EQ(Names(Open(true)).size(), kFiles);
    const auto gone = FolderSource::Make(
        (m_Folder / "gone").string(), FolderHelpers{m_Failures, nullptr, m_Reads});
    EXPECT_EQ(gone->Populate(), E_FAIL);
    EXPECT_EQ(m_Failures->Lines().size(), 1U);
}
