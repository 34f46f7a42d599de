#include "host/Source.h"
#include "framework/TreeInterfaces.h"
#include "host/Expansion.h"
#include "host/FolderSource.h"
#include "host/OutlineSource.h"
#include "tests/host/HostTest.h"

#include <fstream>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class SourceTest : public HostTest {};

SmartPtr<ISuperCollection> Outline(const std::string& text) {
    std::istringstream input(text);
    return ReadOutline(input);
}

/// Makes the first level visible, as binding a collection does.
void Bind(ISuperCollection* root) {
    for (int32_t i = 0; i < CountOf(root); ++i) {
        root->SetItemFlags(i, NODE_VISIBLE | 1);
    }
}

/// The labels of the visible rows, separated by blanks, each with its level and a '-' when open.
std::string Rows(ISuperCollection* root) {
    std::string text;
    VisitRows(root, [&](ISuperCollection* collection, int32_t index, int32_t flags) {
        text += (text.empty() ? "" : " ") + NameAt(collection, index) +
                std::to_string(flags & NODE_LEVEL_MASK) + ((flags & NODE_EXPANDED) ? "-" : "");
        return true;
    });
    return text;
}

bool IsFilled(IUnknown* folder) {
    int32_t state = -1;
    Query<IFileArchive>(folder)->GetContentState(CONTENTSTATE_ARCHIVE, &state);
    return state != 0;
}

void Touch(const fs::path& path) {
    std::ofstream(path) << "content";
}

} // namespace

TEST_F(SourceTest, Outline_DeeperLinesAreChildren) {
    EXPECT_EQ(Dump(Outline("A\n  a1\n      deep\n  a2\n\n \t \nB\n").Get()),
        "A\n  a1\n    deep\n  a2\nB\n");
    EXPECT_EQ(Dump(Outline("\ttab\n        eight\n    \t same\n").Get()), "tab\neight\n  same\n");
    EXPECT_EQ(Dump(Outline("    deep first\n  less\nleast\n  below").Get()),
        "deep first\nless\nleast\n  below\n");
    EXPECT_EQ(Dump(Outline("top\n        far\n    between\n        below\n").Get()),
        "top\n  far\n  between\n    below\n");
}

TEST_F(SourceTest, Outline_ToleratesCarriageReturnsIllFormedTextAndNothing) {
    EXPECT_EQ(Dump(Outline("A\r\n  b\xff\r\n\r\n").Get()), "A\n  b\uFFFD\n");
    EXPECT_EQ(CountOf(Outline("").Get()), 0);
    EXPECT_EQ(CountOf(Outline("\n \n\t").Get()), 0);
}

TEST_F(SourceTest, Outline_LeafIsNoCollection) {
    const auto root = Outline("A\n  a\nB\n");
    EXPECT_TRUE(CollectionBelow(root.Get(), 0));
    EXPECT_FALSE(CollectionBelow(root.Get(), 1));
    EXPECT_TRUE(ItemAt(root.Get(), 1));
}

TEST_F(SourceTest, OutlineOfManyLevels_IsReadOpenedWalkedAndReleased) {
    constexpr int32_t kLevels = 3000;
    std::string text;
    for (int32_t i = 0; i < kLevels; ++i) {
        text += std::string(static_cast<size_t>(i), ' ') + "x\n";
    }
    const auto root = Outline(text);
    Bind(root.Get());
    OpenLevels(root.Get(), kLevels + 5);
    int32_t rows = 0;
    VisitRows(root.Get(), [&](ISuperCollection*, int32_t, int32_t) { return ++rows > 0; });
    EXPECT_EQ(rows, kLevels);
}

TEST_F(SourceTest, OpenLevels_OpensThatManyAndKeepsTheRestClosed) {
    const auto root = Outline("A\n  b\n    c\n      d\nE\n");
    Bind(root.Get());
    EXPECT_EQ(Rows(root.Get()), "A1 E1");
    OpenLevels(root.Get(), 2);
    EXPECT_EQ(Rows(root.Get()), "A1- b2- c3 E1");
}

TEST_F(SourceTest, OpenRow_CountsTheRowsThatStandThen) {
    const auto root = Outline("A\n  a\nB\n  b\n");
    Bind(root.Get());
    EXPECT_EQ(OpenRow(root.Get(), 0), OpenResult::kDone);
    EXPECT_EQ(OpenRow(root.Get(), 2), OpenResult::kDone);
    EXPECT_EQ(Rows(root.Get()), "A1- a2 B1- b2");
    EXPECT_EQ(OpenRow(root.Get(), 1), OpenResult::kNothingBelow);
    EXPECT_EQ(OpenRow(root.Get(), 4), OpenResult::kNoSuchRow);
}

TEST_F(SourceTest, CollectionInItself_IsShownOnceAndEndsEveryWalk) {
    const auto root = SuperCollection::Make();
    const auto inner = SuperCollection::Make();
    root->Append("inner", inner->Identity());
    root->Append("self", root->Identity());
    inner->Append("back", root->Identity());
    Bind(root.Get());
    OpenLevels(root.Get(), 1000);
    EXPECT_EQ(Rows(root.Get()), "inner1- back2- self1-");
    root->RemoveAll();
}

TEST_F(SourceTest, Folder_ShowsFoldersFirstAndReadsThemWhenOpened) {
    const TemporaryFolder folder;
    for (const char* name : {"file10", "file9", "\xff\xfe.txt"}) {
        Touch(folder.Path() / name);
    }
    fs::create_directories(folder.Path() / "zoo" / "cage");
    fs::create_directories(folder.Path() / "bad\xff");
    Touch(folder.Path() / "bad\xff" / "inside");
    fs::create_directory_symlink(folder.Path(), folder.Path() / "loop");

    const auto root = OpenSource(folder.Path().string());
    EXPECT_EQ(Dump(root.Get()), "bad\uFFFD\nzoo\nfile9\nfile10\nloop\n\uFFFD\uFFFD.txt\n");
    EXPECT_FALSE(CollectionBelow(root.Get(), 4)) << "a link is not followed";
    EXPECT_TRUE(Query<IRenderableObject>(ItemAt(root.Get(), 2).Get()));
    EXPECT_FALSE(IsFilled(ItemAt(root.Get(), 1).Get()));

    Bind(root.Get());
    OpenLevels(root.Get(), 9);
    EXPECT_EQ(
        Rows(root.Get()), "bad\uFFFD1- inside2 zoo1- cage2 file91 file101 loop1 \uFFFD\uFFFD.txt1");
    EXPECT_TRUE(IsFilled(ItemAt(root.Get(), 1).Get()));
}

TEST_F(SourceTest, FolderThatCannotBeRead_IsEmptyUntilItCan) {
    const TemporaryFolder folder;
    const auto missing = FolderSource::Make((folder.Path() / "later").string());
    EXPECT_LT(missing->Populate(), 0);
    EXPECT_FALSE(IsFilled(missing->Identity()));
    EXPECT_EQ(CountOf(missing.Get()), 0);
    fs::create_directory(folder.Path() / "later");
    Touch(folder.Path() / "later" / "now");
    EXPECT_EQ(missing->Populate(), S_OK);
    EXPECT_EQ(missing->Populate(), S_OK);
    EXPECT_EQ(Dump(missing.Get()), "now\n") << "read once";
}

TEST_F(SourceTest, ClosedFolderOfAnotherUser_IsShownAndStaysClosed) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may read everything";
    }
    const TemporaryFolder folder;
    fs::create_directory(folder.Path() / "closed");
    fs::permissions(folder.Path() / "closed", fs::perms::none);
    const auto root = OpenSource(folder.Path().string());
    Bind(root.Get());
    EXPECT_EQ(OpenRow(root.Get(), 0), OpenResult::kDone);
    EXPECT_EQ(Rows(root.Get()), "closed1");
    fs::permissions(folder.Path() / "closed", fs::perms::owner_all);
}

TEST_F(SourceTest, MissingInput_IsToldFromUnreadable) {
    EXPECT_THROW(OpenSource("/nowhere/at/all"), SourceMissing);
    EXPECT_THROW(OpenSource(""), SourceMissing);
}
