#include "host/folders/FolderScans.h"
#include "host/folders/Rereading.h"
#include "host/sources/Source.h"
#include "tests/support/HostTest.h"

#include <atomic>
#include <future>
#include <poll.h>

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

class FolderScansTest : public HostTest {
protected:
    FolderScansTest() {
        std::filesystem::create_directory(m_Path);
        for (size_t i = 0; i < kFiles; ++i) {
            std::ofstream(m_Path / std::to_string(i)).flush();
        }
    }

    SmartPtr<FolderSource> Open(bool isBeside) {
        const auto folder = FolderSource::Make(
            m_Path.string(), FolderHelpers{m_Failures, m_Watch, isBeside ? m_Scans : nullptr});
        EXPECT_EQ(folder->Populate(), S_OK);
        return folder;
    }
    /// Does what a window does until nothing is looked into any more.
    void ReadOn(FolderSource& folder) {
        while (true) {
            m_Scans->TakeNews();
            m_Watch->Take();
            ReadFoldersAgain(&folder, FoldersRead::kChanged);
            if (!m_Scans->IsAsked(&folder)) {
                return;
            }
            pollfd waiting{m_Scans->News(), POLLIN, 0};
            ASSERT_EQ(poll(&waiting, 1, 60'000), 1);
        }
    }
    static std::vector<std::string> Names(const SmartPtr<FolderSource>& folder) {
        std::vector<std::string> names;
        SmartPtr<IString> name;
        for (int32_t i = 0; folder->GetItemName(i, name.Receive()) == S_OK; ++i) {
            names.push_back(ToUtf8(CREFString(name.Get())));
        }
        return names;
    }

    TemporaryFolder m_Folder;
    std::filesystem::path m_Path = m_Folder / "many";
    ReadFailuresPtr m_Failures = std::make_shared<ReadFailures>();
    FolderWatchPtr m_Watch = std::make_shared<FolderWatch>();
    FolderScansPtr m_Scans = std::make_shared<FolderScans>(std::chrono::milliseconds(0));
};

} // namespace

TEST_F(FolderScansTest, FolderSaysThatItIsReadAndThenIsLikeOneReadAtOnce) {
    const auto folder = Open(true);
    EXPECT_EQ(Names(folder), std::vector<std::string>{"reading\u2026"});
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder), Names(Open(false)));
    EXPECT_EQ(m_Scans->TakeNews(), "");
    const auto again = Names(folder);
    std::ofstream(m_Path / "new").flush();
    folder->ReadAgain(0);
    EXPECT_EQ(Names(folder), again) << "what is known stays meanwhile";
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder).size(), again.size() + 1);
}

TEST_F(FolderScansTest, ChangeMeanwhileIsNotLost) {
    const auto folder = Open(true);
    std::ofstream(m_Path / "new").flush();
    m_Watch->Take();
    ReadFoldersAgain(folder.Get(), FoldersRead::kChanged);
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder).size(), kFiles + 1);
}

TEST_F(FolderScansTest, StoppedItIsShownUpToThere) {
    std::promise<void> isHeld;
    std::promise<void> mayGoOn;
    m_Scans = std::make_shared<FolderScans>(std::chrono::milliseconds(0),
        [&](const std::string& path, const FolderPath* step, ReadProgress* progress) {
            Holder holder(*progress, isHeld, mayGoOn);
            return ScanFolder(path, step, &holder);
        });
    const auto folder = Open(true);
    isHeld.get_future().wait();
    m_Scans->Stop();
    mayGoOn.set_value();
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder).size(), kHeldAt);
    EXPECT_TRUE(m_Failures->Lines().empty());
}

TEST_F(FolderScansTest, StoppedWhenItIsReadAgainItKeepsItsRows) {
    struct Ending final : ReadProgress {
        bool Advance(const ReadState& state) override { return state.m_Done < kHeldAt; }
    } ending;
    bool isFirst = true;
    m_Scans = std::make_shared<FolderScans>(std::chrono::milliseconds(0),
        [&](const std::string& path, const FolderPath* step, ReadProgress*) {
            return ScanFolder(path, step, std::exchange(isFirst, false) ? nullptr : &ending);
        });
    const auto folder = Open(true);
    ReadOn(*folder.Get());
    const auto before = Names(folder);
    EXPECT_EQ(before.size(), kFiles);
    folder->ReadAgain(0);
    ReadOn(*folder.Get());
    EXPECT_EQ(Names(folder), before);
}

TEST_F(FolderScansTest, AFewThreadsReadAllFolders) {
    std::atomic<int> busy = 0;
    std::atomic<int> most = 0;
    m_Scans = std::make_shared<FolderScans>(std::chrono::milliseconds(0),
        [&](const std::string& path, const FolderPath* step, ReadProgress* progress) {
            const int now = ++busy;
            for (int known = most; known < now && !most.compare_exchange_weak(known, now);) {
            }
            FolderScan scan = ScanFolder(path, step, progress);
            --busy;
            return scan;
        });
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

TEST_F(FolderScansTest, FolderThatIsDroppedIsForgotten) {
    const void* dropped = Open(true).Get();
    EXPECT_FALSE(m_Scans->IsAsked(dropped));
    const auto left = Open(true); // and the rest ends without it
}

TEST_F(FolderScansTest, QuickFolderIsThereAtOnceAndOneThatIsGoneSaysSo) {
    m_Scans = std::make_shared<FolderScans>(std::chrono::minutes(1));
    EXPECT_EQ(Names(Open(true)).size(), kFiles);
    const auto gone = FolderSource::Make(
        (m_Folder / "gone").string(), FolderHelpers{m_Failures, nullptr, m_Scans});
    EXPECT_EQ(gone->Populate(), E_FAIL);
    EXPECT_EQ(m_Failures->Lines().size(), 1U);
}
