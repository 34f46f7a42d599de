#include "tests/framework/FailingNew.h"
#include "tests/framework/FrameworkTest.h"

#include <thread>

namespace {

std::string gLog;

/// Logs the steps of its life.
class Probe final : public Component<Probe> {
public:
    ~Probe() { gLog += "destroyed "; }
    int32_t QueryInterface(const IID& iid, void** object) override {
        gLog += "query ";
        return Component::QueryInterface(iid, object);
    }
    int32_t Release() override {
        gLog += "release ";
        return Component::Release();
    }
    int32_t FinalConstruct() override { return s_FinalConstruct(); }
    void FinalRelease() override { gLog += "final "; }

    static int32_t Create(IID iid, void** object) {
        gLog.clear();
        *object = &gLog;
        return _CreateInstance(nullptr, &iid, object);
    }

    static inline int32_t (*s_FinalConstruct)() = [] { return S_OK; };
};

} // namespace

TEST(Creation, FailingStepDestroysTheObjectOnceAndIsReported) {
    const struct {
        int32_t (*finalConstruct)();
        IID iid;
        int32_t status;
        const char* log;
    } cases[] = {
        {[] { return E_INVALIDARG; }, IID_IUnknown, E_INVALIDARG, "final destroyed "},
        {[] { return 7; }, IID_IUnknown, 7, "final destroyed "},
        {[]() -> int32_t { throw std::bad_alloc(); }, IID_IUnknown, E_FAIL, "final destroyed "},
        {[] { return S_OK; }, IID_IString, E_NOINTERFACE, "query final destroyed "},
    };
    for (const auto& [finalConstruct, iid, status, log] : cases) {
        Probe::s_FinalConstruct = finalConstruct;
        void* object = nullptr;
        EXPECT_EQ(Probe::Create(iid, &object), status);
        EXPECT_EQ(object, nullptr) << status;
        EXPECT_EQ(gLog, log) << status;
    }
}

TEST(Creation, CallerGetsTheOnlyReference) {
    void* object = nullptr;
    ASSERT_EQ(Probe::Create(IID_IUnknown, &object), S_OK);
    auto* created = static_cast<IUnknown*>(object);
    EXPECT_EQ(created->AddRef(), 2);
    EXPECT_EQ(created->Release(), 1);
    EXPECT_EQ(created->Release(), 0);
    EXPECT_EQ(gLog, "query release release release final destroyed ");
}

TEST(Creation, NothingIsMadeWithoutMemory) {
    void* object = nullptr;
    int32_t status = S_OK;
    {
        const FailingNew noMemory;
        status = Probe::Create(IID_IUnknown, &object);
    }
    EXPECT_EQ(status, E_FAIL);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(gLog, "");
}

TEST(ResourceLock, NestedLockReturnsAtOnceAndItsUnlockEndsTheHold) {
    CResourceLock lock;
    lock.Lock();
    lock.Lock();
    lock.Unlock();
    std::thread([&lock] {
        lock.Lock(); // would wait for ever if the lock were still held
        lock.Unlock();
    }).join();
    lock.Unlock(); // not held: ignored
    lock.Delete();
}
