#include "host/settings/Document.h"

#include "host/settings/DocumentFolder.h"

Document::Document(std::shared_ptr<DocumentStore> store, const char* action, std::string file)
    : m_Store(std::move(store)), m_Action(action), m_File(std::move(file)) {}

Document::~Document() {
    if (m_Store) {
        m_Store->Close();
    }
}

Document Document::Load(const std::string& file) {
    return {std::make_shared<DocumentStore>(OpenToLoad(file), false), "load", file};
}

Document Document::Save(const std::string& file) {
    auto place = std::make_unique<SavePlace>(file);
    Database database = place->Open();
    return {
        std::make_shared<DocumentStore>(std::move(database), true, std::move(place)), "save", file};
}

Document Document::InMemory() {
    Database database = OpenInMemory();
    database.Run("BEGIN");
    return {std::make_shared<DocumentStore>(std::move(database), true), "save", "memory"};
}

SmartPtr<IDataStream> Document::Root() const {
    return SmartPtr<IDataStream>(
        DocumentFolder::Make(m_Store, DOCUMENT_ROOTFOLDER, DOCUMENT_DEEPESTFOLDER).Get());
}

void Document::Check() const {
    try {
        m_Store->Check();
    } catch (const std::exception& error) {
        throw DocumentError(m_Action, m_File, error.what());
    }
}

void Document::Commit() {
    try {
        m_Store->Commit();
    } catch (const std::exception& error) {
        throw DocumentError(m_Action, m_File, error.what());
    }
}
