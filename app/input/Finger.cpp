#include "app/input/Finger.h"

#include <cmath>

namespace {

constexpr double kTapDistance = 8; // pixels that a finger may slip

} // namespace

void Finger::GoDown(int64_t id, double x, double y) {
    if (!m_Contact) {
        m_Contact = {id, x, y};
    }
}

std::vector<Input> Finger::Move(int64_t id, double x, double y) {
    if (!m_Contact || m_Contact->m_Id != id) {
        return {};
    }
    const TouchInput update{TOUCHPHASE_UPDATE, y - m_Contact->m_Y};
    if (m_Contact->m_Pans) {
        return {update};
    }
    m_Contact->m_Pans = std::hypot(x - m_Contact->m_X, y - m_Contact->m_Y) > kTapDistance;
    return m_Contact->m_Pans ? std::vector<Input>{TouchInput{TOUCHPHASE_START, 0}, update}
                             : std::vector<Input>{};
}

std::vector<Input> Finger::GoUp(int64_t id) {
    if (!m_Contact || m_Contact->m_Id != id) {
        return {};
    }
    const Contact contact = *m_Contact;
    m_Contact.reset();
    PointerInput click{.m_State = POINTERSTATE_PRIMARY, .m_X = contact.m_X, .m_Y = contact.m_Y};
    if (contact.m_Pans) {
        return {};
    }
    click.m_Action = POINTERACTION_PRESS;
    const Input press = click;
    click.m_Action = POINTERACTION_RELEASE;
    return {press, click};
}
