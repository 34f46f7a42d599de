#include "tests/framework/FrameworkTest.h"

#include <array>

namespace {

std::map<std::wstring, std::wstring> gPaths;
std::wstring& gInstallPath = gPaths[L"WorkspaceInstallPath"];

struct FakeRegistry final : HostObject<FakeRegistry, IRegistryEx> {
    static constexpr const char* kKind = "FakeRegistry";
    int32_t ReadString(const wchar_t* section, const wchar_t* key, wchar_t* buffer) override {
        gPaths[std::wstring(section) + key].copy(buffer, REGISTRY_TEXT_CAPACITY);
        return 3;
    }
};

struct FileNamesTest : HostedTest {
    FileNamesTest() { m_Host->Register(L"Registry", &CreateInstanceOf<FakeRegistry>); }
};

} // namespace

TEST_F(FileNamesTest, BaseFoldersComeFromTheRegistryWithItsStatus) {
    SmartPtr<IString> path;
    gPaths[L"WorkspaceCommonPath"] = L"/opt/Common";
    EXPECT_EQ(FILENAMEGetCommonPath(path.Receive()), 3);
    EXPECT_EQ(Text(path.Get()), L"/opt/Common");
    gInstallPath.assign(REGISTRY_TEXT_CAPACITY, L'x'); // leaves no room for an end
    EXPECT_EQ(FILENAMEGetInstallPath(path.Receive()), 3);
    EXPECT_EQ(Text(path.Get()), gInstallPath);
}

TEST_F(FileNamesTest, RelativeNamesStartFromTheLastSharedFolder) {
    const std::array<const wchar_t*, 3> cases[] = {// the last is null for the path itself
        {L"C:\\a\\b", L"C:\\a\\c\\f.txt", L"..\\c\\f.txt"},
        {L"C:\\a\\b\\c/d", L"C:\\a\\f.txt", L"..\\..\\..\\f.txt"},
        {L"C:\\a", L"C:\\a\\f.txt", L"f.txt"}, {L"c:\\A\\B", L"C:\\a\\b\\x", L"x"},
        {L"/opt/app/bin", L"/opt/app/", L"..\\"}, {L"C:\\a\\b", L"C:\\a\\b", L"..\\b"},
        {L"C:\\ab", L"C:\\a\\f.txt", nullptr}, {L"D:\\a\\b", L"C:\\a\\b\\f.txt", nullptr},
        {L"/opt/app/bin", L"/opt/apple/x", nullptr}, {L"", L"C:\\a\\b", nullptr},
        {L"C:\\a\\b", L"", nullptr}, {nullptr, nullptr, nullptr}};
    for (const auto& [base, path, relative] : cases) {
        const auto from = Adopt(base ? ISCreate(base) : nullptr);
        const auto to = Adopt(path ? ISCreate(path) : nullptr);
        SmartPtr<IString> result;
        EXPECT_EQ(FILENAMECreateRelative(from.Get(), to.Get(), result.Receive()), S_OK);
        EXPECT_EQ(Text(result.Get()), Text(relative ? relative : path));
        EXPECT_EQ(result == to.Get(), relative == nullptr) << testing::PrintToString(path);
    }
}

TEST_F(FileNamesTest, AbsoluteNamesStandBelowTheInstallationFolder) {
    // The folder, the path, its characters afterwards, and the result, null for the path itself.
    const std::array<const wchar_t*, 4> cases[] = {
        {L"/opt/app/bin", L"..\\..\\data\\x.png", L"..\\..\\data/x.png", L"/opt/data/x.png"},
        {L"/opt/app", L"data\\x.png", L"data/x.png", L"/opt/app/data/x.png"},
        {L"/opt/app/", L"..\\x", L"..\\x", L"/opt/app/x"}, {L"/opt", L"..\\x", L"..\\x", L"/opt/x"},
        {L"/a/b", L"..\\x", L"..\\x", L"/a/b/x"}, {L"/ab/c", L"..\\x", L"..\\x", L"/ab/x"},
        {L"", L"abc", L"abc", L"/abc"}, {L"/opt/app", L"../x\\y", L"../x/y", L"/opt/app/../x/y"},
        {L"/opt/app", L"..\\a:\\x", L"../a:/x", nullptr},
        {L"/opt/app", L"/abs\\x", L"/abs/x", nullptr}, {L"/opt/app", L"a/b\\c", L"a/b/c", nullptr},
        {L"/opt/app", L"x\\", L"x/", nullptr}, {L"/opt/app", L"\\", L"/", nullptr},
        {L"/opt/app", L"", L"", nullptr}, {L"/opt/app", nullptr, L"", nullptr}};
    for (const auto& [install, path, rewritten, absolute] : cases) {
        gInstallPath = install;
        const auto name = Adopt(path ? ISCreate(path) : nullptr);
        SmartPtr<IString> result;
        EXPECT_EQ(FILENAMECreateAbsolute(name.Get(), result.Receive()), S_OK);
        EXPECT_EQ(Text(name.Get()), rewritten);
        EXPECT_EQ(Text(result.Get()), absolute ? absolute : rewritten);
        EXPECT_EQ(result == name.Get(), absolute == nullptr) << testing::PrintToString(path);
    }
}
