#include "host/settings/DocumentFile.h"

#include "host/settings/Files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sqlite3.h>
#include <unistd.h>

namespace {

constexpr int64_t kApplicationID = 0x54524545; // "TREE"
constexpr int64_t kVersion = 1;                // of the tables

/// As the database keeps it. A folder that an object was saved into has no position; its name is
/// that of the object's entry.
constexpr const char* kTables =
    "CREATE TABLE entry(folder INTEGER NOT NULL, name TEXT NOT NULL, kind TEXT NOT NULL, value, "
    "PRIMARY KEY(folder, name)) WITHOUT ROWID;"
    "CREATE TABLE folder(id INTEGER PRIMARY KEY, parent INTEGER NOT NULL, position INTEGER, "
    "name TEXT NOT NULL, UNIQUE(parent, position))";

/// The beginning of a database file.
class Header {
public:
    explicit Header(std::ifstream& stream)
        : m_IsEmpty(
              stream.read(m_Bytes.data(), static_cast<std::streamsize>(m_Bytes.size())).gcount() ==
              0) {}

    bool IsEmpty() const { return m_IsEmpty; }
    /// A first save that was interrupted may leave zeros in front, which its journal takes back.
    bool MayBeDocument() const {
        constexpr std::string_view kMagic("SQLite format 3\0", 16);
        const bool isZero =
            std::all_of(m_Bytes.begin(), m_Bytes.end(), [](char byte) { return byte == 0; });
        const bool hasRollbackJournal = m_Bytes[18] == 1 && m_Bytes[19] == 1;
        return isZero || (std::string_view(m_Bytes.data(), kMagic.size()) == kMagic &&
                             hasRollbackJournal && Number(68) == kApplicationID);
    }
    int64_t Version() const { return Number(60); }

private:
    int64_t Number(size_t offset) const {
        int64_t number = 0;
        for (size_t i = offset; i < offset + 4; ++i) {
            number = number << 8 | static_cast<unsigned char>(m_Bytes[i]);
        }
        return number;
    }

    std::array<char, 100> m_Bytes{};
    bool m_IsEmpty;
};

/// Whether the file has no content. Looks at it before SQLite does, which takes more for its own
/// than documents. Throws DocumentMissing or DocumentError.
bool IsEmpty(const char* action, const std::string& file) {
    std::ifstream stream = OpenFile(action, file);
    const Header header(stream);
    if (stream.bad()) {
        throw DocumentError(action, file, "it cannot be read");
    }
    if (!header.IsEmpty() && !header.MayBeDocument()) {
        throw DocumentError(action, file, "it is no document of settings");
    }
    if (header.Version() > kVersion) {
        throw DocumentError(action, file, "a newer version of the program saved it");
    }
    return header.IsEmpty();
}

/// SQLite takes any file of that name beside a document for the journal of a save that was
/// interrupted, and removes it.
void CheckJournal(const char* action, const std::string& file) {
    const std::string journal = std::filesystem::weakly_canonical(file).string() + "-journal";
    std::ifstream stream(journal, std::ios::binary);
    const int first = stream.get();
    if (first > 0 && first != 0xD9) { // what a journal begins with, or nothing yet
        throw DocumentError(action, file, "the file beside it that is called its journal is none");
    }
}

void CheckContent(const Database& database) {
    // What the tables are called in the file is not to be trusted.
    database.Run("PRAGMA trusted_schema = OFF");
    Statement tables(database,
        "SELECT group_concat(sql, ';') FROM "
        "(SELECT sql FROM sqlite_master WHERE sql IS NOT NULL ORDER BY name)");
    Statement check(database, "PRAGMA integrity_check(1)");
    if (!tables.Step() || tables.Bytes(0) != kTables || !check.Step() || check.Bytes(0) != "ok") {
        throw SqliteError(SQLITE_CORRUPT);
    }
}

/// Inside a transaction, if that is wanted.
void MakeEmpty(const Database& database) {
    database.Run("DROP TABLE IF EXISTS entry; DROP TABLE IF EXISTS folder;" + std::string(kTables) +
                 "; PRAGMA application_id = " + std::to_string(kApplicationID) +
                 "; PRAGMA user_version = " + std::to_string(kVersion));
    Statement(database, "INSERT INTO folder VALUES(?, 0, NULL, '')", DOCUMENT_ROOTFOLDER).Step();
}

int64_t CountPages(const Database& database) {
    Statement count(database, "PRAGMA page_count");
    count.Step();
    return count.Integer(0);
}

Database OpenUnlessInterrupted(const std::string& file) {
    if (IsEmpty("load", file)) {
        return OpenInMemory();
    }
    Database database(file, Database::Access::kRead);
    database.Run("BEGIN"); // all that is read is of one save
    CheckContent(database);
    return database;
}

/// Reading with the right to write does it.
void UndoInterruptedSave(const std::string& file) {
    CountPages(Database(file, Database::Access::kWrite));
}

} // namespace

Database OpenInMemory() {
    Database database(":memory:", Database::Access::kCreate);
    MakeEmpty(database);
    return database;
}

Database OpenToLoad(const std::string& file) {
    // SQLite gives names that are not absolute meanings of its own.
    const std::string absolute = std::filesystem::absolute(file).string();
    CheckJournal("load", absolute);
    try {
        try {
            return OpenUnlessInterrupted(absolute);
        } catch (const SqliteError& error) {
            if (error.m_Code != SQLITE_READONLY_ROLLBACK) {
                throw;
            }
        }
        UndoInterruptedSave(absolute);
        return OpenUnlessInterrupted(absolute);
    } catch (const SqliteError& error) {
        throw DocumentError("load", file, error.what());
    }
}

SavePlace::SavePlace(const std::string& file) {
    std::error_code error;
    m_IsNew = !std::filesystem::exists(file, error);
    // Not to wait for somebody at the other end of a pipe.
    const int descriptor = open(file.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
    if (descriptor < 0) {
        throw DocumentError("save", file, std::strerror(errno));
    }
    close(descriptor);
    m_File = std::filesystem::canonical(file, error).string();
    if (error) {
        throw DocumentError("save", file, error.message());
    }
}

SavePlace::~SavePlace() {
    std::error_code error;
    if (m_IsNew && std::filesystem::file_size(m_File, error) == 0) {
        std::filesystem::remove(m_File, error);
    }
}

Database SavePlace::Open() const {
    IsEmpty("save", m_File);
    CheckJournal("save", m_File);
    try {
        Database database(m_File, Database::Access::kWrite);
        if (CountPages(database) > 0) {
            CheckContent(database);
        }
        database.Run("PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL;"
                     "PRAGMA temp_store = MEMORY; BEGIN IMMEDIATE");
        MakeEmpty(database);
        return database;
    } catch (const SqliteError& error) {
        throw DocumentError("save", m_File, error.what());
    }
}
