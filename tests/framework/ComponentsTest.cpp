#include "tests/framework/FailingNew.h"
#include "tests/framework/FrameworkTest.h"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>

namespace {

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

class ComponentsTest : public HostTest {
protected:
    void TearDown() override {
        SetGlobalComponents(nullptr);
        HostTest::TearDown();
    }
};

/// A registry that has one entry, whatever its name, and notes what was asked for.
class FakeComponents final : public HostObject<FakeComponents, IComponentCollection> {
public:
    static constexpr const char* kKind = "FakeComponents";
    int32_t GetItem(int32_t index, IUnknown** item) override {
        *item = index == 5 ? SmartPtr(m_Entry).Detach() : nullptr;
        return S_OK;
    }
    int32_t FindItem(IString* name, int32_t* index) override {
        m_Asked += Text(name) + L' ';
        *index = 5;
        return m_Entry ? S_OK : E_FAIL;
    }
    int32_t CreateComponent(tagREFString name, const IID* iid, void** object) override {
        m_Asked += Text(name) + L' ';
        *object = QueryObject(m_Entry.Get(), *iid);
        return E_FAIL; // callers go by the object
    }

    std::wstring m_Asked;
    SmartPtr<IUnknown> m_Entry;
};

/// An icon whose loading answers a status.
template <int32_t Status>
class FakeIcon final : public HostObject<FakeIcon<Status>, IRenderableObject, IFileArchive> {
public:
    static constexpr const char* kKind = "FakeIcon";
    int32_t Render(UbuntuCanvas*, CANVASRect*, IUnknown*, int32_t) override { return S_OK; }
    int32_t SetFileName(IString* fileName) override {
        s_FileName = Text(fileName);
        return E_FAIL; // only loading counts
    }
    int32_t Populate() override { return Status; }
    int32_t GetContentState(int32_t, int32_t*) override { return E_FAIL; }

    static inline std::wstring s_FileName;
};

class RenderableOnly final : public HostObject<RenderableOnly, IRenderableObject> {
public:
    static constexpr const char* kKind = "RenderableOnly";
    int32_t Render(UbuntuCanvas*, CANVASRect*, IUnknown*, int32_t) override { return S_OK; }
};

class FakeRegistry final : public HostObject<FakeRegistry, IRegistryEx> {
public:
    static constexpr const char* kKind = "FakeRegistry";
    int32_t ReadString(const wchar_t*, const wchar_t* key, wchar_t* buffer) override {
        std::wstring(key).append(L"/").copy(buffer, REGISTRY_TEXT_CAPACITY);
        return S_OK;
    }
};

bool HasCreator(const std::wstring& module, const wchar_t* component) {
    return MODULECreateFunction(HeapText(module).Ref(), CREFString(component)) != nullptr;
}

/// Runs in a process of its own, where no module stands and nothing was looked up yet.
void UseTheLibraryWithoutModules() {
    std::filesystem::current_path("/");
    IString* path = reinterpret_cast<IString*>(&path);
    const bool nothing = FILENAMEGetCommonPath(&path) == E_FAIL && !path && !GLOBALComponents() &&
                         !CREFString::CreateVariant() && !ISCreate(L"x") && !ISCreate(1.5) &&
                         !ISCreateName("x") && !ICONCreate(CREFString(L"x")) &&
                         !BASEObject::CreateNamedCollection();
    std::exit(nothing ? EXIT_SUCCESS : EXIT_FAILURE);
}

/// Runs in a process of its own, where the registration is missing at first.
void LookUpTheCollection() {
    const auto components = FakeComponents::Make();
    SetGlobalComponents(components.Get());
    bool good = !BASEObject::CreateNamedCollection();
    components->m_Entry = Thing::Make().Get(); // describes nothing
    good = good && !BASEObject::CreateNamedCollection();
    components->m_Entry = CreatorDescription::Make(L"", [](const IID& iid, void** object) {
        return iid == IID_ISuperCollection ? CreateInstanceOf<Thing>(IID_IUnknown, object) : E_FAIL;
    })->Identity();
    const auto first = Adopt(BASEObject::CreateNamedCollection());
    const auto second = Adopt(BASEObject::CreateNamedCollection());
    good = good && first && second && first.Get() != second.Get() &&
           components->m_Asked == L"SuperCollection SuperCollection SuperCollection ";
    std::exit(good ? EXIT_SUCCESS : EXIT_FAILURE);
}

} // namespace

TEST_F(ComponentsTest, MissingModuleIsReportedWithItsPath) {
    for (const std::string& name : {std::string("NoSuchModule"), std::string(400, 'x')}) {
        CaptureStdout();
        EXPECT_FALSE(HasCreator(std::wstring(name.begin(), name.end()), L"Variant"));
        const std::string message = GetCapturedStdout();
        const std::string start = "Module not available ./" + name + ".so, error ";
        EXPECT_TRUE(message.starts_with(start)) << message;
        EXPECT_GT(message.size(), start.size() + 1); // the loader's own text
        EXPECT_TRUE(message.ends_with("\n"));
    }
}

TEST_F(ComponentsTest, ModuleThatCannotMakeTheComponentIsNotReported) {
    Dl_info library = {}; // of the standard streams: it has no factory
    ASSERT_NE(dladdr(stdout, &library), 0);
    std::filesystem::remove("NoFactory.so");
    std::filesystem::create_symlink(library.dli_fname, "NoFactory.so");
    CaptureStdout();
    EXPECT_FALSE(HasCreator(L"NoFactory", L"Variant"));
    EXPECT_FALSE(HasCreator(L"Collections", L"Nonsense"));
    EXPECT_TRUE(HasCreator(L"Collections", L"Variant"));
    EXPECT_EQ(GetCapturedStdout(), "");
    std::filesystem::remove("NoFactory.so");
}

TEST_F(ComponentsTest, HolderKeepsOneReferenceOfItsOwn) {
    const auto first = FakeComponents::Make();
    const auto second = FakeComponents::Make();
    SetGlobalComponents(first.Get());
    SetGlobalComponents(first.Get());
    EXPECT_TRUE(Adopt(GLOBALComponents()) == first.Get());
    EXPECT_EQ(CountOf(first.Get()), 2);
    SetGlobalComponents(second.Get());
    EXPECT_EQ(CountOf(first.Get()), 1);
    SetGlobalComponents(nullptr);
    EXPECT_EQ(CountOf(second.Get()), 1);
}

TEST_F(ComponentsTest, EmptyHolderIsFilledFromTheHostsModule) {
    SetGlobalComponents(nullptr);
    const auto found = Adopt(GLOBALComponents());
    ASSERT_TRUE(found);
    EXPECT_TRUE(gGlobalComponentCollection == found.Get());
    EXPECT_TRUE(Adopt(GLOBALComponents()) == found.Get());
}

TEST_F(ComponentsTest, ObjectsAreMadeByTheHostsCollection) {
    const auto components = FakeComponents::Make();
    SetGlobalComponents(components.Get());
    EXPECT_EQ(CreateObject(CREFString(L"Any.Name"), &IID_IUnknown), nullptr);
    components->m_Entry = Thing::Make().Get();
    const auto made =
        Adopt(static_cast<IUnknown*>(CreateObject(HeapText(L"Thing").Ref(), &IID_IUnknown)));
    EXPECT_TRUE(made == components->m_Entry.Get());
    EXPECT_FALSE(CreateHostObject<IRegistryEx>("Registry"));
    EXPECT_EQ(components->m_Asked, L"Any.Name Thing Registry ");
}

TEST_F(ComponentsTest, IconIsLoadedFromTheFolderOfIcons) {
    const std::pair<Creator, bool> cases[] = {{&CreateInstanceOf<FakeIcon<S_FALSE>>, true},
        {&CreateInstanceOf<FakeIcon<E_FAIL>>, false}, {&CreateInstanceOf<RenderableOnly>, false},
        {[](const IID&, void**) { return E_FAIL; }, false}};
    m_Host->Register(L"Registry", &CreateInstanceOf<FakeRegistry>);
    for (const auto& [creator, loaded] : cases) {
        m_Host->Register(L"CIFFileEx", creator);
        const auto icon = Adopt(ICONCreate(HeapText(L"Open.png").Ref()));
        EXPECT_EQ(static_cast<bool>(icon), loaded) << "case " << &creator - &cases[0].first;
    }
    EXPECT_EQ(FakeIcon<S_FALSE>::s_FileName, L"CommonPath//_icons/Open.png");
}

TEST_F(ComponentsTest, ShortageOfMemoryGivesNothingInsteadOfAnException) {
    CreatorFunction creator = nullptr;
    {
        const FailingNew noMemory;
        creator =
            MODULECreateFunction(CREFString(L"CollectionsEx"), CREFString(L"ComponentString"));
    }
    EXPECT_EQ(creator, nullptr);
}

TEST(ComponentsDeathTest, WithoutTheHostsModulesEverythingAnswersNull) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(UseTheLibraryWithoutModules(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

TEST(ComponentsDeathTest, CollectionIsLookedUpUntilFoundAndThenMadeAnew) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(LookUpTheCollection(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}
