#pragma once

#include "host/documents/DocumentLevel.h"

/// Makes levels of the rows of a part: the part's own, and below it those of what is not read
/// later. On any thread.
class LevelBuilder final : public RowSink {
public:
    /// Rows of a part that stands nowhere are all kept. `readBefore` are the bytes that have to be
    /// read whenever some of the part is.
    explicit LevelBuilder(const DocumentPart& part, size_t readBefore = 0) {
        m_Open.push_back({.m_Part = part, .m_LeastBytes = readBefore});
    }

    /// Throws std::bad_alloc, as the next does.
    bool Add(DocumentRow row) override;
    DocumentLevelPtr Take();

private:
    /// A level to which rows may still come.
    struct Level {
        DocumentPart m_Part = {};
        size_t m_LeastBytes = 0; ///< of a group
        std::vector<DocumentLevel::Kind> m_Kinds = {};
        std::vector<DocumentLevel::Group> m_Groups = {};
        size_t m_GroupBegin = 0;              ///< of the last one, in the text
        std::vector<DocumentRow> m_Rows = {}; ///< of the last one
        size_t m_LabelBytes = 0;              ///< of these
        std::vector<std::pair<uint32_t, DocumentLevelPtr>> m_Below = {};

        void Add(DocumentRow row);
        DocumentLevelPtr Finish();
        bool IsFull(const RowPlace& next) const;
        void BeginGroup(const RowPlace& place, size_t begin);
        void EndGroup();
    };

    void CloseTo(size_t count);

    std::vector<Level> m_Open; ///< each is below the last row of the one before
};
