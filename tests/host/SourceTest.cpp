#include "host/sources/Source.h"
#include "host/data/Expansion.h"
#include "host/documents/DocumentBranch.h"
#include "host/documents/JsonSource.h"
#include "host/documents/XmlSource.h"
#include "host/folders/FolderSource.h"
#include "host/folders/Rereading.h"
#include "host/sources/ArchiveSource.h"
#include "host/text/Text.h"
#include "tests/support/HostTest.h"
#include "tests/support/TreeTest.h"

#include <archive.h>
#include <archive_entry.h>
#include <poll.h>
#include <unistd.h>

namespace {

class SourceTest : public TreeTest {
protected:
    ReadFailuresPtr m_Failures = std::make_shared<ReadFailures>();

    /// Binds a tree and opens levels of it. The labels of the visible rows, separated by blanks,
    /// each with its level, a '-' when open and a '*' when selected.
    std::string OpenedRows(const SmartPtr<ISuperCollection>& root, int32_t levels) {
        BindCollection(root);
        OpenLevels(root.Get(), levels);
        return ShownRows(root);
    }
    static std::string ShownRows(const SmartPtr<ISuperCollection>& root) {
        std::string text;
        VisitRows(root.Get(), [&](ISuperCollection* collection, int32_t index, int32_t flags) {
            text += (text.empty() ? "" : " ") + Place{SmartPtr(collection), index}.Label() +
                    std::to_string(flags & NODE_LEVEL_MASK) + ((flags & NODE_EXPANDED) ? "-" : "") +
                    ((flags & NODE_SELECTED) ? "*" : "");
            return true;
        });
        return text;
    }

    /// What a reader makes of a text: `rows`, unless null, and then the fault as one more.
    template <class Reader>
    void ExpectRead(
        Reader read, const std::string& text, const char* rows, const std::string& fault) {
        std::string found;
        const auto tree = read(text, found);
        EXPECT_EQ(found, fault);
        if (rows) {
            const std::string shown = OpenedRows(tree, 9);
            EXPECT_EQ(ToUtf8(Refer(ToWide(shown))),
                ToUtf8(Refer(ToWide(rows + found + (found.empty() ? "" : "1")))));
        }
    }
};

using Choice = int (*)(archive*);

struct Member {
    const char* m_Name;
    unsigned m_Type = AE_IFREG;
    const char* m_Link = nullptr;
    size_t m_Size = 7;
};

/// An archive of these members; files hold some bytes.
std::string Archive(Choice format, Choice filter, const std::vector<Member>& members) {
    std::string bytes(1 << 16, '\0');
    size_t size = 0;
    archive* out = archive_write_new();
    format(out);
    filter(out);
    archive_write_set_bytes_per_block(out, 0);
    EXPECT_EQ(archive_write_open_memory(out, bytes.data(), bytes.size(), &size), ARCHIVE_OK);
    for (const Member& member : members) {
        archive_entry* entry = archive_entry_new();
        archive_entry_set_pathname(entry, member.m_Name);
        archive_entry_set_filetype(entry, member.m_Type);
        archive_entry_set_perm(entry, 0644);
        archive_entry_set_symlink(entry, member.m_Link);
        const std::string content(member.m_Type == AE_IFREG ? member.m_Size : 0, 'x');
        archive_entry_set_size(entry, int64_t(content.size()));
        EXPECT_EQ(archive_write_header(out, entry), ARCHIVE_OK) << archive_error_string(out);
        archive_write_data(out, content.data(), content.size());
        archive_entry_free(entry);
    }
    archive_write_free(out);
    return bytes.substr(0, size);
}

SmartPtr<ISuperCollection> ReadBytes(std::string_view bytes, std::string& fault) {
    return ReadArchive({"", bytes}, fault)();
}

template <DocumentTextPtr (*Index)(std::string, const IndexOptions&)>
SmartPtr<ISuperCollection> ReadText(const std::string& text, std::string& fault) {
    const auto document = Index(text, {});
    fault = document->Fault();
    return DocumentBranch::MakeRoot(document, document->ReadRoot(nullptr));
}

bool IsFilled(IUnknown* folder) {
    int32_t state = -1;
    Query<IFileArchive>(folder)->GetContentState(CONTENTSTATE_ARCHIVE, &state);
    return state != 0;
}

} // namespace

TEST_F(SourceTest, OutlineDeeperLinesAreChildrenWhateverTheyConsistOf) {
    const std::tuple<const char*, int32_t, const char*> outlines[] = {
        {"A\n  a1\n      deep\n  a2\n\n \t \nB\n", 9, "A1- a12- deep3 a22 B1"},
        {"\ttab\n        eight\n    \t same\n", 9, "tab1 eight1- same2"},
        {"    deep first\n  less\nleast\n  below", 9, "deep first1 less1 least1- below2"},
        {"top\n        far\n    between\n        below\n", 9, "top1- far2 between2- below3"},
        {"A\r\n  b\xff\r\n\r\n", 9, "A1- b\uFFFD2"}, {"\n \n\t", 9, ""},
        {"A\n  b\n    c\n      d\nE\n", 2, "A1- b2- c3 E1"}};
    for (const auto& [text, levels, rows] : outlines) {
        EXPECT_EQ(OpenedRows(Outline(text), levels), rows);
    }
}

TEST_F(SourceTest, JsonIsShownAsFarAsItIsRightAndTheFaultHasItsLine) {
    const std::tuple<std::string, const char*, const char*> texts[] = {
        {R"({"a": {"b": [1, 2.50, "x\n"]}, "c": {}, "": null})",
            R"(a1- b2- 0: 13 1: 2.503 2: "x\n"3 c1- {}2 : null1)", ""},
        {"{\"a\":1}\n\n[true]\n", "11- a: 12 31- 0: true2", ""}, {"[]", "", ""},
        {"[1,\n2\n", "0: 11 1: 21 ",
            "line 3: syntax error while parsing array - unexpected end of input; expected ']'"},
        {"{\"a\":1}\n{]", "11- a: 12 21 ",
            "line 2: syntax error while parsing object key - unexpected ']'; expected string "
            "literal"},
        {"[\xff]", "",
            "line 1: syntax error while parsing value - invalid literal; last read: '[\xff'"},
        {std::string(100'000, '['), nullptr,
            "line 1: syntax error while parsing value - unexpected end of input; expected '[', "
            "'{', or a literal"}};
    for (const auto& [text, rows, fault] : texts) {
        ExpectRead(ReadText<IndexJson>, text, rows, fault);
    }
}

TEST_F(SourceTest, XmlIsShownAsFarAsItIsRightAndTheFaultHasItsLine) {
    const std::tuple<std::string, const char*, const char*> texts[] = {
        {"<?xml version='1.0'?>\n<a x='1  2' y=''>\n one\n <b>t &lt;&#10;u</b>two<c/><!-- no "
         "--></a>",
            "a1- @x: 1 22 @y: 2 one2 b: t < u2 two2 c2", ""},
        {"<a>only<![CDATA[ <text>]]></a>", "a: only <text>1", ""},
        {"<a><b c='d'>e</b> </a>", "a1- b2- @c: d3 e3", ""},
        {"<!DOCTYPE a SYSTEM 'x' [<!ENTITY e 'E<b/>'><!ENTITY f SYSTEM '/etc/passwd'>]>"
         "<a>&e;&f;&g;</a>",
            "a1- E2 b2 &g;2", ""},
        {"<a>\n<b>c</b><d>e", "a1- b: c2 d: e2 ", "line 2: no element found"},
        {"<a>b</c>", "a: b1 ", "line 1: mismatched tag"},
        {"<a/>\n\n<b/>", "a1 ", "line 3: junk after document element"},
        {"<!DOCTYPE a [<!ENTITY a '&b;'><!ENTITY b '&a;'>]>\n<a>&b;</a>", "a1 ",
            "line 2: recursive entity reference"},
        {std::string("\xFE\xFF\0<\0a\0/\0>", 10), "a1", ""}, {"", "", "line 1: no element found"},
        {Repeated("<a>", 100'000), nullptr, "line 1: no element found"}};
    for (const auto& [text, rows, fault] : texts) {
        ExpectRead(ReadText<IndexXml>, text, rows, fault);
    }
}

TEST_F(SourceTest, ArchivesAreFoldersOfTheNamesInThem) {
    const std::vector<Member> members = {{"zoo/", AE_IFDIR}, {"file10"}, {"./zoo//cage/lion"},
        {"file9"}, {"zoo/", AE_IFDIR}, {"file9"}, {"empty/", AE_IFDIR}};
    constexpr const char* kRows = "empty1 zoo1- cage2- lion3 file101 file91";
    const std::pair<Choice, Choice> kinds[] = {
        {archive_write_set_format_pax, archive_write_add_filter_none},
        {archive_write_set_format_gnutar, archive_write_add_filter_gzip},
        {archive_write_set_format_ustar, archive_write_add_filter_xz},
        {archive_write_set_format_ustar, archive_write_add_filter_zstd},
        {archive_write_set_format_zip, archive_write_add_filter_none},
        {archive_write_set_format_7zip, archive_write_add_filter_none}};
    const TemporaryFolder folder;
    for (const auto& [format, filter] : kinds) {
        const std::string bytes = Archive(format, filter, members);
        ExpectRead(ReadBytes, bytes, kRows, "");
        std::ofstream(folder / "archive", std::ios::binary) << bytes;
        EXPECT_EQ(
            OpenedRows(
                OpenSource((folder / "archive").string(), SourceKind::kByContent, {m_Failures}), 9),
            kRows);
    }
    EXPECT_TRUE(m_Failures->Lines().empty());
    EXPECT_FALSE(IsArchive({"", "PK is no archive, and neither is #mtree\n./a type=file\n"}));
    EXPECT_FALSE(IsArchive({(folder / "missing").string()}));
}

TEST_F(SourceTest, HostileArchivesAreListedAndNeverUnpacked) {
    const TemporaryFolder folder;
    const std::string absolute = (folder / "made").string();
    const std::string tar = Archive(archive_write_set_format_ustar, archive_write_add_filter_none,
        {{"../../up"}, {"a/../b"}, {"/root/x"}, {"a"}, {"bad\xff"}, {"", AE_IFDIR},
            {"one", AE_IFLNK, "two"}, {"two", AE_IFLNK, "one"}, {"one/in"}, {"pipe", AE_IFIFO}});
    ExpectRead(ReadBytes, tar,
        "..1- ..2- up3 /1- root2- x3 a1- ..2- b3 one1- in2 bad\xff"
        "1 pipe1 two1",
        "");
    ExpectRead(ReadBytes,
        Archive(
            archive_write_set_format_ustar, archive_write_add_filter_none, {{absolute.c_str()}}),
        nullptr, "");
    EXPECT_FALSE(std::filesystem::exists(absolute));
    std::string deep;
    while (deep.size() < 30'000) {
        deep += "d/";
    }
    ExpectRead(ReadBytes,
        Archive(archive_write_set_format_pax, archive_write_add_filter_none, {{deep.c_str()}}),
        nullptr, "");
}

TEST_F(SourceTest, BrokenArchiveIsListedUpToTheFault) {
    const std::string tar =
        Archive(archive_write_set_format_ustar, archive_write_add_filter_none, {{"a/b"}, {"c"}});
    const std::string packed =
        Archive(archive_write_set_format_ustar, archive_write_add_filter_gzip, {{"a/b"}, {"c"}});
    const std::tuple<std::string, const char*, const char*> archives[] = {
        {tar.substr(0, 1100), "a1- b2 ", "Truncated tar archive"},
        {packed.substr(0, packed.size() / 2), "", "truncated gzip input"},
        {Archive(archive_write_set_format_raw, archive_write_add_filter_gzip, {{"text"}}), "",
            "Unrecognized archive format"}};
    for (const auto& [bytes, rows, fault] : archives) {
        EXPECT_TRUE(IsArchive({"", bytes}));
        ExpectRead(ReadBytes, bytes, rows, fault);
    }
}

TEST_F(SourceTest, ArchiveIsStoppedInsideAMemberThatIsLarge) {
    struct Stopper final : ReadProgress {
        bool Advance(const ReadState&) override { return ++m_Asked < 5; }
        int m_Asked = 0;
    } stopper;
    const std::string packed = Archive(archive_write_set_format_ustar,
        archive_write_add_filter_gzip, {{"large", AE_IFREG, nullptr, 10'000'000}, {"behind"}});
    std::string fault;
    EXPECT_EQ(OpenedRows(ReadArchive({"", packed}, fault, &stopper)(), 1), "large1");
    EXPECT_EQ(fault, "") << "that it breaks off is none";
    EXPECT_EQ(stopper.m_Asked, 5);
    ExpectRead(ReadBytes, packed, "behind1 large1", "");
}

TEST_F(SourceTest, CollectionInItselfIsShownOnceAndEndsEveryWalk) {
    const auto root = SuperCollection::Make();
    const auto inner = SuperCollection::Make();
    root->Append("inner", inner->Identity());
    root->Append("self", root->Identity());
    inner->Append("back", root->Identity());
    EXPECT_EQ(OpenedRows(SmartPtr<ISuperCollection>(root.Get()), 1000), "inner1- back2- self1-");
    root->RemoveAll();
}

TEST_F(SourceTest, FolderShowsFoldersFirstAndReadsThemWhenOpened) {
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
}

TEST_F(SourceTest, FolderThatCannotBeReadIsEmptyUntilItCan) {
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

TEST_F(SourceTest, FolderReadAgainKeepsWhatStaysByName) {
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
    EXPECT_FALSE(ReadFoldersAgain(root.Get()));
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
        EXPECT_TRUE(ReadFoldersAgain(root.Get()));
        EXPECT_EQ(ShownRows(root), rows);
        Query<ICollectionVersion>(root.Get())->GetVersion(&after);
        EXPECT_NE(after, std::exchange(before, after));
        EXPECT_EQ(RowCount(), int(std::count(rows, rows + strlen(rows), ' ')) + (*rows ? 1 : 0));
    }
    EXPECT_EQ(m_Failures->Lines(),
        std::vector<std::string>{
            "cannot read " + (folder / "").string() + ": No such file or directory"});
    std::filesystem::create_directories(folder / "back");
    EXPECT_TRUE(ReadFoldersAgain(root.Get()));
    EXPECT_EQ(ShownRows(root), "back1");
}

TEST_F(SourceTest, FolderOfThousandsOfChangesIsLikeOneReadAfresh) {
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
    EXPECT_TRUE(ReadFoldersAgain(root.Get()));
    EXPECT_EQ(RowCount(), kFiles + 2);
    for (int i = 0; i < kFiles; i += 2) {
        std::filesystem::rename(name("file", i), name("moved", i));
        std::filesystem::remove(name("file", i + 1));
        std::filesystem::remove(name("moved", i % 3 == 0 ? i : -1));
    }
    EXPECT_TRUE(ReadFoldersAgain(root.Get()));
    EXPECT_NE(Flags("file5000x") & NODE_SELECTED, 0);
    SetFlags("file5000x", Flags("file5000x") & ~NODE_SELECTED);
    const std::string rows = ShownRows(root);
    EXPECT_EQ(rows,
        OpenedRows(OpenSource((folder / "").string(), SourceKind::kByContent, {m_Failures}), 1));
}

TEST_F(SourceTest, WatchTellsOfChangesInTheFoldersThatWereRead) {
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
        ReadFoldersAgain(root.Get(), FoldersRead::kChanged);
        return ShownRows(root);
    };
    const auto watches = [&] {
        std::ifstream info("/proc/self/fdinfo/" + std::to_string(watch->News()));
        int count = 0;
        for (std::string line; std::getline(info, line);) {
            count += line.starts_with("inotify") ? 1 : 0;
        }
        return count;
    };
    const auto touch = [&](const char* name) { std::ofstream(folder / name).flush(); };
    touch("closed/file");
    EXPECT_FALSE(isTold()) << "never read";
    EXPECT_EQ(watches(), 2) << "one for a folder that is shown twice";
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
    EXPECT_EQ(watches(), 1);
}
