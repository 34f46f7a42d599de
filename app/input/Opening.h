#pragma once

#include "host/data/ItemWalk.h"
#include "host/data/Turn.h"

/// Opens all folders of one level, in turns, between which the tree may be used and may change.
class Opening {
public:
    explicit Opening(SmartPtr<ISuperCollection> level) : m_Place{std::move(level), 0} {}

    /// Opens on until the turn or the level is over, at least one. True when one was opened.
    bool GoOn(const Turn& turn);
    bool IsOver() const { return m_IsOver; }

private:
    void FindPlace();

    Place m_Place;             ///< of the next item
    SmartPtr<IUnknown> m_Next; ///< that item, by which its place is found again
    bool m_IsOver = false;
};
