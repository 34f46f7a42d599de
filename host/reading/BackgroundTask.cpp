#include "host/reading/BackgroundTask.h"

/// What the reading tells how far it is, and asks whether to go on.
class BackgroundTask::Progress final : public ReadProgress {
public:
    explicit Progress(BackgroundTask& task) : m_Task(task) {}

    bool Advance(const ReadState& state) override { return m_Task.Advance(state); }
    int Interruption() const override { return m_Task.m_Call ? m_Task.m_Call->Get() : -1; }

private:
    BackgroundTask& m_Task;
};

BackgroundTask::BackgroundTask(Signal& news, Signal* call, const ReadState& begin)
    : m_News(news), m_Call(call), m_Text(ToText(begin)) {}

std::string BackgroundTask::HowFar() const {
    const std::lock_guard lock(m_Mutex);
    return m_IsOver ? "" : m_Text;
}

bool BackgroundTask::IsOver() const {
    const std::lock_guard lock(m_Mutex);
    return m_IsOver;
}

bool BackgroundTask::WaitFor(std::chrono::nanoseconds patience) {
    std::unique_lock lock(m_Mutex);
    return m_Ended.wait_for(lock, patience, [this] { return m_IsOver; });
}

void BackgroundTask::Stop() {
    const std::lock_guard lock(m_Mutex);
    m_IsStopWanted = true;
    Call();
}

bool BackgroundTask::WasStopped() const {
    const std::lock_guard lock(m_Mutex);
    return m_IsStopped;
}

void BackgroundTask::Leave() {
    const std::lock_guard lock(m_Mutex);
    m_IsLeft = true;
    Call();
}

bool BackgroundTask::IsLeft() const {
    const std::lock_guard lock(m_Mutex);
    return m_IsLeft;
}

void BackgroundTask::Call() {
    if (m_Call) {
        m_Call->Set();
    }
}

void BackgroundTask::Check() {
    const std::lock_guard lock(m_Mutex);
    if (m_Failure) {
        std::rethrow_exception(std::exchange(m_Failure, nullptr));
    }
}

void BackgroundTask::Run() {
    std::exception_ptr failure;
    Progress progress(*this);
    try {
        if (!IsLeft()) {
            Read(progress);
        }
    } catch (...) {
        failure = std::current_exception();
    }
    const std::lock_guard lock(m_Mutex);
    m_Failure = std::move(failure);
    m_IsOver = true;
    m_Ended.notify_all();
    m_News.Set();
}

/// On the thread that reads.
bool BackgroundTask::Advance(const ReadState& state) {
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
        m_IsStopped = true;
        if (m_Call) {
            m_Call->Clear();
        }
        return false;
    }
    return true;
}
