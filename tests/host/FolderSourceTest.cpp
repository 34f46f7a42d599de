#include "tests/host/SourceTest.h"

#include "host/drawing/Cairo.h"
#include "host/folders/FolderSource.h"

#include <unistd.h>

// Folders as trees, and what becomes of them when they change.

using FolderSourceTest = SourceTest;

namespace {

bool IsFilled(IUnknown* folder) {
    int32_t state = -1;
    Query<IFileArchive>(folder)->GetContentState(CONTENTSTATE_ARCHIVE, &state);
    return state != 0;
}

} // namespace

TEST_F(FolderSourceTest, FolderShowsFoldersFirstAndReadsThemWhenOpened) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "zoo/cage");
    std::filesystem::create_directories(folder / "bad\xff");
    std::filesystem::create_directory_symlink(folder / "", folder / "zoo/loop");
    std::filesystem::create_directory_symlink("zoo", folder / "link");
    for (const char* name : {"file10", "file9", "\xff\xfe.txt", "bad\xff/inside"}) {
        std::ofstream(folder / name) << "content";
    }
    const auto root = OpenSource((folder / "").string(), SourceKind::kByContent, {m_Failures});
    const auto zoo = Place{root, 2}.Item();
    EXPECT_FALSE(IsFilled(zoo.Get()));
    EXPECT_TRUE(Query<IRenderableObject>((Place{root, 3}.Item().Get())));
    EXPECT_EQ(OpenedRows(root, 9), "bad\uFFFD1- inside2 link1- cage2 loop2 zoo1- cage2 loop2 "
                                   "file101 file91 \uFFFD\uFFFD.txt1");
    EXPECT_TRUE(IsFilled(zoo.Get()));
    const auto below = OpenSource((folder / "zoo").string(), SourceKind::kByContent, {m_Failures});
    EXPECT_EQ(OpenedRows(below, 9), "cage1 loop1") << "what is above leads back too";
}

TEST_F(FolderSourceTest, FolderIsDrawnOpenWhileItsRowIs) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "a/b");
    const auto root = OpenSource((folder / "").string(), SourceKind::kByContent, {m_Failures});
    const auto picture = Query<IRenderableObject>(Place{root, 0}.Item().Get());
    const auto draw = [&](int32_t flags) {
        root->SetItemFlags(0, flags);
        const SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 16, 16));
        const ContextPtr context(cairo_create(surface.get()));
        UbuntuCanvas canvas{context.get()};
        CANVASRect rect{0, 0, 16, 16};
        picture->Render(&canvas, &rect, nullptr, 1);
        cairo_surface_flush(surface.get());
        const auto* pixels = cairo_image_surface_get_data(surface.get());
        return std::string(pixels, pixels + size_t{16} * 16 * 4);
    };
    const std::string closed = draw(NODE_VISIBLE | 1);
    EXPECT_NE(draw(NODE_VISIBLE | NODE_EXPANDED | 1), closed);
    EXPECT_EQ(draw(NODE_VISIBLE | NODE_SELECTED | 1), closed);
}

TEST_F(FolderSourceTest, FolderThatCannotBeReadIsEmptyUntilItCan) {
    const TemporaryFolder folder;
    const std::string path = (folder / "later").string();
    const auto later = FolderSource::Make(path, FolderHelpers{m_Failures});
    EXPECT_LT(later->Populate(), 0);
    EXPECT_LT(later->Populate(), 0);
    EXPECT_EQ(m_Failures->Lines(),
        std::vector<std::string>{"cannot read " + path + ": No such file or directory"});
    EXPECT_FALSE(IsFilled(later->Identity()));
    std::filesystem::create_directories(folder / "later/closed");
    std::filesystem::permissions(folder / "later/closed", std::filesystem::perms::none);
    EXPECT_EQ(later->Populate(), S_OK);
    EXPECT_EQ(later->Populate(), S_OK) << "read once";
    EXPECT_TRUE(m_Failures->IsEmpty()) << "repaired";
    // To the superuser the folder is an empty one.
    const SmartPtr<ISuperCollection> root(later.Get());
    EXPECT_EQ(OpenedRows(root, 9), "closed1");
    EXPECT_EQ(IsFilled(Item("closed").Get()), geteuid() == 0);
}

TEST_F(FolderSourceTest, FolderReadAgainKeepsWhatStaysByName) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "b/deep");
    std::filesystem::create_directories(folder / "c/lost");
    for (const char* name : {"b/deep/x", "b/y", "m", "n", "o"}) {
        std::ofstream(folder / name) << "content";
    }
    const auto root = OpenSource((folder / "").string(), SourceKind::kByContent, {m_Failures});
    EXPECT_EQ(OpenedRows(root, 9), "b1- deep2- x3 y2 c1- lost2 m1 n1 o1");
    const auto deep = Item("deep");
    for (const char* name : {"x", "n"}) {
        SetFlags(name, Flags(name) | NODE_SELECTED);
    }
    uint64_t before = 0;
    uint64_t after = 0;
    Query<ICollectionVersion>(root.Get())->GetVersion(&before);
    EXPECT_FALSE(RereadTree(root.Get()));
    Query<ICollectionVersion>(root.Get())->GetVersion(&after);
    EXPECT_EQ(after, before) << "nothing changed";

    const std::pair<std::function<void()>, const char*> changes[] = {
        {[&] { std::filesystem::create_directories(folder / "a/new"); },
            "a1 b1- deep2- x3* y2 c1- lost2 m1 n1* o1"},
        {[&] { std::ofstream(folder / "b/deep/w"); },
            "a1 b1- deep2- w3 x3* y2 c1- lost2 m1 n1* o1"},
        {[&] { std::filesystem::rename(folder / "m", folder / "p"); },
            "a1 b1- deep2- w3 x3* y2 c1- lost2 n1* o1 p1"},
        {[&] { std::filesystem::rename(folder / "b/deep", folder / "a/deep"); },
            "a1 b1- y2 c1- lost2 n1* o1 p1"},
        {[&] { std::filesystem::remove(folder / "c/lost"); }, "a1 b1- y2 c1- n1* o1 p1"},
        {[&] { std::ofstream(folder / "c/found"); }, "a1 b1- y2 c1- found2 n1* o1 p1"},
        {[&] {
             std::filesystem::remove(folder / "n");
             std::filesystem::create_directories(folder / "n/inside");
             std::filesystem::remove_all(folder / "b");
             std::ofstream(folder / "b") << "a file";
         },
            "a1 c1- found2 n1* b1 o1 p1"},
        {[&] { std::filesystem::remove_all(folder / ""); }, ""}};
    for (const auto& [change, rows] : changes) {
        change();
        EXPECT_TRUE(RereadTree(root.Get()));
        EXPECT_EQ(ShownRows(root), rows);
        Query<ICollectionVersion>(root.Get())->GetVersion(&after);
        EXPECT_NE(after, std::exchange(before, after));
        EXPECT_EQ(RowCount(), int(std::count(rows, rows + strlen(rows), ' ')) + (*rows ? 1 : 0));
    }
    EXPECT_EQ(m_Failures->Lines(),
        std::vector<std::string>{
            "cannot read " + (folder / "").string() + ": No such file or directory"});
    std::filesystem::create_directories(folder / "back");
    EXPECT_TRUE(RereadTree(root.Get()));
    EXPECT_EQ(ShownRows(root), "back1");
}

TEST_F(FolderSourceTest, FolderOfThousandsOfChangesIsLikeOneReadAfresh) {
    constexpr int kFiles = 10'000;
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "open");
    std::ofstream(folder / "open/file5000x") << "stays";
    const auto root = OpenSource((folder / "").string(), SourceKind::kByContent, {m_Failures});
    OpenedRows(root, 1);
    SetFlags("file5000x", Flags("file5000x") | NODE_SELECTED);
    const auto name = [&](const char* kind, int i) {
        return folder / ("open/" + (kind + std::to_string(i)));
    };
    for (int i = 0; i < kFiles; ++i) {
        std::ofstream(name("file", i)).flush();
    }
    EXPECT_TRUE(RereadTree(root.Get()));
    EXPECT_EQ(RowCount(), kFiles + 2);
    for (int i = 0; i < kFiles; i += 2) {
        std::filesystem::rename(name("file", i), name("moved", i));
        std::filesystem::remove(name("file", i + 1));
        std::filesystem::remove(name("moved", i % 3 == 0 ? i : -1));
    }
    EXPECT_TRUE(RereadTree(root.Get()));
    EXPECT_NE(Flags("file5000x") & NODE_SELECTED, 0);
    SetFlags("file5000x", Flags("file5000x") & ~NODE_SELECTED);
    const std::string rows = ShownRows(root);
    EXPECT_EQ(rows,
        OpenedRows(OpenSource((folder / "").string(), SourceKind::kByContent, {m_Failures}), 1));
}
