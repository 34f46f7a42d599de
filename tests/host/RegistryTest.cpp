#include "framework/Components.h"
#include "host/Host.h"
#include "host/Module.h"
#include "host/RegistryFile.h"
#include "host/Variant.h"
#include "tests/host/HostTest.h"

#include <dlfcn.h>
#include <fstream>

namespace {

class RegistryTest : public HostTest {};

template <class T>
SmartPtr<T> Create(const Host& host, std::wstring_view name) {
    SmartPtr<T> object;
    host.Components()->CreateComponent(Ref(name), &IdentifierOf<T>(), object.ReceiveAny());
    return object;
}

std::string ReadSetting(RegistryFile& settings, const wchar_t* section, const wchar_t* key) {
    wchar_t buffer[REGISTRY_TEXT_CAPACITY] = L"untouched";
    settings.ReadString(section, key, buffer);
    return ToUtf8(Ref(buffer));
}

} // namespace

TEST_F(RegistryTest, Host_MakesEveryComponentThatTheControlAsksFor) {
    const Host host(BuildFolder());
    EXPECT_TRUE(Create<ISuperCollection>(host, L"SuperCollection"));
    EXPECT_TRUE(Create<ICreatableString>(host, L"CreatableString"));
    EXPECT_TRUE(Create<IVariant>(host, L"Variant"));
    EXPECT_TRUE(Create<IComponentString>(host, L"ComponentString"));
    EXPECT_TRUE(Create<IRegistryEx>(host, L"Registry"));
    EXPECT_TRUE(Create<IRenderableObject>(host, L"CIFFileEx"));
    EXPECT_TRUE(Create<IUIPropInterrogate>(host, L"UIDefault"));
    EXPECT_TRUE(Create<IUIScrollBar>(host, L"UIScrollBar"));
    EXPECT_TRUE(Create<IPMRenderStyle>(host, L"PMRenderStyle"));
    EXPECT_TRUE(Create<IPMRenderer>(host, L"PMRenderer"));
    EXPECT_FALSE(Create<IUnknown>(host, L"Variants"));
    EXPECT_FALSE(Create<IString>(host, L"Variant"));
}

TEST_F(RegistryTest, SecondRegistry_IsTheSameWhileItLivesAndNewAfterwards) {
    const auto creator =
        MODULECreateFunction(Ref(L"CollectionsEx"), Ref(L"GlobalComponentCollection"));
    ASSERT_NE(creator, nullptr);
    IID iid = IID_IComponentCollection;
    SmartPtr<IComponentCollection> first;
    SmartPtr<IComponentCollection> second;
    creator(nullptr, &iid, first.ReceiveAny());
    creator(nullptr, &iid, second.ReceiveAny());
    EXPECT_TRUE(first == second.Get());
    EXPECT_EQ(LiveObjects()["ComponentRegistry"], 1);
    first.Reset();
    second.Reset();
    EXPECT_EQ(LiveObjects(), LiveCounts{});
}

TEST_F(RegistryTest, ReplacedEntry_MakesTheNewComponentUntilTheHostGoes) {
    Host host(BuildFolder());
    const auto fake = Variant::Make();
    host.Register(L"UIScrollBar",
        [&](const IID& iid, void** object) { return fake->QueryInterface(iid, object); });
    EXPECT_FALSE(Create<IUIScrollBar>(host, L"UIScrollBar"));
    EXPECT_TRUE(Create<IVariant>(host, L"UIScrollBar") == fake.Get());
}

TEST_F(RegistryTest, Entry_IsFoundByNameAndDescribesItsComponent) {
    const Host host(BuildFolder());
    int32_t index = -5;
    EXPECT_LT(host.Components()->FindItem(MakeString(L"Nothing").Get(), &index), 0);
    EXPECT_EQ(index, -1);
    ASSERT_GE(host.Components()->FindItem(MakeString(L"SuperCollection").Get(), &index), 0);
    SmartPtr<IUnknown> entry;
    ASSERT_EQ(host.Components()->GetItem(index, entry.Receive()), S_OK);
    const auto description = Query<IComponentString>(entry.Get());
    SmartPtr<IString> name;
    description->GetPart(COMPONENTPART_NAME, name.Receive());
    EXPECT_EQ(TextOf(name.Get()), "SuperCollection");

    SmartPtr<ISuperCollection> first;
    SmartPtr<ISuperCollection> second;
    description->CreateInstance(IID_ISuperCollection, first.ReceiveAny());
    description->CreateInstance(IID_ISuperCollection, second.ReceiveAny());
    EXPECT_FALSE(first == second.Get());
    EXPECT_LT(host.Components()->GetItem(1000, entry.Receive()), 0);
    EXPECT_LT(host.Components()->GetItem(-1, entry.Receive()), 0);
}

TEST_F(RegistryTest, ChangedDescription_MakesWhatItDescribesNow) {
    const Host host(BuildFolder());
    const auto description = Create<IComponentString>(host, L"ComponentString");
    SmartPtr<IUnknown> object;
    EXPECT_LT(description->CreateInstance(IID_IUnknown, object.ReceiveAny()), 0);
    description->SetPart(COMPONENTPART_MODULE, Ref(L"Collections"));
    description->SetPart(COMPONENTPART_NAME, Ref(L"Variant"));
    description->CreateInstance(IID_IUnknown, object.ReceiveAny());
    EXPECT_TRUE(Query<IVariant>(object.Get()));
    description->SetPart(COMPONENTPART_NAME, Ref(L"CreatableString"));
    description->CreateInstance(IID_IUnknown, object.ReceiveAny());
    EXPECT_TRUE(Query<IString>(object.Get()));
}

TEST_F(RegistryTest, Settings_ComeFromTheFileThenFromTheProgramsFolder) {
    const TemporaryFolder folder;
    const auto settings = RegistryFile::Make(folder.Path());
    EXPECT_EQ(ReadSetting(*settings.Get(), L"Workspace", L"InstallPath"), folder.Path());
    EXPECT_EQ(ReadSetting(*settings.Get(), L"Workspace", L"CommonPath"), folder.Path() / "share");
    EXPECT_EQ(ReadSetting(*settings.Get(), L"Workspace", L"Other"), "untouched");

    std::ofstream(folder.Path() / "treehost.ini")
        << "[Workspace]\nCommonPath=/srv/shared\nOther=" << std::string(1000, 'x') << '\n';
    EXPECT_EQ(ReadSetting(*settings.Get(), L"Workspace", L"CommonPath"), "/srv/shared");
    EXPECT_EQ(ReadSetting(*settings.Get(), L"Workspace", L"InstallPath"), folder.Path());
    EXPECT_EQ(ReadSetting(*settings.Get(), L"Workspace", L"Other"), std::string(255, 'x'));
}

TEST_F(RegistryTest, ModuleThatCannotBeUsed_SaysWhichStepFailed) {
    const Host host(BuildFolder());
    const auto textOf = [&](const char* file) -> std::string {
        try {
            const Module module(BuildFolder() / file, host.Components());
            return module.Create<IUnknown>(L"Nothing") ? "made" : "empty";
        } catch (const ModuleError& error) {
            return error.what();
        }
    };
    EXPECT_NE(textOf("NoSuchModule.so").find("NoSuchModule.so: cannot open"), std::string::npos);
    EXPECT_NE(textOf("CollectionsEx.so").find("InitializeModule"), std::string::npos);
    EXPECT_NE(textOf("UITree.so").find("no component called Nothing"), std::string::npos);
}

TEST_F(RegistryTest, ModuleThatGoes_IsUnloadedAndKeepsNoHostObject) {
    const std::filesystem::path file = BuildFolder() / "UITree.so";
    {
        const Host host(BuildFolder());
        const Module module(file, host.Components());
        EXPECT_TRUE(module.Create<IUITree>(L"UITree"));
    }
    EXPECT_EQ(dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST_F(RegistryTest, MissingHostFolder_IsReportedAndLeavesNothing) {
    EXPECT_THROW(Host("/nowhere/at/all"), ModuleError);
}
