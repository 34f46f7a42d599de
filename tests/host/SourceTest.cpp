#include "host/Source.h"
#include "framework/TreeInterfaces.h"
#include "host/Expansion.h"
#include "host/FolderSource.h"
#include "host/OutlineSource.h"
#include "tests/host/HostTest.h"

#include <fstream>
#include <sstream>
#include <unistd.h>

namespace {

class SourceTest : public HostTest {};

SmartPtr<ISuperCollection> Outline(const std::string& text) {
    std::istringstream input(text);
    return ReadOutline(input);
}

/// Opens levels of a newly bound tree. The labels of the visible rows, separated by blanks, each
/// with its level and a '-' when open.
std::string Rows(ISuperCollection* root, int32_t levels) {
    for (int32_t i = 0; i < CountOf(root); ++i) {
        root->SetItemFlags(i, NODE_VISIBLE | 1);
    }
    OpenLevels(root, levels);
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

} // namespace

TEST_F(SourceTest, OutlineDeeperLinesAreChildrenWhateverTheyConsistOf) {
    const std::pair<const char*, const char*> outlines[] = {
        {"A\n  a1\n      deep\n  a2\n\n \t \nB\n", "A1- a12- deep3 a22 B1"},
        {"\ttab\n        eight\n    \t same\n", "tab1 eight1- same2"},
        {"    deep first\n  less\nleast\n  below", "deep first1 less1 least1- below2"},
        {"top\n        far\n    between\n        below\n", "top1- far2 between2- below3"},
        {"A\r\n  b\xff\r\n\r\n", "A1- b\uFFFD2"}, {"", ""}, {"\n \n\t", ""}};
    for (const auto& [text, rows] : outlines) {
        EXPECT_EQ(Rows(Outline(text).Get(), 9), rows);
    }
    EXPECT_EQ(Rows(Outline("A\n  b\n    c\n      d\nE\n").Get(), 2), "A1- b2- c3 E1");
}

TEST_F(SourceTest, OutlineOfManyLevelsIsReadOpenedWalkedAndReleased) {
    std::string text;
    for (size_t i = 0; i < 3000; ++i) {
        text += std::string(i, ' ') + "x\n";
    }
    const std::string rows = Rows(Outline(text).Get(), 5000);
    EXPECT_EQ(std::count(rows.begin(), rows.end(), 'x'), 3000);
}

TEST_F(SourceTest, CollectionInItselfIsShownOnceAndEndsEveryWalk) {
    const auto root = SuperCollection::Make();
    const auto inner = SuperCollection::Make();
    root->Append("inner", inner->Identity());
    root->Append("self", root->Identity());
    inner->Append("back", root->Identity());
    EXPECT_EQ(Rows(root.Get(), 1000), "inner1- back2- self1-");
    root->RemoveAll();
}

TEST_F(SourceTest, FolderShowsFoldersFirstAndReadsThemWhenOpened) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "zoo/cage");
    std::filesystem::create_directories(folder / "bad\xff");
    std::filesystem::create_directory_symlink(folder / "", folder / "loop");
    for (const char* name : {"file10", "file9", "\xff\xfe.txt", "bad\xff/inside"}) {
        std::ofstream(folder / name) << "content";
    }
    const auto root = OpenSource((folder / "").string());
    const auto zoo = ItemAt(root.Get(), 1);
    EXPECT_FALSE(IsFilled(zoo.Get()));
    EXPECT_TRUE(Query<IRenderableObject>(ItemAt(root.Get(), 2).Get()));
    EXPECT_EQ(Rows(root.Get(), 9),
        "bad\uFFFD1- inside2 zoo1- cage2 file91 file101 loop1 \uFFFD\uFFFD.txt1");
    EXPECT_TRUE(IsFilled(zoo.Get()));
}

TEST_F(SourceTest, FolderThatCannotBeReadIsEmptyUntilItCan) {
    const TemporaryFolder folder;
    const auto later = FolderSource::Make((folder / "later").string());
    EXPECT_LT(later->Populate(), 0);
    EXPECT_FALSE(IsFilled(later->Identity()));
    std::filesystem::create_directories(folder / "later/closed");
    std::filesystem::permissions(folder / "later/closed", std::filesystem::perms::none);
    EXPECT_EQ(later->Populate(), S_OK);
    EXPECT_EQ(later->Populate(), S_OK) << "read once";
    // To the superuser the folder is an empty one.
    EXPECT_EQ(Rows(later.Get(), 9), "closed1");
    EXPECT_EQ(IsFilled(ItemAt(later.Get(), 0).Get()), geteuid() == 0);
}
