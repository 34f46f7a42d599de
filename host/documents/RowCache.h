#pragma once

#include "host/documents/DocumentLevel.h"

#include <list>

/// The rows of a document that were asked for last, read from its text. Used on one thread.
class RowCache {
public:
    /// The row of a level. The text is the one that the level was read from. It stays where it is
    /// until the next question. Throws std::bad_alloc.
    const DocumentRow& Find(const DocumentText& text, const DocumentLevel& level, uint32_t index);
    /// To be called when levels are gone, of which nothing is known here.
    void Clear() { m_Read.clear(); }

private:
    struct ReadGroup {
        const DocumentLevel* m_Level;
        uint32_t m_First; ///< index of the first row
        std::vector<DocumentRow> m_Rows;
    };

    std::list<ReadGroup> m_Read; ///< the last one asked for is in front
};
