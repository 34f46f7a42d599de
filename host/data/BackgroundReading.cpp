#include "host/data/BackgroundReading.h"

#include "host/data/QuietThread.h"

#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

namespace {

int MakeSignal() {
    return eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
}

/// Makes it unreadable until it is written to again.
void Drain(int signal) {
    eventfd_t unused = 0;
    eventfd_read(signal, &unused);
}

} // namespace

BackgroundReading::BackgroundReading(Work work)
    : m_News(MakeSignal()), m_Call(MakeSignal()), m_Text(ToText({})) {
    m_Thread = StartQuietThread([this, work = std::move(work)] { Run(work); });
}

BackgroundReading::~BackgroundReading() {
    {
        const std::lock_guard lock(m_Mutex);
        m_IsLeft = true;
        eventfd_write(m_Call, 1);
    }
    m_Thread.join();
    close(m_News);
    close(m_Call);
}

std::string BackgroundReading::TakeNews() {
    const std::lock_guard lock(m_Mutex);
    Drain(m_News);
    return m_IsOver ? "" : m_Text;
}

bool BackgroundReading::WaitFor(std::chrono::milliseconds patience) {
    std::unique_lock lock(m_Mutex);
    return m_Ended.wait_for(lock, patience, [this] { return m_IsOver; });
}

void BackgroundReading::Stop() {
    const std::lock_guard lock(m_Mutex);
    m_IsStopWanted = true;
    eventfd_write(m_Call, 1);
}

bool BackgroundReading::WasStopped() const {
    const std::lock_guard lock(m_Mutex);
    return m_IsStopped;
}

SourceMaker BackgroundReading::Take() {
    const std::lock_guard lock(m_Mutex);
    if (m_Failure) {
        std::rethrow_exception(std::exchange(m_Failure, nullptr));
    }
    return std::exchange(m_Result, nullptr);
}

/// On the thread, as what follows.
void BackgroundReading::Run(const Work& work) {
    SourceMaker result;
    std::exception_ptr failure;
    try {
        result = work(*this);
    } catch (...) {
        failure = std::current_exception();
    }
    const std::lock_guard lock(m_Mutex);
    m_Result = std::move(result);
    m_Failure = std::move(failure);
    m_IsOver = true;
    m_Ended.notify_all();
    eventfd_write(m_News, 1);
}

bool BackgroundReading::Advance(const ReadState& state) {
    std::string text = ToText(state);
    const std::lock_guard lock(m_Mutex);
    if (m_Text != text) {
        m_Text = std::move(text);
        eventfd_write(m_News, 1);
    }
    if (m_IsLeft) {
        return false;
    }
    if (std::exchange(m_IsStopWanted, false)) {
        Drain(m_Call);
        m_IsStopped = true;
        return false;
    }
    return true;
}
