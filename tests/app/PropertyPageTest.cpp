#include "app/settings/SettingsPage.h"
#include "framework/settings/ParameterTable.h"
#include "host/settings/ParameterText.h"
#include "host/settings/RegistryFile.h"
#include "tests/support/HostTest.h"
#include "tests/support/TreeTest.h"

// The settings page, its texts and the display names that it shows.

using PropertyPageTest = TreeTest;

TEST_F(PropertyPageTest, EditsArePendingUntilAppliedAndCancelTakesAllBack) {
    Listen();
    const auto openIcon = [&] {
        SmartPtr<IUnknown> icon;
        As<IUIPropInterrogateEx>()->InquireEx(170, icon.Receive());
        return icon;
    };
    const auto icon = openIcon(); // kept: a new one lies elsewhere
    SettingsPage page(m_Tree.Get());
    const auto edit = [&](const char* name, const char* text) {
        const int32_t index = page.Find(name).value();
        return page.Edit(index, text) ? page.At(index).m_Value : "refused";
    };
    EXPECT_EQ(edit("4", "30"), "30");
    EXPECT_EQ(Value(4), 15) << "pending";
    page.Cancel();
    EXPECT_TRUE(page.At(0).m_Value == "15" && m_Listener->m_Events.empty());

    edit("4", "31");
    edit("145", "0"); // its flags word changes with it
    EXPECT_EQ(edit("4", "x"), "refused");
    EXPECT_EQ(page.Apply(), S_OK);
    EXPECT_EQ(m_Listener->m_Events.size(), 1U) << "the tree is shown anew";
    EXPECT_TRUE(Value(4) == 31 && Value(145) == 0);
    m_Tree->Control(102, 7); // by somebody else
    EXPECT_EQ(page.Cancel(), S_OK);
    EXPECT_TRUE(Value(4) == 15 && Value(145) == 1 && Value(102) == 7);

    edit("ResetIcons", "");
    EXPECT_TRUE(openIcon() == icon.Get()) << "an action waits too";
    page.Apply();
    EXPECT_FALSE(openIcon() == icon.Get());
    page.Cancel();
    EXPECT_TRUE(openIcon() == icon.Get()) << "what an action changed comes back";
}

TEST_F(PropertyPageTest, TextsOfEveryTypeAreCheckedAndShown) {
    constexpr int32_t kColor = PROPTYPE_LONG | PROPFLAG_COLOR;
    const std::tuple<int32_t, const char*, const char*> texts[] = {{1, "255", "255"},
        {2, "-32768", "-32768"}, {3, "0x14", "20"}, {3, "-5", "-5"}, {4, "2.5", "2.5"},
        {4, "0.1", "0.1"}, {5, "1e-9", "1e-09"}, {5, "1e300", "1e+300"},
        {6, "<\xC3\xBC>", "<\xC3\xBC>"}, {6, "", ""}, {8, "", "action"},
        {kColor, "-1", "#FFFFFFFF"}, {kColor, "#FE123456", "#FE123456"},
        {kColor, "#123456", "#123456"},
        // What the parameter does not take:
        {1, "256", "-"}, {1, "-1", "-"}, {1, "", "-"}, {1, "1 ", "-"}, {2, "32768", "-"},
        {3, "21", "-"}, {3, "-6", "-"}, {3, "0x", "-"}, {3, "0x100000014", "-"},
        {3, "#000014", "-"}, {4, "1e39", "-"}, {4, "nan", "-"}, {5, "inf", "-"}, {5, "2.5x", "-"},
        {7, "set", "-"}, {kColor, "#FFF", "-"}, {kColor, "#12345G", "-"},
        {kColor, "#1234567890", "-"}, {kColor, "red", "-"}};
    for (const auto& [flags, text, shown] : texts) {
        const bool isLimited = flags == PROPTYPE_LONG;
        const HostParameter parameter{0, flags, isLimited ? -5 : 0, isLimited ? 20 : 0};
        const auto value = FromText(parameter, Refer(ToWide(text)));
        EXPECT_EQ(value ? ToText(flags, *value) : "-", shown) << flags << ' ' << text;
    }
}

TEST_F(PropertyPageTest, NamesComeFromTheFileOfTheObjectsOwnComponent) {
    const TemporaryFolder folder;
    m_Host->Register(L"Registry", [&](const IID& iid, void** object) {
        return RegistryFile::Make(folder / "")->QueryInterface(iid, object);
    });
    std::filesystem::create_directories(folder / "share/_strings");
    const std::pair<const char*, const char*> files[] = {
        {"[Parameters]\n4=H\xC3\xB6he\nx=X\n5000000000=Y\n", "H\xC3\xB6he"},
        {"[Parameters]\n100=Color\n4=\n", "4"}, {"[A]\n4=H\n", "4"},
        {"[Parameters]\n4=\xFF\n", "4"}, {"4=H", "4"}, {"\x89PNG\r\n", "4"}};
    for (const auto& [content, name] : files) {
        std::ofstream(folder / "share/_strings/UITree.ini") << content;
        EXPECT_EQ(SettingsPage(m_Tree.Get()).At(0).m_Name, name) << content;
    }
}
