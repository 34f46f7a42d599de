#include "tests/support/TreeTest.h"

#include "framework/Support.h"
#include "host/HostInterfaces.h"
#include "host/Text.h"

// The control's numbered parameters and its settings page.

namespace {

class PropertiesTest : public TreeTest {
protected:
    SmartPtr<IUIPropInterrogateEx> Properties() const { return As<IUIPropInterrogateEx>(); }
    /// The same answer through both interfaces.
    int32_t Inquire(int32_t id, int32_t* value) const {
        int32_t other = -77;
        const int32_t status = Properties()->Inquire(id, value);
        EXPECT_EQ(m_Tree->Inquire(id, value ? &other : nullptr), status);
        if (value && status >= 0) {
            EXPECT_EQ(other, *value);
        }
        return status;
    }
};

} // namespace

TEST_F(PropertiesTest, EveryParameterHasItsTypeRangeAndDefault) {
    struct Row {
        int32_t id, flags, value, maximum;
    };
    const Row rows[] = {{4, 3, 15, 0}, {100, 0x23, 0x4B4B4B, 0}, {101, 0x23, 0xFFFFFF, 0},
        {102, 0x23, 0, 0}, {105, 0x13, 1, 1}, {147, 0x13, 0, 1}, {148, 0x13, 1, 1}, {172, 8, 0, 0}};
    for (const Row& row : rows) {
        int32_t value = -1;
        EXPECT_EQ(Inquire(row.id, &value), row.flags) << row.id;
        EXPECT_EQ(Inquire(row.id, nullptr), row.flags) << row.id;
        EXPECT_EQ(value, row.value) << row.id;
        int32_t minimum = -1;
        int32_t maximum = -1;
        EXPECT_EQ(Properties()->ParameterRange(row.id, &minimum, &maximum), S_OK);
        EXPECT_EQ(minimum, 0);
        EXPECT_EQ(maximum, row.maximum) << row.id;
        IUnknown* enumeration = m_Tree.Get();
        EXPECT_EQ(Properties()->ParameterEnumeration(row.id, &enumeration), E_INVALIDARG);
        EXPECT_EQ(enumeration, nullptr);
    }
    int32_t first = 0;
    int32_t last = 0;
    EXPECT_EQ(Inquire(PROPID_ALL, &first), S_OK);
    EXPECT_EQ(first, 10);
    EXPECT_EQ(Properties()->ParameterRange(PROPID_ALL, &first, &last), S_OK);
    EXPECT_EQ(first, 4);
    EXPECT_EQ(last, 172);
}

TEST_F(PropertiesTest, NumbersAreStoredWithoutARangeTest) {
    for (const int32_t id : {4, 100, 101, 102, 105, 147, 148}) {
        EXPECT_EQ(Properties()->Control(id, -1000), S_OK);
        int32_t value = 0;
        Inquire(id, &value);
        EXPECT_EQ(value, -1000) << id;
    }
}

TEST_F(PropertiesTest, ReservedAndUnknownNumbersAnswerAsSuch) {
    EXPECT_EQ(m_Tree->Control(104, 5), S_OK);
    EXPECT_EQ(m_Tree->Control(116, 5), S_OK);
    EXPECT_EQ(m_Tree->Control(136, 5), S_OK);
    int32_t value = 0;
    for (const int32_t id : {104, 116, 136, 0, -1, 999}) {
        EXPECT_EQ(Inquire(id, &value), E_INVALIDARG) << id;
        EXPECT_EQ(Properties()->ParameterRange(id, &value, nullptr), E_INVALIDARG) << id;
    }
    EXPECT_EQ(m_Tree->Control(999, 1), E_INVALIDARG);
}

TEST_F(PropertiesTest, SelectionSwitchesAnswerWhetherTheyAreOn) {
    for (const int32_t id : {145, 146}) {
        int32_t value = 0;
        EXPECT_EQ(Inquire(id, &value), S_OK);
        EXPECT_EQ(value, 1);
        m_Tree->Control(id, 0);
        EXPECT_EQ(Inquire(id, nullptr), S_FALSE);
        EXPECT_EQ(Inquire(id, &value), S_FALSE);
        EXPECT_EQ(value, 0);
    }
}

TEST_F(PropertiesTest, ScrollPositionIsTheScrollBars) {
    Bind("A\nB\nC");
    CANVASRect rect = {0, 0, 50, 22};
    As<IRenderableObject>()->Render(nullptr, &rect, nullptr, 0);
    EXPECT_EQ(m_Tree->Control(115, 2), S_OK);
    int32_t position = 0;
    EXPECT_EQ(Inquire(115, &position), 0x80003);
    EXPECT_EQ(position, 2);
    EXPECT_EQ(Inquire(115, nullptr), 0x80003);
}

TEST_F(PropertiesTest, IconsAreObjectsThatCanBeTakenReplacedAndReset) {
    int32_t value = 0;
    for (const int32_t id : {170, 171}) {
        EXPECT_EQ(Inquire(id, &value), E_FAIL);
        EXPECT_EQ(Inquire(id, nullptr), 0x17);
        SmartPtr<IUnknown> icon;
        EXPECT_EQ(Properties()->InquireEx(id, icon.Receive()), 0x17);
        EXPECT_TRUE(Query<IRenderableObject>(icon.Get()));
        EXPECT_EQ(Properties()->Control(id, 5), S_OK);
        SmartPtr<IUnknown> same;
        Properties()->InquireEx(id, same.Receive());
        EXPECT_TRUE(same == icon.Get());

        EXPECT_EQ(Properties()->ControlEx(id, nullptr), S_OK);
        EXPECT_EQ(Properties()->InquireEx(id, same.Receive()), 0x17);
        EXPECT_FALSE(same);
        Listen();
        EXPECT_EQ(m_Tree->Control(172, 0), S_OK);
        EXPECT_EQ(m_Listener->TakeNames(), "UIItemChanged");
        As<IEventSource>()->Advise(nullptr, 0);
        Properties()->InquireEx(id, same.Receive());
        EXPECT_TRUE(same);
        EXPECT_FALSE(same == icon.Get());
    }
}

TEST_F(PropertiesTest, PageListNamesTheGenericPageInANewListEachTime) {
    const auto pages = As<IUIPropertyPageSpecify>();
    SmartPtr<ISuperCollection> lists[2];
    for (auto& list : lists) {
        ASSERT_EQ(pages->GetPages(5, reinterpret_cast<INamedCollection**>(list.Receive()), nullptr),
            S_OK);
        int32_t count = 0;
        list->GetCount(&count);
        EXPECT_EQ(count, 1);
        SmartPtr<IUnknown> item;
        list->GetItem(0, item.Receive());
        const auto entry = Query<IHostEntry>(item.Get());
        ASSERT_TRUE(entry);
        const char* const texts[] = {"UITree", "UIPropPages.UIPropInterrogatePropPage", "UITree"};
        for (int32_t part = 0; part < 3; ++part) {
            SmartPtr<IString> text;
            entry->GetText(part, text.Receive());
            EXPECT_EQ(ToUtf8(CREFString(text.Get())), texts[part]);
        }
    }
    EXPECT_FALSE(lists[0] == lists[1].Get());
    EXPECT_EQ(pages->GetPages(0, nullptr, nullptr), E_POINTER);
}
