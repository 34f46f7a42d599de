#pragma once

#include "framework/interfaces/StreamInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/settings/DocumentError.h"

#include <memory>
#include <string>

class DocumentStore;

/// A store of settings, in a file or in memory: named entries in numbered folders.
///
///     Document document = Document::Save("tree.settings");
///     component->Save(document.Root().Get(), 0);
///     document.Commit();
///
/// Until the commit the file holds its old content, and keeps it when the program ends, the disk is
/// full or the document goes without one. Streams may outlive the document; all they do fails then.
class Document {
public:
    /// A stored document, which cannot be changed. Throws DocumentMissing or DocumentError.
    static Document Load(const std::string& file);
    /// Begins to save: the document is empty. Throws DocumentError, also for an existing file that
    /// is no document, which stays as it is.
    static Document Save(const std::string& file);
    /// Begins to save into memory.
    static Document InMemory();

    Document(Document&&) = default;
    Document& operator=(Document&&) = delete;
    ~Document();

    /// The stream of the outermost folder; it answers IFolderStream.
    SmartPtr<IDataStream> Root() const;
    /// Throws DocumentError when something could not be read or written, which the streams' users
    /// need not have noticed.
    void Check() const;
    /// Makes what was written the document's content. Throws DocumentError: the old content stays.
    void Commit();

private:
    Document(std::shared_ptr<DocumentStore> store, const char* action, std::string file);

    std::shared_ptr<DocumentStore> m_Store;
    const char* m_Action;
    std::string m_File;
};
