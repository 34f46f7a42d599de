#pragma once

#include "host/documents/LiveItems.h"
#include "host/documents/RowCache.h"
#include "host/reading/BackgroundReads.h"

#include <memory>
#include <string>
#include <utility>

/// What the items of one document share, for as long as any of them lives. Used on one thread once
/// there are any.
class DocumentHelpers {
public:
    /// `text` is not null, and `name` the document's for users. `reads` reads beside the window's
    /// thread; without it all is read at once. It is not held, since a thread of its own may be the
    /// last to hold what it read.
    explicit DocumentHelpers(
        DocumentTextPtr text, std::string name = {}, std::weak_ptr<BackgroundReads> reads = {})
        : m_Text(std::move(text)), m_Name(std::move(name)), m_Reads(std::move(reads)) {}

    const DocumentTextPtr& Text() const { return m_Text; }
    const std::string& Name() const { return m_Name; }
    BackgroundReadsPtr Reads() const { return m_Reads.lock(); }
    void SetReads(std::weak_ptr<BackgroundReads> reads) { m_Reads = std::move(reads); }
    LiveItems& Live() { return m_Live; }

    /// What a row says, until the next question. Throws std::bad_alloc.
    const DocumentRow& RowOf(const DocumentLevel& level, uint32_t index) {
        return m_Rows.Find(*m_Text, level, index);
    }
    /// Ends a level, which may be null, and what is below it.
    void Drop(DocumentLevelPtr level) {
        if (level) {
            m_Live.Drop(std::move(level), [this](const DocumentLevel& from, uint32_t index) {
                return RowOf(from, index).m_Part;
            });
            m_Rows.Clear();
        }
    }

private:
    DocumentTextPtr m_Text;
    std::string m_Name;
    std::weak_ptr<BackgroundReads> m_Reads;
    RowCache m_Rows;
    LiveItems m_Live;
};
using DocumentHelpersPtr = std::shared_ptr<DocumentHelpers>;
