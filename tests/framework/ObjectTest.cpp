#include "tests/framework/FrameworkTest.h"

namespace {

std::string gLog;
std::function<int32_t()> gFinalConstruct;

struct Probe final : Component<Probe> {
    ~Probe() { gLog += "destroyed "; }
    int32_t FinalConstruct() override { return gFinalConstruct(); }
    void FinalRelease() override { gLog += "final "; }
};

struct Plain final : Component<Plain> {};

} // namespace

TEST(Creation, FailingStepDestroysTheObjectOnceAndIsReported) {
    const std::tuple<std::function<int32_t()>, IID, int32_t> cases[] = {
        {[]() -> int32_t { throw std::bad_alloc(); }, IID_IUnknown, E_FAIL},
        {[] { return 7; }, IID_IUnknown, 7}, {[] { return S_OK; }, IID_IString, E_NOINTERFACE},
        {[] { return S_OK; }, IID_IUnknown, S_OK}};
    for (const auto& [finalConstruct, iid, status] : cases) {
        gLog.clear();
        gFinalConstruct = finalConstruct;
        SmartPtr<IUnknown> object;
        IID wanted = iid;
        EXPECT_EQ(Probe::_CreateInstance(nullptr, &wanted, object.ReceiveAny()), status);
        EXPECT_EQ(gLog, object ? "" : "final destroyed ") << status;
        object.Reset();
        EXPECT_EQ(gLog, "final destroyed ") << status;
    }
}

TEST(Creation, ClassThatAddsNothingOfItsOwnIsMade) {
    SmartPtr<IUnknown> object;
    IID wanted = IID_IUnknown;
    EXPECT_EQ(Plain::_CreateInstance(nullptr, &wanted, object.ReceiveAny()), S_OK);
    EXPECT_TRUE(object);
    EXPECT_EQ(Plain::_CreateInstance(nullptr, &wanted, nullptr), E_POINTER);
    EXPECT_EQ(Plain::_CreateInstance(nullptr, nullptr, object.ReceiveAny()), E_POINTER);
}
