#include "tests/host/SourceTest.h"

#include "host/sources/ArchiveSource.h"

#include <archive.h>
#include <archive_entry.h>

// Archives as trees.

using ArchiveSourceTest = SourceTest;

namespace {

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
    return ReadArchive({"", bytes}, fault);
}

} // namespace

TEST_F(ArchiveSourceTest, ArchivesAreFoldersOfTheNamesInThem) {
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

TEST_F(ArchiveSourceTest, HostileArchivesAreListedAndNeverUnpacked) {
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

TEST_F(ArchiveSourceTest, BrokenArchiveIsListedUpToTheFault) {
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

TEST_F(ArchiveSourceTest, ArchiveIsStoppedInsideAMemberThatIsLarge) {
    struct Stopper final : ReadProgress {
        bool Advance(const ReadState&) override { return ++m_Asked < 5; }
        int m_Asked = 0;
    } stopper;
    const std::string packed = Archive(archive_write_set_format_ustar,
        archive_write_add_filter_gzip, {{"large", AE_IFREG, nullptr, 10'000'000}, {"behind"}});
    std::string fault;
    EXPECT_EQ(OpenedRows(ReadArchive({"", packed}, fault, &stopper), 1), "large1");
    EXPECT_EQ(fault, "") << "that it breaks off is none";
    EXPECT_EQ(stopper.m_Asked, 5);
    ExpectRead(ReadBytes, packed, "behind1 large1", "");
}
