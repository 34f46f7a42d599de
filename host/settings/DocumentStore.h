#pragma once

#include "framework/interfaces/Types.h"
#include "host/settings/DocumentFile.h"

#include <exception>
#include <optional>

/// The open database behind a document, which its streams share. The first thing that goes wrong
/// ends it: everything after that fails, so that no half of a save is committed.
class DocumentStore {
public:
    DocumentStore(Database database, bool isSaving, std::unique_ptr<SavePlace> place = nullptr)
        : m_Place(std::move(place)), m_Database(std::move(database)), m_IsSaving(isSaving) {}

    /// Run the body of a stream's operation, which gets the database.
    template <class Body>
    int32_t Read(Body&& body) noexcept {
        return Run(body);
    }
    template <class Body>
    int32_t Write(Body&& body) noexcept {
        return m_IsSaving ? Run(body) : E_FAIL;
    }

    /// Throws what went wrong.
    void Check() const {
        if (m_Error) {
            std::rethrow_exception(m_Error);
        }
    }
    void Commit() {
        Run([](const Database& database) {
            database.Run("COMMIT");
            return S_OK;
        });
        Check();
        m_IsSaving = false;
    }
    /// What was not committed is undone.
    void Close() {
        m_Database.reset();
        m_Place.reset();
    }

private:
    template <class Body>
    int32_t Run(const Body& body) noexcept {
        if (!m_Database || m_Error) {
            return E_FAIL;
        }
        try {
            return body(*m_Database);
        } catch (...) {
            m_Error = std::current_exception();
            return E_FAIL;
        }
    }

    std::unique_ptr<SavePlace> m_Place; ///< null unless a file is saved; goes after the database
    std::optional<Database> m_Database; ///< empty once closed
    bool m_IsSaving;
    std::exception_ptr m_Error;
};
