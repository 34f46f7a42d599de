#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/interfaces/FileInterfaces.h"
#include "host/components/ContentState.h"
#include "host/components/HostObject.h"
#include "host/data/CollectionVersion.h"
#include "host/documents/DocumentLevel.h"
#include "host/drawing/DrawnItem.h"
#include "host/reading/BackgroundReads.h"

/// What the branches of one document share, for as long as any of them lives.
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
/// part has a single row that says so. Nothing can be inserted, and items are made when they are
/// asked for: see DocumentLevel.
class DocumentBranch final : public HostObject<DocumentBranch, ISuperCollection, CollectionVersion,
                                 IFileArchive, DrawnItem, IHostRereadable> {
public:
    static constexpr const char* kKind = "DocumentBranch";

    /// One that is still to be read, or where `part` is nowhere, that is filled by who makes it.
    DocumentBranch(ItemKind kind, DocumentHelpersPtr helpers, const DocumentPart& part = {})
        : m_Helpers(std::move(helpers)), m_Part(part),
          m_State(part.IsSomewhere() ? State::kUnread : State::kRead) {
        SetLook({kind});
    }
    ~DocumentBranch();

    /// The whole text, of which these rows were read; on any thread. `progress`, which may be null,
    /// may make an end of it. Throws when memory runs out.
    static SmartPtr<ISuperCollection> MakeRoot(
        const DocumentHelpersPtr& helpers, DocumentRows rows, ReadProgress* progress = nullptr);

    int32_t GetCount(int32_t* count) override;
    int32_t GetItem(int32_t index, IUnknown** item) override;
    int32_t GetItemName(int32_t index, IString** name) override;
    int32_t GetItemData(int32_t index, IUnknown** data) override;
    int32_t GetItemFlags(int32_t index, int32_t* flags) override;
    int32_t SetItemFlags(int32_t index, int32_t flags) override;
    int32_t AddEntry(IString*, IString*, IString*, int32_t) override { return E_FAIL; }
    int32_t InsertItem(int32_t, int32_t, IUnknown*, int32_t, int32_t) override { return E_FAIL; }
    int32_t RemoveAll() override;

    int32_t SetFileName(IString* /*fileName*/) override { return E_FAIL; }
    /// Reads the part once, or begins to. E_FAIL when memory runs out; a later call tries again.
    int32_t Populate() override;
    int32_t GetContentState(int32_t selector, int32_t* value) override {
        return AnswerContentState(m_State != State::kUnread, selector, value);
    }

    int32_t ReadAgain(int32_t newFlags) override;
    int32_t IsChanged() override;

    LevelPlace& Place() { return m_Place; }

private:
    enum class State {
        kUnread,
        kAwaited, ///< it is being read
        kRead
    };

    static DocumentLevelPtr MakeLevel(
        const DocumentHelpersPtr& helpers, std::deque<DocumentRow> rows, ReadProgress* progress);
    BackgroundReadsPtr Reads() const { return m_Helpers->m_Reads.lock(); }
    std::optional<DocumentLevelPtr> Read();
    void Show(DocumentLevelPtr level);
    DocumentLevel::Row* Find(int32_t index) { return m_Level ? m_Level->Find(index) : nullptr; }
    SmartPtr<IUnknown> MakeItem(int32_t index);

    DocumentHelpersPtr m_Helpers; ///< never null
    DocumentPart m_Part;
    DocumentLevelPtr m_Level; ///< null: no rows
    LevelPlace m_Place;
    State m_State;
};
