#include "host/settings/Sqlite.h"

#include <cstring>
#include <sqlite3.h>

namespace {

constexpr int kPatience = 5000; // milliseconds

std::string Describe(int code, int systemError) {
    switch (code & 0xFF) {
    case SQLITE_FULL:
        return "the disk is full";
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return "it is damaged";
    case SQLITE_BUSY:
        return "another program is using it";
    case SQLITE_READONLY:
        return "it cannot be written";
    case SQLITE_CANTOPEN:
    case SQLITE_IOERR:
        return systemError != 0 ? std::strerror(systemError) : sqlite3_errstr(code);
    default:
        return sqlite3_errstr(code);
    }
}

} // namespace

SqliteError::SqliteError(int code, int systemError)
    : std::runtime_error(Describe(code, systemError)), m_Code(code) {}

Database::Database(const std::string& file, Access access) {
    const int flags = access == Access::kRead    ? SQLITE_OPEN_READONLY
                      : access == Access::kWrite ? SQLITE_OPEN_READWRITE
                                                 : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    sqlite3* connection = nullptr;
    const int code =
        sqlite3_open_v2(file.c_str(), &connection, flags | SQLITE_OPEN_EXRESCODE, nullptr);
    m_Connection.reset(connection); // there is one even when it failed
    Check(code);
    sqlite3_busy_timeout(connection, kPatience);
}

void Database::Run(const std::string& statements) const {
    Check(sqlite3_exec(Get(), statements.c_str(), nullptr, nullptr, nullptr));
}

int64_t Database::LastRow() const {
    return sqlite3_last_insert_rowid(Get());
}

void Database::Check(int code) const {
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE) {
        throw SqliteError(code, Get() ? sqlite3_system_errno(Get()) : 0);
    }
}

void Database::Closer::operator()(sqlite3* connection) const {
    sqlite3_close(connection);
}

Statement::Statement(const Database& database, std::string_view text) : m_Database(database) {
    sqlite3_stmt* statement = nullptr;
    database.Check(sqlite3_prepare_v2(
        database.Get(), text.data(), static_cast<int>(text.size()), &statement, nullptr));
    m_Statement.reset(statement);
}

bool Statement::Step() {
    const int code = sqlite3_step(m_Statement.get());
    m_Database.Check(code);
    return code == SQLITE_ROW;
}

int64_t Statement::Integer(int column) const {
    return sqlite3_column_int64(m_Statement.get(), column);
}

std::string_view Statement::Bytes(int column) const {
    const void* bytes = sqlite3_column_blob(m_Statement.get(), column);
    const int size = sqlite3_column_bytes(m_Statement.get(), column);
    return {static_cast<const char*>(bytes), bytes ? static_cast<size_t>(size) : 0};
}

bool Statement::IsNull(int column) const {
    return sqlite3_column_type(m_Statement.get(), column) == SQLITE_NULL;
}

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

void Statement::Bind(int64_t value) {
    m_Database.Check(sqlite3_bind_int64(m_Statement.get(), ++m_Bound, value));
}

void Statement::Bind(std::string_view value) {
    const char* text = value.empty() ? "" : value.data();
    m_Database.Check(sqlite3_bind_text64(m_Statement.get(), ++m_Bound, text, value.size(),
        SQLITE_TRANSIENT, SQLITE_UTF8)); // NOLINT(performance-no-int-to-ptr): the library's own
}

void Statement::Bind(std::span<const std::byte> value) {
    const void* bytes = value.empty() ? "" : static_cast<const void*>(value.data());
    m_Database.Check(sqlite3_bind_blob64(m_Statement.get(), ++m_Bound, bytes, value.size(),
        SQLITE_TRANSIENT)); // NOLINT(performance-no-int-to-ptr): the library's own
}

void Statement::Bind(std::nullptr_t /*value*/) {
    m_Database.Check(sqlite3_bind_null(m_Statement.get(), ++m_Bound));
}
