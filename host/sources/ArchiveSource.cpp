#include "host/sources/ArchiveSource.h"

#include "host/data/CollectionVersion.h"
#include "host/data/FolderCollection.h"
#include "host/documents/ValueItem.h"
#include "host/folders/FileItem.h"
#include "host/folders/FolderEntry.h"

#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <clocale>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <new>
#include <vector>

namespace {

class ArchiveFolder final : public HostObject<ArchiveFolder, FolderCollection, CollectionVersion,
                                DrawnItem, IHostOpenItem> {
public:
    static constexpr const char* kKind = "ArchiveFolder";

    /// It is drawn as a link where the archive has one of the same name.
    explicit ArchiveFolder(bool isLink) { SetLook({ItemKind::kFolder, isLink}); }

    int32_t SetOpen(bool isOpen) override {
        DrawOpen(isOpen);
        return S_OK;
    }
};

/// Names that an archive has in another encoding become UTF-8 in whatever locale the program is.
class Utf8Names {
public:
    Utf8Names() = default;
    ~Utf8Names() {
        uselocale(m_Before);
        if (m_Utf8) {
            freelocale(m_Utf8);
        }
    }
    Utf8Names(const Utf8Names&) = delete;

private:
    locale_t m_Utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    locale_t m_Before = uselocale(m_Utf8); // which changes nothing where there is none
};

/// The members of an archive as they are met, by the folder that they are in.
class Members {
public:
    /// Takes a path apart; the folders on the way are there even where the archive has no entry for
    /// them.
    void Add(std::string_view path, ItemLook look) {
        size_t at = path.starts_with('/') ? Step(0, "/") : 0;
        while (!path.empty()) {
            const std::string_view name = path.substr(0, path.find('/'));
            path.remove_prefix(std::min(name.size() + 1, path.size()));
            if (!name.empty() && name != ".") {
                at = Step(at, name);
            }
        }
        Member& member = m_Members[at];
        if (member.m_Look.m_Kind != ItemKind::kFolder) { // what has something in it stays a folder
            member.m_Look = look;
        }
    }

    /// Makes the tree of them, and leaves none.
    SmartPtr<ArchiveFolder> MakeTree() {
        std::vector<SmartPtr<ArchiveFolder>> folders;
        std::vector<std::pair<FolderEntry, size_t>> order; // with the member's place
        m_Places.clear();
        for (Member& member : m_Members) {
            const bool isFolder = member.m_Look.m_Kind == ItemKind::kFolder;
            folders.push_back(
                isFolder ? ArchiveFolder::Make(member.m_Look.m_IsLink) : SmartPtr<ArchiveFolder>());
            order.emplace_back(FolderEntry(std::move(member.m_Name), member.m_Look), order.size());
        }
        std::sort(order.begin() + 1, order.end());
        for (auto place = order.begin() + 1; place != order.end(); ++place) {
            auto& [entry, number] = *place;
            ArchiveFolder& above = *folders[m_Members[number].m_Above].Get();
            SmartPtr<IUnknown> item(folders[number] ? folders[number]->Identity()
                                                    : FileItem::Make(entry.m_Look)->Identity());
            above.AppendNew(
                {.m_Name = std::move(entry.m_Name), .m_Item = std::move(item), .m_Data = {}});
        }
        return folders.front();
    }

private:
    struct Member {
        size_t m_Above;
        std::string m_Name;
        ItemLook m_Look;
    };

    /// The place of what stands under a name in a folder, which makes a folder of that one.
    size_t Step(size_t above, std::string_view name) {
        m_Members[above].m_Look.m_Kind = ItemKind::kFolder;
        const auto found = m_Places.find({above, name});
        if (found != m_Places.end()) {
            return found->second;
        }
        m_Members.push_back({above, std::string(name), {}});
        m_Places.emplace(
            std::pair(above, std::string_view(m_Members.back().m_Name)), m_Members.size() - 1);
        return m_Members.size() - 1;
    }

    std::deque<Member> m_Members{
        {0, "", {ItemKind::kFolder}}}; ///< stay where they are; the root first
    std::map<std::pair<size_t, std::string_view>, size_t> m_Places;
};

class Reader {
public:
    explicit Reader(const ArchivePlace& place) {
        if (!m_Archive) {
            throw std::bad_alloc();
        }
        // None that is left to another program, and none that takes anything for an archive.
        for (const auto support :
            {archive_read_support_filter_gzip, archive_read_support_filter_bzip2,
                archive_read_support_filter_xz, archive_read_support_filter_zstd,
                archive_read_support_filter_lz4, archive_read_support_format_tar,
                archive_read_support_format_zip, archive_read_support_format_7zip}) {
            support(m_Archive.get());
        }
        constexpr size_t kBlock = size_t{1} << 16;
        m_Status = place.m_Path.empty()
                       ? archive_read_open_memory(
                             m_Archive.get(), place.m_Bytes.data(), place.m_Bytes.size())
                       : archive_read_open_filename(m_Archive.get(), place.m_Path.c_str(), kBlock);
    }

    bool IsOpen() const { return m_Status >= ARCHIVE_WARN; }
    /// Whether it could be read and is compressed, with something else or something broken in it.
    bool IsOnlyCompressed() const {
        const int error = archive_errno(m_Archive.get());
        const bool isRead = error < 0 || error == EILSEQ; // faults of formats, not of the system
        return !IsOpen() && isRead && archive_filter_count(m_Archive.get()) != 1; // one is the file
    }

    /// Adds what there is; what is wrong with the rest.
    std::string Read(Members& members, ReadProgress* progress, size_t size) {
        archive_entry* entry = nullptr;
        while (IsOpen() && Advance(progress, size)) {
            m_Status = archive_read_next_header(m_Archive.get(), &entry);
            if (m_Status == ARCHIVE_EOF) {
                return {};
            }
            if (IsOpen()) {
                members.Add(NameOf(entry), LookOf(entry));
                SkipContent(progress, size);
            }
        }
        if (m_IsStopped) {
            return {};
        }
        const char* fault = archive_error_string(m_Archive.get());
        return fault ? fault : "this is no archive";
    }

private:
    struct Closer {
        void operator()(archive* opened) const { archive_read_free(opened); }
    };

    /// False from the time on when the progress has said so.
    bool Advance(ReadProgress* progress, size_t size) {
        const auto done = static_cast<size_t>(archive_filter_bytes(m_Archive.get(), -1));
        m_IsStopped = m_IsStopped || (progress && !progress->Advance({std::min(done, size), size}));
        return !m_IsStopped;
    }

    /// What is compressed as a whole has to be unpacked to be skipped, which takes long for a large
    /// member: the progress is asked for each block of it. What is wrong with one member only does
    /// not keep the next one from being read.
    void SkipContent(ReadProgress* progress, size_t size) {
        const void* block = nullptr;
        size_t length = 0;
        la_int64_t place = 0;
        int status = archive_filter_count(m_Archive.get()) > 1 ? ARCHIVE_OK : ARCHIVE_EOF;
        while (status == ARCHIVE_OK && Advance(progress, size)) {
            status = archive_read_data_block(m_Archive.get(), &block, &length, &place);
        }
        m_Status = status == ARCHIVE_FATAL ? status : m_Status;
    }

    static std::string NameOf(archive_entry* entry) {
        const char* name = archive_entry_pathname_utf8(entry);
        name = name ? name : archive_entry_pathname(entry); // as it is, for what is no text
        return name ? name : "\uFFFD";
    }
    static ItemLook LookOf(archive_entry* entry) {
        const auto type = archive_entry_filetype(entry);
        if (type == AE_IFDIR) {
            return {ItemKind::kFolder};
        }
        constexpr unsigned kOwnerRuns = 0100;
        const bool isProgram = type == AE_IFREG && (archive_entry_perm(entry) & kOwnerRuns) != 0;
        return {KindOfFile(NameOf(entry), isProgram), type == AE_IFLNK};
    }

    Utf8Names m_Utf8Names;
    std::unique_ptr<archive, Closer> m_Archive{archive_read_new()};
    int m_Status = ARCHIVE_FATAL;
    bool m_IsStopped = false;
};

} // namespace

bool IsArchive(const ArchivePlace& place) {
    const Reader reader(place);
    return reader.IsOpen() || reader.IsOnlyCompressed();
}

SmartPtr<ISuperCollection> ReadArchive(
    const ArchivePlace& place, std::string& fault, ReadProgress* progress) {
    std::error_code unknown;
    const auto size = static_cast<size_t>(place.m_Path.empty()
                                              ? place.m_Bytes.size()
                                              : std::filesystem::file_size(place.m_Path, unknown));
    Members members;
    fault = Reader(place).Read(members, progress, unknown ? 0 : size);
    const auto root = members.MakeTree();
    if (!fault.empty()) {
        root->AppendNew({.m_Name = fault,
            .m_Item = SmartPtr<IUnknown>(ValueItem::Make(ItemKind::kFault)->Identity()),
            .m_Data = {}});
    }
    return SmartPtr<ISuperCollection>(root.Get());
}
