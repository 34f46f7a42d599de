#include "app/faults/FailingNew.h"
#include "tests/framework/SettingsTest.h"

#include <bit>

using ParameterTableTest = SettingsTest;

constexpr int32_t kByte = 1, kShort = 2, kLong = 3, kFloat = 4, kDouble = 5, kObject = 7;
constexpr int32_t kFileName = 16;

TEST_F(ParameterTableTest, NumbersTravelThroughTheirFields) {
    const auto tenth = std::bit_cast<int32_t>(0.1F);
    const std::tuple<int32_t, int32_t, int32_t> cases[] = {{kByte, -128, 0x80}, {kShort, -2, -2},
        {kByte, 0x1FF, 0xFF}, {kShort, 0x18000, -0x8000}, {kLong, 1000, 1000}, // out of its range
        {kFloat, tenth, tenth}, {kFloat, 0x7FC12345, 0x7FC12345},              // a NaN's bits
        {kDouble, -0x800000, -0x800000}, {kDouble, tenth, tenth}};             // minus infinity
    for (const auto& [id, written, read] : cases) {
        int32_t value = 0, least = 0, greatest = 0;
        EXPECT_EQ(m_Settings->ParameterRange(id, &least, &greatest), S_OK) << id;
        EXPECT_TRUE(least == -100 && greatest == id) << id;
        EXPECT_EQ(m_Settings->Control(id, written), S_OK) << id;
        EXPECT_EQ(m_Settings->Inquire(id, &value) > 0 ? value : E_FAIL, read) << id;
    }
    EXPECT_EQ(m_Double, double{0.1F});
}

TEST_F(ParameterTableTest, ManyRecordsKeepTheirOrderAndTheFirstOfANumberAnswers) {
    const auto many = Adopt(new Settings);
    int32_t value = -1, greatest = -1;
    EXPECT_EQ(many->ParameterRange(PROPID_ALL, &value, &greatest), E_FAIL);
    int32_t fields[25] = {};
    for (int32_t i = 0; i < 25; ++i) { // from 20 on the numbers come again
        fields[i] = i;
        EXPECT_EQ(many->AddParameter(10 - i % 20, PROPTYPE_LONG, &fields[i]), S_OK);
        EXPECT_TRUE(many->Inquire(PROPID_ALL, &value) == S_OK && value == i + 1);
        EXPECT_TRUE(many->Inquire(10 - i / 2, &value) == 3 && value == i / 2);
    }
    EXPECT_TRUE(many->Inquire(10, &value) == 3 && value == 0);
    EXPECT_EQ(many->ParameterRange(PROPID_ALL, &value, &greatest), S_OK);
    EXPECT_TRUE(value == -9 && greatest == 10);
}

TEST_F(ParameterTableTest, TextsObjectsDoublesAndEnumerationsAreExchanged) {
    const auto thing = SuperCollection::Make();
    auto text = Adopt(ISCreate(L"text"));
    const auto number = Adopt(CREFString::CreateVariant());
    number->SetDouble(-0.1);
    SmartPtr<IUnknown> value;
    for (int turn = 0; turn < 2; ++turn) { // the second time they are held already
        EXPECT_EQ(m_Settings->ControlEx(kObject, thing->Identity()), S_OK);
        EXPECT_EQ(m_Object.Get(), thing->Identity());
        EXPECT_EQ(m_Settings->ControlEx(kFileName, text.Get()), S_OK);
        EXPECT_EQ(m_Settings->InquireEx(kFileName, value.Receive()), 0x106);
        EXPECT_TRUE(value == text.Get());
    }
    value.Reset();
    text.Reset(); // the field is the only one that holds it now
    EXPECT_EQ(m_Settings->ControlEx(kFileName, m_File.Get()), S_OK);
    EXPECT_TRUE(IsEqual(CREFString(m_File.Get()), CREFString(L"text")));
    EXPECT_EQ(m_Settings->ControlEx(kFileName, thing->Identity()), S_OK) << "no string";
    EXPECT_FALSE(m_File);
    EXPECT_EQ(std::pair(m_Settings->m_Locks, m_Settings->m_LockDepth), std::pair(6, 0));
    EXPECT_EQ(m_Settings->ControlEx(kDouble, number.Get()), S_OK);
    EXPECT_EQ(m_Settings->ControlEx(kDouble, thing->Identity()), E_FAIL);
    EXPECT_EQ(m_Settings->InquireEx(kDouble, value.Receive()), 5);
    EXPECT_EQ(Query<IVariant>(value.Get())->GetDouble(), -0.1);
    {
        const FailingNew failing;
        EXPECT_EQ(m_Settings->InquireEx(kDouble, value.Receive()), E_FAIL);
    }
    // The table releases the enumeration.
    PROPParameter parameter = {9, PROPTYPE_LONG, &m_Long, 2, {}, 0};
    parameter.m_Enumeration = SmartPtr(thing->Identity()).Detach();
    EXPECT_EQ(m_Settings->Add(10, parameter), S_OK);
    EXPECT_EQ(m_Settings->ParameterEnumeration(9, value.Receive()), S_OK);
    EXPECT_EQ(value.Get(), parameter.m_Enumeration);
    EXPECT_EQ(m_Settings->ParameterEnumeration(9, nullptr), E_POINTER);
    EXPECT_EQ(m_Settings->InquireEx(9, value.Receive()), E_FAIL) << "no object";
    EXPECT_EQ(m_Settings->ControlEx(9, thing->Identity()), E_FAIL);
}
