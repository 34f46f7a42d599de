#include "uitree/KnownRows.h"

#include <utility>

void RowsVersion::Take() {
    if (m_Source && m_Source->GetVersion(&m_Number) < 0) {
        m_Source.Reset();
    }
}

bool RowsVersion::Stands() const {
    uint64_t now = 0;
    return m_Source && m_Source->GetVersion(&now) >= 0 && now == m_Number;
}

/// The previous source goes after the mutex, since its last reference may be this one.
void KnownRows::Bind(SmartPtr<ICollectionVersion> source) {
    const std::lock_guard lock(m_Mutex);
    std::swap(m_Source, source);
    ++m_Binding;
}

RowsVersion KnownRows::Binding() const {
    const std::lock_guard lock(m_Mutex);
    return {m_Source, m_Binding, 0};
}

bool KnownRows::AreOf(const RowsVersion& version) const {
    return version.m_Source && version.m_Binding == m_KnownBinding &&
           version.m_Number == m_KnownNumber;
}

void KnownRows::Recall(RowsVersion& version, int32_t& count) const {
    if (m_KnownBinding == 0) {
        return;
    }
    RowsVersion bound = Binding();
    if (bound.m_Source && bound.m_Binding == m_KnownBinding) {
        version = {std::move(bound.m_Source), m_KnownBinding, m_KnownNumber};
        count = m_Count;
    }
}

/// Whether what is known is still true of the bound collection.
bool KnownRows::AreCurrent() const {
    RowsVersion version;
    int32_t count = 0;
    Recall(version, count);
    return version.Stands();
}

void KnownRows::Learn(const RowsVersion& version, int32_t count, const RowMarks& marks) {
    if (version.m_Source) {
        m_KnownBinding = version.m_Binding;
        m_KnownNumber = version.m_Number;
        m_Count = count;
        m_Marks = marks;
    }
}

void KnownRows::WriteFlags(
    ISuperCollection& collection, int32_t index, int32_t before, int32_t after) {
    const bool isKept = (before & after & NODE_VISIBLE) != 0 && AreCurrent();
    const uint64_t number = m_KnownNumber;
    collection.SetItemFlags(index, after);
    if (isKept && m_KnownNumber == number) {
        ++m_KnownNumber;
        if (!AreCurrent()) { // nothing was counted as a change, or more than the one word
            m_KnownNumber = number;
        }
    }
}
