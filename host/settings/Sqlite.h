#pragma once

#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

/// What the database could not do, in words for people.
struct SqliteError : std::runtime_error {
    explicit SqliteError(int code, int systemError = 0);

    int m_Code; ///< one of SQLite's extended result codes
};

/// A connection to a database. All its operations throw SqliteError.
class Database {
public:
    enum class Access { kRead, kWrite, kCreate };

    /// The file name is absolute, or ":memory:". While another program uses the file, everything
    /// waits a few seconds.
    Database(const std::string& file, Access access);

    /// Runs statements that answer nothing.
    void Run(const std::string& statements) const;
    int64_t LastRow() const;
    sqlite3* Get() const { return m_Connection.get(); }
    /// Throws the error that the result code stands for, if it does.
    void Check(int code) const;

private:
    struct Closer {
        void operator()(sqlite3* connection) const;
    };
    std::unique_ptr<sqlite3, Closer> m_Connection;
};

/// One statement with its arguments, which are copied: numbers, texts, bytes, or nothing.
///
///     Statement rows(database, "SELECT id, name FROM folder WHERE parent = ?", parent);
///     while (rows.Step()) {
///         Use(rows.Integer(0), rows.Bytes(1));
///     }
class Statement {
public:
    template <class... Arguments>
    Statement(const Database& database, std::string_view text, const Arguments&... arguments)
        : Statement(database, text) {
        (Bind(arguments), ...);
    }
    Statement(const Database& database, std::string_view text);

    /// Goes to the next row of the answer; false after the last.
    bool Step();
    int64_t Integer(int column) const;
    /// Of a text or of bytes; valid until the next step.
    std::string_view Bytes(int column) const;
    bool IsNull(int column) const;

private:
    void Bind(int64_t value);
    void Bind(std::string_view value);
    void Bind(std::span<const std::byte> value);
    void Bind(std::nullptr_t value);

    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };
    const Database& m_Database;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_Statement;
    int m_Bound = 0;
};
