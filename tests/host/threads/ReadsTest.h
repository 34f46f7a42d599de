#pragma once

#include "host/reading/BackgroundReads.h"
#include "host/reading/ReadFailures.h"
#include "host/text/Text.h"
#include "tests/support/HostTest.h"
#include "tests/support/Reread.h"

#include <poll.h>

/// Trees that are read beside the window's thread, without patience unless a test has some.
class ReadsTest : public HostTest {
protected:
    /// Does what a window does until nothing is read for `who` any more, who is in the tree.
    void ReadOn(ISuperCollection& root, const void* who) {
        TakeNews(root);
        while (m_Reads->IsBegun(who)) {
            AwaitNews(root);
        }
    }
    void AwaitNews(ISuperCollection& root) {
        pollfd waiting{m_Reads->News(), POLLIN, 0};
        ASSERT_EQ(poll(&waiting, 1, 60'000), 1);
        TakeNews(root);
    }
    void TakeNews(ISuperCollection& root) {
        m_Reads->TakeNews();
        m_Watch->Take();
        RereadTree(&root, RereadParts::kChanged);
    }
    static std::vector<std::string> Names(ISuperCollection& collection) {
        std::vector<std::string> names;
        SmartPtr<IString> name;
        for (int32_t i = 0; collection.GetItemName(i, name.Receive()) == S_OK; ++i) {
            names.push_back(ToUtf8(CREFString(name.Get())));
        }
        return names;
    }

    TemporaryFolder m_Folder;
    ReadFailuresPtr m_Failures = std::make_shared<ReadFailures>();
    FolderWatchPtr m_Watch = std::make_shared<FolderWatch>();
    BackgroundReadsPtr m_Reads = std::make_shared<BackgroundReads>(std::chrono::milliseconds(0));
};
