#pragma once

#include "uitree/RowMarks.h"
#include "uitree/TreeItems.h"

#include <mutex>

/// A version of a bound collection's rows; without a source where nobody vouches for them.
struct RowsVersion {
    SmartPtr<ICollectionVersion> m_Source;
    uint64_t m_Binding = 0; ///< which one of the control's bindings it belongs to
    uint64_t m_Number = 0;

    /// Asks the source for its number; without an answer the source goes.
    void Take();
    /// Asks the source again: whether nothing has changed. False where nobody vouches.
    bool Stands() const;
};

/// What is known of the bound collection's rows as long as its version stands: how many there are,
/// and ways to some of them. Known rows hold no reference to anything but the version's source.
class KnownRows {
public:
    /// Another collection is bound: nothing is known of it. `source` is null where nobody vouches.
    /// Any thread may bind and ask for the binding.
    void Bind(SmartPtr<ICollectionVersion> source);
    /// The version of the binding, whose number is still to be taken.
    RowsVersion Binding() const;

    // For the one thread that draws and takes input.

    /// Whether rows of exactly this version are known.
    bool AreOf(const RowsVersion& version) const;
    /// What is known of the bound collection: its version then and the number of its rows. They
    /// stay where nothing is.
    void Recall(RowsVersion& version, int32_t& count) const;
    int32_t Count() const { return m_Count; }
    RowMarks& Marks() { return m_Marks; }
    /// Takes over what was counted at a version, unless nobody vouches for it.
    void Learn(const RowsVersion& version, int32_t count, const RowMarks& marks);
    /// Writes a flag word that was `before`. The rows stay known where their number stays and
    /// nothing else happened meanwhile.
    void WriteFlags(ISuperCollection& collection, int32_t index, int32_t before, int32_t after);

private:
    bool AreCurrent() const;

    mutable std::mutex m_Mutex; ///< for the two that follow; nobody but a reference counts under it
    SmartPtr<ICollectionVersion> m_Source;
    uint64_t m_Binding = 1;

    uint64_t m_KnownBinding = 0; ///< 0 while nothing is known
    uint64_t m_KnownNumber = 0;
    int32_t m_Count = 0;
    RowMarks m_Marks;
};
