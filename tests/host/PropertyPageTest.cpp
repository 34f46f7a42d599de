#include "app/SettingsPage.h"
#include "framework/Components.h"
#include "framework/ParameterTable.h"
#include "host/CreatableString.h"
#include "host/ParameterText.h"
#include "host/RegistryFile.h"
#include "tests/host/HostTest.h"
#include "tests/support/TreeTest.h"

#include <bit>
#include <fstream>

// The settings page, its texts and the display names that it shows.

namespace {

/// Has a parameter of every type, whose number is its flags word, and claims all numbers from 1 on.
class Gauge final : public HostObject<Gauge, IUIPropInterrogateEx, IUIPropertyPageSpecify> {
public:
    static constexpr const char* kKind = "Gauge";
    static constexpr int32_t kColor = PROPTYPE_LONG | PROPFLAG_COLOR;

    explicit Gauge(IUIPropertyPageSpecify* pages) : m_Pages(pages) {
        for (const int32_t id : {1, 2, 3, 4, 5, 6, 7, 8, kColor}) {
            m_Values[id] = {};
        }
    }

    int32_t Inquire(int32_t id, int32_t* value) override {
        ++m_Inquiries;
        const bool isKnown = m_Values.contains(id);
        if (value && isKnown) {
            *value = m_Values[id].m_Number;
        }
        return isKnown ? id : E_INVALIDARG;
    }
    int32_t Control(int32_t id, int32_t value) override { return m_Values[id].m_Number = value, 0; }
    int32_t ParameterRange(int32_t id, int32_t* minimum, int32_t* maximum) override {
        *minimum = id == PROPTYPE_LONG ? -5 : 1;
        *maximum = id == PROPTYPE_LONG ? 20 : id == PROPID_ALL ? INT32_MAX : 1;
        return S_OK;
    }
    int32_t ParameterEnumeration(int32_t, IUnknown**) override { return E_INVALIDARG; }
    int32_t InquireEx(int32_t id, IUnknown** value) override {
        return *value = SmartPtr(m_Values[id].m_Object).Detach(), id;
    }
    int32_t ControlEx(int32_t id, IUnknown* value) override {
        return m_Values[id].m_Object = value, S_OK;
    }
    int32_t GetPages(int32_t page, INamedCollection** pages, IUnknown** reserved) override {
        return m_Pages->GetPages(page, pages, reserved);
    }

    SmartPtr<IUIPropertyPageSpecify> m_Pages;
    int32_t m_Inquiries = 0;
    std::map<int32_t, ParameterValue> m_Values;
};

class PropertyPageTest : public TreeTest {
protected:
    static int32_t IndexOf(const SettingsPage& page, int32_t number) {
        return page.Find(std::to_string(number)).value();
    }
    static std::string Shown(const SettingsPage& page, int32_t number) {
        return page.At(IndexOf(page, number)).m_Value;
    }
    /// The control's open icon, to be compared with others while it lives.
    SmartPtr<IUnknown> Icon() const {
        SmartPtr<IUnknown> icon;
        As<IUIPropInterrogateEx>()->InquireEx(170, icon.Receive());
        return icon;
    }
};

} // namespace

TEST_F(PropertyPageTest, EditsArePendingUntilAppliedAndCancelTakesAllBack) {
    Listen();
    const auto icon = Icon();
    SettingsPage page(m_Tree.Get());
    const auto edit = [&](int32_t id, const char* text) { page.Edit(IndexOf(page, id), text); };
    edit(4, "30");
    EXPECT_TRUE(Shown(page, 4) == "30" && Value(4) == 15) << "pending";
    page.Cancel();
    EXPECT_TRUE(Shown(page, 4) == "15" && m_Listener->m_Events.empty());

    edit(4, "31");
    edit(145, "0"); // its flags word changes with it
    EXPECT_EQ(page.Apply(), S_OK);
    EXPECT_EQ(m_Listener->m_Events.size(), 1U) << "the tree is shown anew";
    EXPECT_TRUE(Value(4) == 31 && Value(145) == 0);
    m_Tree->Control(102, 7); // by somebody else
    EXPECT_EQ(page.Cancel(), S_OK);
    EXPECT_TRUE(Value(4) == 15 && Value(145) == 1 && Value(102) == 7);

    edit(172, "");
    EXPECT_TRUE(Icon() == icon.Get()) << "an action waits too";
    page.Apply();
    EXPECT_FALSE(Icon() == icon.Get());
    page.Cancel();
    EXPECT_TRUE(Icon() == icon.Get()) << "what an action changed comes back";
}

TEST_F(PropertyPageTest, ValuesOfEveryTypeAreCheckedAndComeBackAsTheyWere) {
    const auto gauge = Gauge::Make(As<IUIPropertyPageSpecify>().Get());
    const auto text = CreatableString::Make(L"old");
    gauge->m_Values[4].m_Number = std::bit_cast<int32_t>(0.1F);
    gauge->m_Values[6].m_Object = text->Identity();
    SettingsPage page(gauge->Identity());
    EXPECT_LT(gauge->m_Inquiries, 66000) << "numbers are not looked for without end";
    EXPECT_EQ(Shown(page, 4) + Shown(page, 6) + Shown(page, 7), "0.1oldnot set");

    constexpr int32_t kColor = Gauge::kColor;
    const std::tuple<int32_t, const char*, const char*> texts[] = {{1, "255", "255"},
        {2, "-32768", "-32768"}, {3, "0x14", "20"}, {3, "-5", "-5"}, {4, "2.5", "2.5"},
        {5, "1e-9", "1e-09"}, {5, "1e300", "1e+300"}, {6, "<\xC3\xBC>", "<\xC3\xBC>"}, {6, "", ""},
        {kColor, "-1", "#FFFFFFFF"}, {kColor, "#FE123456", "#FE123456"},
        {kColor, "#123456", "#123456"},
        // What the parameter does not take:
        {1, "256", ""}, {1, "-1", ""}, {1, "", ""}, {1, "1 ", ""}, {2, "32768", ""}, {3, "21", ""},
        {3, "-6", ""}, {3, "0x", ""}, {3, "0x100000014", ""}, {3, "#000014", ""}, {4, "1e39", ""},
        {4, "nan", ""}, {5, "inf", ""}, {5, "2.5x", ""}, {7, "set", ""}, {kColor, "#FFF", ""},
        {kColor, "#12345G", ""}, {kColor, "#1234567890", ""}, {kColor, "red", ""}};
    for (const auto& [number, given, shown] : texts) {
        const std::string before = Shown(page, number);
        const bool isTaken = number == 6 || *shown != '\0';
        EXPECT_EQ(page.Edit(IndexOf(page, number), given), isTaken) << number << ' ' << given;
        EXPECT_EQ(page.Apply(), S_OK);
        EXPECT_EQ(Shown(page, number), isTaken ? shown : before) << given;
    }
    EXPECT_EQ(page.Cancel(), S_OK);
    EXPECT_EQ(gauge->m_Values[4].m_Number, std::bit_cast<int32_t>(0.1F));
    EXPECT_TRUE(gauge->m_Values[6].m_Object == text->Identity());
    EXPECT_FALSE(page.Edit(page.Count(), "1"));
}

TEST_F(PropertyPageTest, NamesComeFromTheFileOfTheObjectsOwnComponent) {
    const TemporaryFolder folder;
    m_Host->Register(L"Registry", [&](const IID& iid, void** object) {
        return RegistryFile::Make(folder / "")->QueryInterface(iid, object);
    });
    const auto file = folder / "share/_strings/UITree.ini";
    std::filesystem::create_directories(file.parent_path());
    const std::pair<const char*, const char*> files[] = {
        {"[Parameters]\n4=H\xC3\xB6he\nx=X\n5000000000=Y\n", "H\xC3\xB6he"},
        {"[Parameters]\n100=Color\n4=\n", "4"}, {"[Parameters]\nx=X\n", "4"}, {"[A]\n4=H\n", "4"},
        {"[Parameters]\n4=\xFF\n", "4"}, {"4=H", "4"}, {"\x89PNG\r\n", "4"}};
    for (const auto& [content, name] : files) {
        std::ofstream(file) << content;
        EXPECT_EQ(SettingsPage(m_Tree.Get()).At(0).m_Name, name) << content;
    }
    std::ofstream(folder / "share/UITree.ini") << files[0].first;
    const auto tables = CreateHostObject<IStringTable>("StringTable");
    for (const wchar_t* name : {L"", L"../UITree", L"Nothing", L"."}) {
        SmartPtr<INamedCollection> table;
        EXPECT_LT(tables->GetTable(CreatableString::Make(name).Get(), table.Receive()), 0);
        EXPECT_FALSE(table) << ToUtf8(Refer(std::wstring_view(name)));
    }
}
