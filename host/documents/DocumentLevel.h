#pragma once

#include "host/documents/DocumentText.h"

#include <memory>
#include <utility>
#include <vector>

class DocumentLevel;
using DocumentLevelPtr = std::unique_ptr<DocumentLevel>;

/// The rows of one part of a document, as little of each as has to stay: a byte that says what it
/// is, its flag word once the words differ, and the level below it once that was read. The labels
/// are read from the text again, a group of rows at a time: see RowCache. Used on one thread at a
/// time.
class DocumentLevel {
public:
    /// Rows that are read together.
    struct Group {
        RowPlace m_From;      ///< nowhere: where the part begins
        uint32_t m_First = 0; ///< index of the first row
        /// The rows, where reading them again takes long; else null.
        std::unique_ptr<std::vector<DocumentRow>> m_Kept = {};
    };
    struct Kind {
        Kind() = default;
        Kind(ItemKind kind, bool isBranch) : m_Kind(kind), m_IsBranch(isBranch), m_IsLive(false) {}

        ItemKind m_Kind : 6;
        bool m_IsBranch : 1;
        bool m_IsLive : 1; ///< somebody holds the item: see LiveItems
    };

    /// Of `part`, with a kind for each row and flags of 0. Without groups all rows are one that is
    /// read from where the part begins. Throws std::bad_alloc.
    DocumentLevel(
        const DocumentPart& part, const std::vector<Kind>& kinds, std::vector<Group> groups);
    ~DocumentLevel() {
        TakeApart([](DocumentLevel&) {});
    }
    DocumentLevel(const DocumentLevel&) = delete;
    DocumentLevel& operator=(const DocumentLevel&) = delete;

    const DocumentPart& Part() const { return m_Part; }
    uint32_t Count() const { return m_Count; }
    const Kind& KindOf(uint32_t index) const {
        return m_Count <= kFew ? m_FewKinds[index] : m_More->m_Kinds[index];
    }
    /// The group that a row is in; null where all rows are one.
    const Group* GroupOf(uint32_t index) const;
    /// Index behind the last row of a group.
    uint32_t EndOf(const Group* group) const;

    int32_t Flags(uint32_t index) const;
    /// Throws std::bad_alloc.
    void SetFlags(uint32_t index, int32_t flags);
    void SetAllFlags(int32_t flags);

    /// What is below a row; null while that was not read.
    DocumentLevel* Below(uint32_t index) const {
        return m_More && m_More->m_Below ? m_More->m_Below[index].get() : nullptr;
    }
    /// Puts a level below a row, and answers what was there. Throws std::bad_alloc.
    DocumentLevelPtr ExchangeBelow(uint32_t index, DocumentLevelPtr level);
    DocumentLevelPtr TakeBelow(uint32_t index);

    void SetLive(uint32_t index, bool isLive);

    /// Takes away the levels below and calls `visit` for this one and each of them, above before
    /// below, before it ends. What `visit` takes away from a level stays whole. Needs no memory,
    /// and no stack for depth.
    template <class Visitor>
    void TakeApart(Visitor visit);

private:
    static constexpr uint32_t kFew = 8;

    /// What most levels do without.
    struct More {
        bool IsNeeded() const {
            return m_End > m_Begin || m_Flags || m_Kinds || m_Below || m_Groups;
        }

        uint32_t m_Begin = 0;               ///< from this row on
        uint32_t m_End = 0;                 ///< to before this one the flags are
        int32_t m_Run = 0;                  ///< these, unless there are
        std::unique_ptr<int32_t[]> m_Flags; ///< those of each row
        std::unique_ptr<Kind[]> m_Kinds;    ///< of more than a few rows
        std::unique_ptr<DocumentLevelPtr[]> m_Below;
        std::unique_ptr<std::vector<Group>> m_Groups;
        DocumentLevelPtr m_Next; ///< while it is taken apart
    };

    More& NeedMore();
    bool ExtendRun(uint32_t index, int32_t flags);

    DocumentPart m_Part;
    uint32_t m_Count;
    int32_t m_Flags = 0; ///< of the rows for which there are no others
    Kind m_FewKinds[kFew] = {};
    std::unique_ptr<More> m_More;
};

template <class Visitor>
void DocumentLevel::TakeApart(Visitor visit) {
    DocumentLevelPtr next;
    const auto takeBelow = [&](DocumentLevel& level) {
        visit(level);
        for (uint32_t i = 0; level.m_More && level.m_More->m_Below && i < level.m_Count; ++i) {
            DocumentLevelPtr below = std::move(level.m_More->m_Below[i]);
            if (below && below->m_More) {
                below->m_More->m_Next = std::exchange(next, nullptr);
                next = std::move(below);
            } else if (below) {
                visit(*below);
            }
        }
        if (level.m_More) {
            level.m_More->m_Below.reset();
        }
    };
    takeBelow(*this);
    while (next) {
        const DocumentLevelPtr level = std::exchange(next, nullptr);
        next = std::move(level->m_More->m_Next);
        takeBelow(*level);
    }
}
