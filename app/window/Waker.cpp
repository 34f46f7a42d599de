#include "app/window/Waker.h"

#include "host/reading/QuietThread.h"

#include <SDL.h>
#include <cerrno>
#include <sys/epoll.h>

namespace {

constexpr const char* kAction = "wait for news";

} // namespace

Waker::Waker(int descriptor)
    : m_Descriptor(descriptor), m_Poll(epoll_create1(EPOLL_CLOEXEC), kAction),
      m_EventType(SDL_RegisterEvents(1)) {
    for (const int each : {m_Descriptor, m_Stop.Get()}) {
        Control(EPOLL_CTL_ADD, each);
    }
    m_Thread = StartQuietThread([this] { Run(); });
}

Waker::~Waker() {
    m_Stop.Set();
    m_Thread.join();
}

/// Does nothing for a negative descriptor.
void Waker::Control(int operation, int descriptor) {
    epoll_event wanted{.events = EPOLLIN | EPOLLONESHOT, .data = {.fd = descriptor}};
    if (descriptor >= 0) {
        CheckCall(epoll_ctl(m_Poll.Get(), operation, descriptor, &wanted), kAction);
    }
}

bool Waker::IsFrom(const SDL_Event& event) const {
    return event.type == m_EventType;
}

void Waker::Arm() {
    Control(EPOLL_CTL_MOD, m_Descriptor);
}

/// On the waker's own thread.
void Waker::Run() {
    epoll_event ready{};
    int count = 0;
    while ((count = epoll_wait(m_Poll.Get(), &ready, 1, -1)) > 0 || errno == EINTR) {
        if (count > 0 && ready.data.fd == m_Stop.Get()) {
            return;
        }
        SDL_Event wake{};
        wake.type = m_EventType;
        if (count > 0 && SDL_PushEvent(&wake) < 0) {
            Arm(); // too many events wait already: until they are fewer
        }
    }
}
