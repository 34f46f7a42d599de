#include "tests/framework/FailingNew.h"
#include "tests/framework/FrameworkTest.h"

namespace {

/// Knows the installation folder, and below it the common one.
class FakeRegistry final : public HostObject<FakeRegistry, IRegistryEx> {
public:
    static constexpr const char* kKind = "FakeRegistry";
    FakeRegistry(std::wstring path, int32_t status) : m_Path(std::move(path)), m_Status(status) {}
    int32_t ReadString(const wchar_t* section, const wchar_t* key, wchar_t* buffer) override {
        EXPECT_STREQ(section, L"Workspace");
        EXPECT_EQ(buffer[REGISTRY_TEXT_CAPACITY - 1], L'\0');
        m_Path += key == std::wstring(L"InstallPath") ? L"" : key;
        m_Path.copy(buffer, REGISTRY_TEXT_CAPACITY);
        return m_Status;
    }

private:
    std::wstring m_Path;
    int32_t m_Status;
};

class FileNamesTest : public HostTest {
protected:
    void Install(const std::wstring& path, int32_t status = S_OK) {
        m_Host->Register(L"Registry", [path, status](const IID& iid, void** object) {
            return FakeRegistry::Make(path, status)->QueryInterface(iid, object);
        });
    }
    void ExpectInstallPath(int32_t status, const std::wstring& text) {
        SmartPtr<IString> path;
        EXPECT_EQ(FILENAMEGetInstallPath(path.Receive()), status);
        ASSERT_TRUE(path);
        EXPECT_EQ(Text(path.Get()), text);
    }
};

} // namespace

TEST_F(FileNamesTest, BaseFoldersComeFromTheRegistryWithItsStatus) {
    Install(L"/opt/", 3);
    ExpectInstallPath(3, L"/opt/");
    SmartPtr<IString> common;
    EXPECT_EQ(FILENAMEGetCommonPath(common.Receive()), 3);
    EXPECT_EQ(Text(common.Get()), L"/opt/CommonPath");
    Install(L"", E_INVALIDARG);
    ExpectInstallPath(E_INVALIDARG, L"");
    const std::wstring unterminated(REGISTRY_TEXT_CAPACITY, L'x');
    Install(unterminated);
    ExpectInstallPath(S_OK, unterminated);
    Unregister(L"Registry");
    ExpectInstallPath(E_FAIL, L"");
}

TEST_F(FileNamesTest, RelativeNamesStartFromTheLastSharedFolder) {
    const struct {
        const wchar_t* base;
        const wchar_t* path;
        const wchar_t* relative; ///< null when the path itself comes back
    } cases[] = {{L"C:\\a\\b", L"C:\\a\\c\\f.txt", L"..\\c\\f.txt"},
        {L"C:\\a\\b\\c/d", L"C:\\a\\f.txt", L"..\\..\\..\\f.txt"},
        {L"C:\\a", L"C:\\a\\f.txt", L"f.txt"}, {L"c:\\A\\B", L"C:\\a\\b\\x", L"x"},
        {L"/opt/app/bin", L"/opt/app/", L"..\\"}, {L"C:\\a\\b", L"C:\\a\\b", L"..\\b"},
        {L"C:\\ab", L"C:\\a\\f.txt", nullptr}, {L"/opt/app", L"/opt/data/x", nullptr},
        {L"/opt/app/bin", L"/opt/apple/x", nullptr}, {L"C:\\a", L"D:\\a", nullptr},
        {L"", L"C:\\a\\b", nullptr}, {L"C:\\a\\b", L"", nullptr}};
    for (const auto& [base, path, relative] : cases) {
        const auto from = Adopt(ISCreate(base));
        const auto to = Adopt(ISCreate(path));
        SmartPtr<IString> result;
        EXPECT_EQ(FILENAMECreateRelative(from.Get(), to.Get(), result.Receive()), S_OK);
        EXPECT_EQ(Text(result.Get()), relative ? relative : path) << testing::PrintToString(path);
        EXPECT_EQ(result == to.Get(), relative == nullptr) << testing::PrintToString(path);
    }
}

TEST_F(FileNamesTest, AbsoluteNamesStandBelowTheInstallationFolder) {
    const struct {
        const wchar_t* install;
        const wchar_t* path;
        const wchar_t* rewritten; ///< the argument's own characters afterwards
        const wchar_t* absolute;  ///< null when the argument itself comes back
    } cases[] = {
        {L"/opt/app/bin", L"..\\..\\data\\x.png", L"..\\..\\data/x.png", L"/opt/data/x.png"},
        {L"/opt/app", L"data\\x.png", L"data/x.png", L"/opt/app/data/x.png"},
        {L"/opt/app/", L"..\\x", L"..\\x", L"/opt/app/x"}, {L"/opt", L"..\\x", L"..\\x", L"/opt/x"},
        {L"/a/b", L"..\\x", L"..\\x", L"/a/b/x"}, // too short a prefix
        {L"/ab/b", L"..\\x", L"..\\x", L"/ab/x"},
        {L"/opt/app", L"../x\\y", L"../x/y", L"/opt/app/../x/y"}, {L"", L"abc", L"abc", L"/abc"},
        {L"/opt/app", L"C:\\data\\x", L"C:/data/x", nullptr},
        {L"/opt/app", L"..\\a:\\x", L"../a:/x", nullptr},
        {L"/opt/app", L"/abs\\x", L"/abs/x", nullptr}, {L"/opt/app", L"a/b\\c", L"a/b/c", nullptr},
        {L"/opt/app", L"x\\", L"x/", nullptr}, {L"/opt/app", L"", L"", nullptr}};
    for (const auto& [install, path, rewritten, absolute] : cases) {
        Install(install);
        const auto name = Adopt(ISCreate(path));
        SmartPtr<IString> result;
        EXPECT_EQ(FILENAMECreateAbsolute(name.Get(), result.Receive()), S_OK);
        EXPECT_EQ(Text(name.Get()), rewritten);
        EXPECT_EQ(Text(result.Get()), absolute ? absolute : rewritten);
        EXPECT_EQ(result == name.Get(), absolute == nullptr) << testing::PrintToString(path);
    }
}

TEST_F(FileNamesTest, NullNamesGiveNull) {
    const auto name = Adopt(ISCreate(L"C:\\a\\b"));
    IString* result = name.Get();
    EXPECT_EQ(FILENAMECreateRelative(name.Get(), nullptr, &result), S_OK);
    EXPECT_EQ(result, nullptr);
    result = name.Get();
    EXPECT_EQ(FILENAMECreateAbsolute(nullptr, &result), S_OK);
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(FILENAMECreateRelative(nullptr, name.Get(), &result), S_OK);
    EXPECT_TRUE(Adopt(result) == name.Get());
}

TEST_F(FileNamesTest, ShortageOfMemoryGivesNullInsteadOfAnException) {
    const auto base = Adopt(ISCreate(L"/opt/app/a"));
    const auto name = Adopt(ISCreate(L"/opt/app/some/longer/folder/file.png"));
    IString* result = name.Get();
    int32_t status = S_OK;
    {
        const FailingNew noMemory;
        status = FILENAMECreateRelative(base.Get(), name.Get(), &result);
    }
    EXPECT_EQ(status, E_FAIL);
    EXPECT_EQ(result, nullptr);
}
