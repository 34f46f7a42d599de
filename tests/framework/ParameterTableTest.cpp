#include "tests/framework/FrameworkTest.h"

#include <bit>

namespace {

class Settings final
    : public Component<Settings, IUIPropInterrogateImpl<Settings, IUIPropInterrogateEx, 10l>> {
public:
    using IUIPropInterrogateImpl::AddParameter;
    using ParameterTable::Add;

    uint8_t m_Byte = 0;
    int16_t m_Short = 0;
    int32_t m_Long = 5;
    float m_Float = 0;
    double m_Double = 0;
    SmartPtr<IString> m_String;
    SmartPtr<IUnknown> m_Object;
};

/// The numbers of the parameters are 100 plus their type.
constexpr int32_t kByte = 101, kShort = 102, kLong = 103, kFloat = 104, kDouble = 105,
                  kString = 106, kObject = 107, kAction = 108, kOddType = 109;
constexpr int32_t kUnknown = 99;
constexpr int32_t kUntouched = 0x5A5A5A5A;

int32_t Bits(float value) {
    return std::bit_cast<int32_t>(value);
}

class ParameterTableTest : public HostTest {
protected:
    ParameterTableTest() {
        Settings& settings = *m_Settings.Get();
        settings.AddParameter(kObject, PROPTYPE_OBJECT, &settings.m_Object);
        settings.AddParameter(kByte, PROPTYPE_BYTE, &settings.m_Byte);
        settings.AddParameter(kShort, PROPTYPE_SHORT, &settings.m_Short);
        settings.AddParameter(kLong, PROPTYPE_LONG | PROPFLAG_COLOR, &settings.m_Long, -3, 8);
        settings.AddParameter(kFloat, PROPTYPE_FLOAT | PROPFLAG_TRANSIENT, &settings.m_Float);
        settings.AddParameter(kDouble, PROPTYPE_DOUBLE, &settings.m_Double);
        settings.AddParameter(kString, PROPTYPE_STRING | PROPFLAG_FILENAME, &settings.m_String);
        settings.AddParameter(kAction, PROPTYPE_ACTION, &settings.m_Long);
        settings.AddParameter(kOddType, 9, &settings.m_Long);
    }
    void TearDown() override {
        m_Settings.Reset();
        HostTest::TearDown();
    }

    SmartPtr<Settings> m_Settings = Adopt(new Settings);
};

} // namespace

TEST_F(ParameterTableTest, NumbersTravelThroughTheirFields) {
    const struct {
        int32_t id;
        int32_t written;
        int32_t read;
    } cases[] = {{kByte, 0x1FF, 0xFF}, {kByte, -128, 0x80}, {kShort, 0x18000, -0x8000},
        {kShort, -2, -2}, {kLong, 1000, 1000}, // out of its range: stored all the same
        {kFloat, Bits(-0.0F), Bits(-0.0F)}, {kFloat, 0x7FC12345, 0x7FC12345}, // a NaN's bits
        {kDouble, Bits(2.5F), Bits(2.5F)}, {kDouble, -0x800000, -0x800000}};  // minus infinity
    for (const auto& [id, written, read] : cases) {
        int32_t value = kUntouched;
        EXPECT_EQ(m_Settings->Control(id, written), S_OK) << id;
        EXPECT_GT(m_Settings->Inquire(id, &value), 0) << id;
        EXPECT_EQ(value, read) << id;
    }
    m_Settings->Control(kDouble, Bits(0.1F));
    EXPECT_EQ(m_Settings->m_Double, double{0.1F});
}

TEST_F(ParameterTableTest, FlagsWordTellsTheTypeWithoutAValue) {
    const struct {
        int32_t id;
        int32_t flags;
        int32_t withValue; ///< the result when there is room for a value
    } cases[] = {{kByte, 1, 1}, {kFloat, 0x4000004, 0x4000004}, {kString, 0x106, E_FAIL},
        {kObject, 7, E_FAIL}, {kAction, 8, 8}, {kOddType, 9, E_FAIL}};
    for (const auto& [id, flags, withValue] : cases) {
        int32_t value = kUntouched;
        EXPECT_EQ(m_Settings->Inquire(id, nullptr), flags) << id;
        EXPECT_EQ(m_Settings->InquireEx(id, nullptr), flags) << id;
        EXPECT_EQ(m_Settings->Inquire(id, &value), withValue) << id;
        EXPECT_EQ(value, withValue < 0 ? kUntouched : 0) << id;
    }
}

TEST_F(ParameterTableTest, WrongKindAndUnknownNumbersChangeNothing) {
    const auto thing = Thing::Make();
    m_Settings->m_Object = thing.Get();
    for (const int32_t id : {kString, kObject, kAction, kOddType}) {
        EXPECT_EQ(m_Settings->Control(id, 77), S_OK) << id;
    }
    for (const int32_t id : {kByte, kLong, kAction, kOddType, kUnknown, PROPID_ALL}) {
        const bool known = id >= kByte && id <= kOddType;
        IUnknown* value = thing.Get();
        EXPECT_EQ(m_Settings->InquireEx(id, &value), known ? E_FAIL : E_INVALIDARG) << id;
        EXPECT_EQ(value, nullptr) << id;
        EXPECT_EQ(m_Settings->ControlEx(id, value), known ? E_FAIL : E_INVALIDARG) << id;
        EXPECT_EQ(m_Settings->ParameterEnumeration(id, &value), E_INVALIDARG) << id;
    }
    EXPECT_EQ(m_Settings->Control(kUnknown, 77), E_INVALIDARG);
    EXPECT_EQ(m_Settings->Inquire(kUnknown, nullptr), E_INVALIDARG);
    EXPECT_EQ(m_Settings->m_Object.Get(), thing.Get());
    EXPECT_EQ(m_Settings->m_Long, 5);
}

TEST_F(ParameterTableTest, RangesAnswerWhatWasRegistered) {
    const auto empty = Adopt(new Settings);
    const struct {
        Settings& settings;
        int32_t id, status, minimum, maximum;
    } cases[] = {{*m_Settings.Get(), kLong, S_OK, -3, 8}, {*m_Settings.Get(), kObject, S_OK, 0, 0},
        {*m_Settings.Get(), kUnknown, E_INVALIDARG, 0, 0},
        {*m_Settings.Get(), PROPID_ALL, S_OK, kByte, kOddType},
        {*empty.Get(), PROPID_ALL, E_FAIL, 0, 0}};
    for (const auto& [settings, id, status, minimum, maximum] : cases) {
        int32_t least = kUntouched;
        int32_t greatest = kUntouched;
        EXPECT_EQ(settings.ParameterRange(id, &least, nullptr), status) << id;
        EXPECT_EQ(settings.ParameterRange(id, nullptr, &greatest), status) << id;
        EXPECT_EQ(least, minimum) << id;
        EXPECT_EQ(greatest, maximum) << id;
    }
}

TEST_F(ParameterTableTest, ManyRecordsKeepTheirOrderAndTheFirstOfANumberAnswers) {
    const auto many = Adopt(new Settings);
    int32_t value = kUntouched;
    EXPECT_EQ(many->Inquire(PROPID_ALL, nullptr), E_POINTER);
    EXPECT_EQ(many->Inquire(PROPID_ALL, &value), S_OK);
    EXPECT_EQ(value, 0);
    int32_t fields[25] = {};
    for (int32_t i = 0; i < 25; ++i) { // from 20 on the numbers come again
        fields[i] = i;
        EXPECT_EQ(many->AddParameter(10 - i % 20, PROPTYPE_LONG, &fields[i]), S_OK);
        EXPECT_EQ(many->Inquire(PROPID_ALL, &value), S_OK);
        EXPECT_EQ(value, i + 1);
        for (int32_t earlier = 0; earlier <= std::min(i, 19); ++earlier) {
            EXPECT_EQ(many->Inquire(10 - earlier, &value), 3);
            EXPECT_EQ(value, earlier);
        }
    }
    EXPECT_EQ(many->ParameterRange(PROPID_ALL, &value, nullptr), S_OK);
    EXPECT_EQ(value, -9);
}

TEST_F(ParameterTableTest, StringsAndObjectsAreExchangedUnderTheLock) {
    const auto text = Adopt(ISCreate(L"a.png"));
    const auto thing = Thing::Make();
    SmartPtr<IUnknown> value;
    EXPECT_EQ(m_Settings->InquireEx(kString, value.Receive()), 0x106);
    EXPECT_FALSE(value);
    EXPECT_EQ(m_Settings->ControlEx(kObject, thing.Get()), S_OK);
    EXPECT_EQ(m_Settings->InquireEx(kObject, value.Receive()), 7);
    EXPECT_EQ(value.Get(), thing.Get());
    for (int turn = 0; turn < 2; ++turn) { // the second time it is held already
        EXPECT_EQ(m_Settings->ControlEx(kString, text.Get()), S_OK);
        EXPECT_EQ(m_Settings->InquireEx(kString, value.Receive()), 0x106);
        EXPECT_TRUE(IsSameObject(value.Get(), text.Get()));
    }
    EXPECT_EQ(m_Settings->ControlEx(kString, thing.Get()), S_OK) << "no string";
    EXPECT_FALSE(m_Settings->m_String);
    EXPECT_EQ(m_Settings->ControlEx(kObject, nullptr), S_OK);
    EXPECT_FALSE(m_Settings->m_Object);
    EXPECT_EQ(m_Settings->m_Locks, 5);
    EXPECT_EQ(m_Settings->m_LockDepth, 0);
}

TEST_F(ParameterTableTest, DoublesAreExchangedAsNewVariants) {
    const auto given = Adopt(CREFString::CreateVariant());
    given->SetDouble(-0.1);
    EXPECT_EQ(m_Settings->ControlEx(kDouble, given.Get()), S_OK);
    EXPECT_EQ(m_Settings->ControlEx(kDouble, nullptr), E_FAIL);
    EXPECT_EQ(m_Settings->ControlEx(kDouble, Thing::Make().Get()), E_FAIL);
    SmartPtr<IUnknown> value;
    EXPECT_EQ(m_Settings->InquireEx(kDouble, value.Receive()), 5);
    const auto variant = Query<IVariant>(value.Get());
    ASSERT_TRUE(variant);
    EXPECT_EQ(variant->GetDouble(), -0.1);
    EXPECT_FALSE(variant == given.Get());
    EXPECT_EQ(m_Settings->m_Locks, 0);
}

TEST_F(ParameterTableTest, EnumerationIsHandedOutAndReleasedWithTheTable) {
    const auto thing = Thing::Make();
    PROPParameter parameter = {7, PROPTYPE_LONG, &m_Settings->m_Long, PROPKIND_ENUMERATION, {}, 0};
    parameter.m_Enumeration = SmartPtr<IUnknown>(thing.Get()).Detach();
    EXPECT_EQ(m_Settings->Add(10, parameter), S_OK);
    SmartPtr<IUnknown> enumeration;
    EXPECT_EQ(m_Settings->ParameterEnumeration(7, enumeration.Receive()), S_OK);
    EXPECT_EQ(enumeration.Get(), thing.Get());
    EXPECT_EQ(m_Settings->ParameterEnumeration(7, nullptr), E_POINTER);
    EXPECT_EQ(m_Settings->ParameterRange(7, nullptr, nullptr), E_INVALIDARG);
    enumeration.Reset();
    m_Settings.Reset();
    EXPECT_EQ(CountOf(thing.Get()), 1);
}
