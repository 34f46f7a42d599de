#include "tests/support/TreeTest.h"

#include "host/components/HostInterfaces.h"
#include "host/text/Text.h"

// The control's numbered parameters and its settings page.

namespace {

class PropertiesTest : public TreeTest {
protected:
    SmartPtr<IUIPropInterrogateEx> Properties() const { return As<IUIPropInterrogateEx>(); }
    using Answer = std::pair<int, int>; ///< status and value
    Answer Inquire(int id) const { return {Properties()->Inquire(id, nullptr), Value(id)}; }
};

} // namespace

TEST_F(PropertiesTest, EveryNumberHasItsTypeRangeAndDefaultAndTakesAnyValue) {
    const struct {
        int id, flags, value, maximum;
    } rows[] = {{4, 3, 15, 0}, {100, 0x23, 0x4B4B4B, 0}, {101, 0x23, 0xFFFFFF, 0},
        {102, 0x23, 0, 0}, {105, 0x13, 1, 1}, {147, 0x13, 0, 1}, {148, 0x13, 1, 1}, {172, 8, 0, 0}};
    for (const auto& [id, flags, value, maximum] : rows) {
        EXPECT_EQ(Inquire(id), Answer(flags, value)) << id;
        int32_t range[] = {-1, -1};
        EXPECT_EQ(Properties()->ParameterRange(id, &range[0], &range[1]), S_OK);
        EXPECT_EQ(range[0], 0);
        EXPECT_EQ(range[1], maximum) << id;
        EXPECT_EQ(m_Tree->Control(id, -1000), S_OK);
        EXPECT_EQ(Value(id), id == 172 ? 0 : -1000) << id;
    }
    for (const int icon : {170, 171}) {
        int32_t range[] = {-1, -1};
        EXPECT_EQ(Properties()->ParameterRange(icon, &range[0], &range[1]), S_OK);
        EXPECT_EQ(std::pair(range[0], range[1]), std::pair(0, 1)) << icon;
    }
    int32_t ends[] = {0, 0};
    EXPECT_EQ(Properties()->ParameterRange(PROPID_ALL, &ends[0], &ends[1]), S_OK);
    EXPECT_EQ(ends[0], 4);
    EXPECT_EQ(ends[1], 172);
    EXPECT_EQ(Value(PROPID_ALL), 10);
}

TEST_F(PropertiesTest, SwitchesReservedAndUnknownNumbersAnswerAsSuch) {
    for (const int id : {145, 146}) {
        EXPECT_EQ(Inquire(id), Answer(S_OK, 1));
        EXPECT_EQ(m_Tree->Control(id, 0), S_OK);
        EXPECT_EQ(Inquire(id), Answer(S_FALSE, 0));
    }
    for (const int id : {104, 116, 136, 0, -1, 999}) {
        EXPECT_EQ(m_Tree->Control(id, 5), id > 100 && id < 999 ? S_OK : E_INVALIDARG) << id;
        EXPECT_EQ(Inquire(id).first, E_INVALIDARG) << id;
        int32_t range[] = {-1, -1};
        EXPECT_EQ(Properties()->ParameterRange(id, &range[0], &range[1]), E_INVALIDARG);
        EXPECT_EQ(std::pair(range[0], range[1]), std::pair(0, 0)) << id;
    }
    Bind("A\nB\nC");
    Draw({0, 0, 50, 22});
    EXPECT_EQ(m_Tree->Control(115, 2), S_OK);
    EXPECT_EQ(Inquire(115), Answer(0x80003, 2));
    m_Host->Register(L"UIScrollBar", [](const IID&, void**) { return E_FAIL; });
    SetUp();
    int32_t position = 7;
    EXPECT_EQ(Properties()->Inquire(115, &position), 0x80003);
    EXPECT_EQ(position, 0) << "there is no scroll bar";
    EXPECT_EQ(m_Tree->Control(115, 2), E_FAIL);
}

TEST_F(PropertiesTest, IconsAreObjectsThatCanBeTakenReplacedAndReset) {
    Listen();
    for (const int id : {170, 171}) {
        int32_t value = 0;
        EXPECT_EQ(Properties()->Inquire(id, &value), E_FAIL);
        EXPECT_EQ(Properties()->Control(id, 5), S_OK);
        SmartPtr<IUnknown> icon, other;
        EXPECT_EQ(Properties()->InquireEx(id, icon.Receive()), 0x17);
        EXPECT_TRUE(Query<IRenderableObject>(icon.Get()));
        EXPECT_EQ(Properties()->ControlEx(id, nullptr), S_OK);
        EXPECT_EQ(Properties()->InquireEx(id, other.Receive()), 0x17);
        EXPECT_FALSE(other);
        Properties()->InquireEx(341 - id, other.Receive());
        EXPECT_TRUE(other) << "the two icons have places of their own";
        EXPECT_EQ(m_Tree->Control(172, 0), S_OK);
        EXPECT_EQ(std::exchange(m_Listener->m_Events, {}).size(), 1U);
        Properties()->InquireEx(id, other.Receive());
        EXPECT_TRUE(other && !(other == icon.Get()));
    }
}

TEST_F(PropertiesTest, PageListNamesTheGenericPage) {
    const auto pages = As<IUIPropertyPageSpecify>();
    SmartPtr<ISuperCollection> list;
    auto** out = reinterpret_cast<INamedCollection**>(list.Receive());
    ASSERT_EQ(pages->GetPages(5, out, nullptr), S_OK);
    const auto entry = Query<IHostEntry>(Place{list, 0}.Item().Get());
    ASSERT_TRUE(entry);
    const char* const texts[] = {"UITree", "UIPropPages.UIPropInterrogatePropPage", "UITree"};
    for (int i = 0; i < 3; ++i) {
        SmartPtr<IString> text;
        EXPECT_EQ(entry->GetText(i, text.Receive()), S_OK);
        EXPECT_EQ(ToUtf8(CREFString(text.Get())), texts[i]);
    }
    EXPECT_FALSE((Place{list, 1}.Item())) << "there is one page";
    EXPECT_EQ(pages->GetPages(0, nullptr, nullptr), E_POINTER);
}
