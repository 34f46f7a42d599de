#pragma once

#include "framework/interfaces/FileInterfaces.h"
#include "host/data/CollectionVersion.h"
#include "host/data/SuperCollection.h"
#include "host/documents/DocumentText.h"
#include "host/drawing/DrawnItem.h"
#include "host/reading/BackgroundReads.h"

/// What the branches of one document share, which live as long as something of it is to be read.
struct DocumentHelpers {
    DocumentTextPtr m_Text;  ///< never null
    std::string m_Name = {}; ///< of the document, for users
    /// Reads beside the window's thread; without it all is read at once. Not held, since a thread
    /// of its own may be the last to hold what it read.
    std::weak_ptr<BackgroundReads> m_Reads = {};
};
using DocumentHelpersPtr = std::shared_ptr<const DocumentHelpers>;

/// A part of a text as a collection, read when it is asked to be, as a folder is. Where that takes
/// long it goes on beside the window's thread: until it is over, when it counts as changed, the
/// part has a single row that says so.
class DocumentBranch final : public HostObject<DocumentBranch, SuperCollectionBase,
                                 CollectionVersion, IFileArchive, DrawnItem, IHostRereadable> {
public:
    static constexpr const char* kKind = "DocumentBranch";

    /// Without helpers, one that holds what it is given.
    explicit DocumentBranch(
        ItemKind kind, DocumentHelpersPtr helpers = nullptr, const DocumentPart& part = {})
        : m_Helpers(std::move(helpers)), m_Part(part) {
        SetLook({kind});
    }
    ~DocumentBranch();

    /// The whole text, of which these rows were read; on any thread. `progress`, which may be null,
    /// may make an end of it. Throws when memory runs out.
    static SmartPtr<ISuperCollection> MakeRoot(
        const DocumentHelpersPtr& helpers, DocumentRows rows, ReadProgress* progress = nullptr);

    int32_t SetFileName(IString* /*fileName*/) override { return E_FAIL; }
    /// Reads the part once, or begins to. E_FAIL when memory runs out; a later call tries again.
    int32_t Populate() override;
    int32_t GetContentState(int32_t selector, int32_t* value) override;

    int32_t ReadAgain(int32_t newFlags) override;
    int32_t IsChanged() override;

private:
    BackgroundReadsPtr Reads() const { return m_Helpers->m_Reads.lock(); }
    std::optional<std::vector<Entry>> Read();

    DocumentHelpersPtr m_Helpers; ///< null once the part is read
    DocumentPart m_Part;
    bool m_IsAwaited = false; ///< it is being read
};
