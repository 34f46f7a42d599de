#include "app/input/Finger.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kTapDistance = 8;  // pixels that a finger may slip
constexpr int64_t kLongPress = 600; // milliseconds
constexpr int64_t kFlingStep = 16;  // milliseconds

std::vector<Input> ClickAt(double x, double y, int32_t button) {
    PointerInput press{button, POINTERACTION_PRESS, 0, x, y};
    PointerInput release{button, POINTERACTION_RELEASE, 0, x, y};
    return {press, release};
}

} // namespace

void Finger::GoDown(int64_t id, double x, double y, int64_t now) {
    if (!m_Contact) {
        m_Contact = {id, x, y, now, m_Fling.IsOn(now) ? State::kStopped : State::kDown};
        m_Fling.Begin();
    }
}

Finger::Contact* Finger::Known(int64_t id) {
    return m_Contact && m_Contact->m_Id == id ? &*m_Contact : nullptr;
}

std::vector<Input> Finger::Move(int64_t id, double x, double y, int64_t now) {
    Contact* contact = Known(id);
    if (!contact || contact->m_State == State::kPressed) {
        return {};
    }
    const double pan = y - contact->m_Y;
    const bool begins =
        contact->m_State != State::kPans && std::hypot(x - contact->m_X, pan) > kTapDistance;
    contact->m_State = begins ? State::kPans : contact->m_State;
    if (contact->m_State != State::kPans) {
        return {};
    }
    m_Fling.Move(pan, now);
    const TouchInput update{TOUCHPHASE_UPDATE, pan};
    return begins ? std::vector<Input>{TouchInput{TOUCHPHASE_START, 0}, update}
                  : std::vector<Input>{update};
}

std::vector<Input> Finger::GoUp(int64_t id, int64_t now) {
    const Contact* known = Known(id);
    if (!known) {
        return {};
    }
    const Contact contact = *known;
    m_Contact.reset();
    if (contact.m_State == State::kPans) {
        m_Fling.GoUp(now);
    }
    return contact.m_State == State::kDown ? ClickAt(contact.m_X, contact.m_Y, POINTERSTATE_PRIMARY)
                                           : std::vector<Input>{};
}

std::vector<Input> Finger::TakeDue(int64_t now) {
    if (m_Contact && m_Contact->m_State == State::kDown && now - m_Contact->m_Since >= kLongPress) {
        m_Contact->m_State = State::kPressed;
        return ClickAt(m_Contact->m_X, m_Contact->m_Y, POINTERSTATE_SECONDARY);
    }
    return m_Fling.IsOn(now) ? std::vector<Input>{TouchInput{TOUCHPHASE_UPDATE, m_Fling.Pan(now)}}
                             : std::vector<Input>{};
}

std::optional<int64_t> Finger::UntilNext(int64_t now) const {
    if (m_Contact && m_Contact->m_State == State::kDown) {
        return std::max<int64_t>(m_Contact->m_Since + kLongPress - now, 0);
    }
    return m_Fling.IsOn(now) ? std::optional(kFlingStep) : std::nullopt;
}
