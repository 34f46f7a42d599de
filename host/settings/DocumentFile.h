#pragma once

#include "host/settings/DocumentError.h"
#include "host/settings/Sqlite.h"

// The file of a document: an SQLite database of two tables with a rollback journal beside it while
// it is saved. A file without content is a document that holds nothing, which is what an
// interrupted first save leaves.

/// The folder that all others lie below.
constexpr int64_t DOCUMENT_ROOTFOLDER = 1;

/// An empty document in memory.
Database OpenInMemory();

/// Opens a document to be read. Nothing is written, unless a save was interrupted: then the old
/// content is put back first. Throws DocumentMissing or DocumentError.
Database OpenToLoad(const std::string& file);

/// A file that is there, to be saved into: made empty when it is missing, and taken away with the
/// object if it still is.
class SavePlace {
public:
    /// Throws DocumentError.
    explicit SavePlace(const std::string& file);
    ~SavePlace();
    SavePlace(const SavePlace&) = delete;
    SavePlace& operator=(const SavePlace&) = delete;

    /// Begins the transaction of a save and empties the document in it. Throws DocumentError for
    /// what is no document.
    Database Open() const;

private:
    std::string m_File; ///< without links
    bool m_IsNew = false;
};
