#pragma once

#include "framework/runtime/SmartPtr.h"
#include "host/documents/DocumentLevel.h"

#include <cstddef>
#include <functional>
#include <vector>

class LiveItems;

/// Where an item of a document stands, which is a part of the item. What is below the item is its
/// level's, and its own where it is in none.
class LivePlace {
public:
    LivePlace() = default;
    ~LivePlace();
    LivePlace(const LivePlace&) = delete;
    LivePlace& operator=(const LivePlace&) = delete;

    /// The level that the item is in; null when there is none, or none any more.
    DocumentLevel* Level() const { return m_Level; }
    uint32_t Index() const { return m_Index; }
    /// The part that the item stands for, of one that is in no level any more and may be read.
    const DocumentPart& LeftPart() const { return m_LeftPart; }

    DocumentLevel* Below() const { return m_Level ? m_Level->Below(m_Index) : m_Below.get(); }
    /// What is below it where that is its own.
    DocumentLevelPtr TakeBelow() { return std::move(m_Below); }
    /// Puts a level below the item, and answers what was there. Throws std::bad_alloc.
    DocumentLevelPtr ExchangeBelow(DocumentLevelPtr level);

    /// The item, which stands for `part`, stays although nobody else holds it, as long as it is in
    /// its level.
    void Hold(const DocumentPart& part) {
        m_LeftPart = part;
        m_Held = m_Level ? m_Item : nullptr;
    }
    void LetGo() { m_Held.Reset(); }

private:
    friend LiveItems;

    LiveItems* m_Items = nullptr;
    LivePlace* m_Next = nullptr; ///< of the same slot there
    DocumentLevel* m_Level = nullptr;
    uint32_t m_Index = 0;
    IUnknown* m_Item = nullptr; ///< which this is a part of
    DocumentLevelPtr m_Below;
    DocumentPart m_LeftPart;
    SmartPtr<IUnknown> m_Held; ///< the item by itself
};

/// The items of a document that somebody holds, by level and row: an item is made when it is asked
/// for, and is the same as long as it lives. Used on one thread.
class LiveItems {
public:
    /// Null when nobody holds the item of a row.
    IUnknown* Find(const DocumentLevel& level, uint32_t index);
    /// Gives a row its item, which `place` is a part of. Throws std::bad_alloc.
    void Connect(DocumentLevel& level, uint32_t index, IUnknown* item, LivePlace& place);

    using PartOf = std::function<DocumentPart(const DocumentLevel& level, uint32_t index)>;
    /// Ends a level and what is below it; `partOf` tells what a row stands for.
    /// Items that others hold live on, with what is below them.
    void Drop(DocumentLevelPtr level, const PartOf& partOf);

private:
    friend LivePlace;

    size_t SlotOf(const DocumentLevel& level, uint32_t index) const;
    LivePlace** LinkTo(const DocumentLevel& level, uint32_t index);
    void Grow();
    void Disconnect(LivePlace& place);
    void TakeOut(LivePlace& place, const PartOf& partOf);

    std::vector<LivePlace*> m_Slots; ///< a power of two of them, or none
    size_t m_Count = 0;
};
