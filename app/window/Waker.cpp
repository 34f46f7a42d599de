#include "app/window/Waker.h"

#include "host/reading/QuietThread.h"

#include <SDL.h>
#include <cerrno>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

Waker::Waker(int descriptor)
    : m_Descriptor(descriptor), m_Poll(epoll_create1(EPOLL_CLOEXEC)),
      m_Stop(eventfd(0, EFD_CLOEXEC)), m_EventType(SDL_RegisterEvents(1)) {
    for (const int each : {m_Descriptor, m_Stop}) {
        epoll_event wanted{.events = EPOLLIN | EPOLLONESHOT, .data = {.fd = each}};
        epoll_ctl(m_Poll, EPOLL_CTL_ADD, each, &wanted);
    }
    m_Thread = StartQuietThread([this] { Run(); });
}

Waker::~Waker() {
    eventfd_write(m_Stop, 1);
    m_Thread.join();
    close(m_Stop);
    close(m_Poll);
}

bool Waker::IsFrom(const SDL_Event& event) const {
    return event.type == m_EventType;
}

void Waker::Arm() {
    epoll_event wanted{.events = EPOLLIN | EPOLLONESHOT, .data = {.fd = m_Descriptor}};
    epoll_ctl(m_Poll, EPOLL_CTL_MOD, m_Descriptor, &wanted);
}

/// On the waker's own thread.
void Waker::Run() {
    epoll_event ready{};
    int count = 0;
    while ((count = epoll_wait(m_Poll, &ready, 1, -1)) > 0 || errno == EINTR) {
        if (count > 0 && ready.data.fd == m_Stop) {
            return;
        }
        SDL_Event wake{};
        wake.type = m_EventType;
        if (count > 0 && SDL_PushEvent(&wake) < 0) {
            Arm(); // too many events wait already: until they are fewer
        }
    }
}
