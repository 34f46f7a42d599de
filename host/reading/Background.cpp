#include "host/reading/Background.h"

#include "host/reading/QuietThread.h"

#include <utility>

/// What the reading hears and is asked by.
class BackgroundWork::Progress final : public ReadProgress {
public:
    explicit Progress(BackgroundWork& work) : m_Work(work) {}

    bool Advance(const ReadState& state) override { return m_Work.Advance(state); }
    int Interruption() const override { return m_Work.m_Call.Get(); }

private:
    BackgroundWork& m_Work;
};

BackgroundWork::BackgroundWork(Work work) : m_Text(ToText({})) {
    m_Thread = StartQuietThread([this, work = std::move(work)] { Run(work); });
}

BackgroundWork::~BackgroundWork() {
    {
        const std::lock_guard lock(m_Mutex);
        m_IsLeft = true;
        m_Call.Set();
    }
    m_Thread.join();
}

std::string BackgroundWork::TakeNews() {
    const std::lock_guard lock(m_Mutex);
    m_News.Clear();
    return m_IsOver ? "" : m_Text;
}

bool BackgroundWork::WaitFor(std::chrono::milliseconds patience) {
    std::unique_lock lock(m_Mutex);
    return m_Ended.wait_for(lock, patience, [this] { return m_IsOver; });
}

void BackgroundWork::Stop() {
    const std::lock_guard lock(m_Mutex);
    m_IsStopWanted = true;
    m_Call.Set();
}

bool BackgroundWork::WasStopped() const {
    const std::lock_guard lock(m_Mutex);
    return m_IsStopped;
}

void BackgroundWork::Check() {
    const std::lock_guard lock(m_Mutex);
    if (m_Failure) {
        std::rethrow_exception(std::exchange(m_Failure, nullptr));
    }
}

/// On the thread, as what follows.
void BackgroundWork::Run(const Work& work) {
    std::exception_ptr failure;
    Progress progress(*this);
    try {
        work(progress);
    } catch (...) {
        failure = std::current_exception();
    }
    const std::lock_guard lock(m_Mutex);
    m_Failure = std::move(failure);
    m_IsOver = true;
    m_Ended.notify_all();
    m_News.Set();
}

bool BackgroundWork::Advance(const ReadState& state) {
    std::string text = ToText(state);
    const std::lock_guard lock(m_Mutex);
    if (m_Text != text) {
        m_Text = std::move(text);
        m_News.Set();
    }
    if (m_IsLeft) {
        return false;
    }
    if (std::exchange(m_IsStopWanted, false)) {
        m_Call.Clear();
        m_IsStopped = true;
        return false;
    }
    return true;
}
