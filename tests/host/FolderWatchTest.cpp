#include "tests/host/SourceTest.h"

#include <poll.h>

// Changes in folders that the system tells of.

using FolderWatchTest = SourceTest;

TEST_F(FolderWatchTest, WatchTellsOfChangesInTheFoldersThatWereRead) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "read/deep");
    std::filesystem::create_directories(folder / "closed");
    std::filesystem::create_directory_symlink("read", folder / "twice");
    const auto watch = std::make_shared<FolderWatch>();
    const auto root =
        OpenSource((folder / "").string(), SourceKind::kByContent, {m_Failures, watch});
    BindCollection(root);
    for (const char* name : {"read", "twice"}) {
        ToggleNode(root.Get(), Find(name).index);
    }
    // The system tells of a change before the call that made it returns.
    const auto isTold = [&] {
        pollfd waiting{watch->News(), POLLIN, 0};
        return poll(&waiting, 1, 0) == 1;
    };
    const auto rowsAfterTold = [&] {
        watch->Take();
        EXPECT_FALSE(isTold());
        RereadTree(root.Get(), RereadParts::kChanged);
        return ShownRows(root);
    };
    const auto touch = [&](const char* name) { std::ofstream(folder / name).flush(); };
    touch("closed/file");
    EXPECT_FALSE(isTold()) << "never read";
    EXPECT_EQ(CountWatches(*watch), 2) << "one for a folder that is shown twice";
    touch("read/file");
    EXPECT_TRUE(isTold());
    EXPECT_EQ(rowsAfterTold(), "closed1 read1- deep2 file2 twice1- deep2 file2");

    std::ifstream limit("/proc/sys/fs/inotify/max_queued_events");
    int events = 0;
    ASSERT_TRUE(limit >> events);
    for (int i = 0; i <= events / 2; ++i) { // each is two at least
        touch("much");
        std::filesystem::remove(folder / "much");
    }
    touch("read/lost");
    EXPECT_EQ(rowsAfterTold(), "closed1 read1- deep2 file2 lost2 twice1- deep2 file2 lost2");
    std::filesystem::remove_all(folder / "read");
    EXPECT_EQ(rowsAfterTold(), "closed1 twice1");
    EXPECT_EQ(CountWatches(*watch), 1);
}
