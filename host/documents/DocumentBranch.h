#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/interfaces/FileInterfaces.h"
#include "host/components/ContentState.h"
#include "host/components/HostObject.h"
#include "host/data/CollectionVersion.h"
#include "host/documents/DocumentHelpers.h"
#include "host/drawing/DrawnItem.h"

/// A part of a text as a collection, read when it is asked to be, as a folder is. Where that takes
/// long it goes on beside the window's thread: until it is over, when it counts as changed, the
/// part has a single row that says so. Nothing can be inserted. Items are made when they are asked
/// for, branches too: what was read below one is its level's.
class DocumentBranch final : public HostObject<DocumentBranch, ISuperCollection, CollectionVersion,
                                 IFileArchive, DrawnItem, IHostRereadable> {
public:
    static constexpr const char* kKind = "DocumentBranch";

    DocumentBranch(ItemKind kind, DocumentHelpersPtr helpers) : m_Helpers(std::move(helpers)) {
        SetLook({kind});
    }
    ~DocumentBranch();

    /// The whole text, read at once, on any thread. `progress`, which may be null, may make an end
    /// of it. Throws when memory runs out.
    static SmartPtr<ISuperCollection> MakeRoot(
        const DocumentHelpersPtr& helpers, ReadProgress* progress = nullptr);

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
        return AnswerContentState(m_Place.Below() != nullptr, selector, value);
    }

    int32_t ReadAgain(int32_t newFlags) override;
    int32_t IsChanged() override;

    LivePlace& Place() { return m_Place; }

private:
    template <class Answer>
    int32_t AnswerRow(int32_t index, Answer answer);
    void ReadBeside(BackgroundReads& reads, const DocumentPart& part);
    void Show(DocumentLevelPtr level);
    SmartPtr<IUnknown> MakeItem(DocumentLevel& level, uint32_t index);

    DocumentHelpersPtr m_Helpers; ///< never null
    LivePlace m_Place;
    bool m_IsAwaited = false; ///< it is being read
};
