#include "tests/framework/FrameworkTest.h"

#include <cstdlib>
#include <filesystem>

namespace {

using ComponentsTest = HostedTest;

bool HasCreator(const wchar_t* module, const wchar_t* component) {
    return MODULECreateFunction(HeapText(module).Ref(), CREFString(component)) != nullptr;
}

/// Runs in a process of its own, where nothing was looked up yet.
void UseTheNamedCollection() {
    const auto modules = std::filesystem::current_path();
    std::filesystem::current_path("/");
    const bool none = !CreateObject(CREFString(L"Variant"), &IID_IVariant) &&
                      !BASEObject::CreateNamedCollection() && !GLOBALComponents() && !ISCreate(L"");
    Host host(modules);
    const auto first = Adopt(BASEObject::CreateNamedCollection());
    host.Register(L"SuperCollection", [](const IID&, void**) { return E_FAIL; });
    const auto second = Adopt(BASEObject::CreateNamedCollection());
    std::exit(none && first && second && first.Get() != second.Get() ? 0 : 1);
}

} // namespace

TEST_F(ComponentsTest, OnlyAModuleThatCannotBeLoadedIsReported) {
    testing::internal::CaptureStdout();
    EXPECT_FALSE(HasCreator(L"NoFactory", L"Variant"));
    EXPECT_FALSE(HasCreator(L"Collections", L"Nonsense"));
    EXPECT_TRUE(HasCreator(L"Collections", L"Variant"));
    EXPECT_FALSE(HasCreator(L"NoSuchModule", L"Variant"));
    // Cut off at what does not convert, these would be the names of modules.
    for (const std::wstring name : {L"Collections.so\u20ac", L"Collections.so|", L"|"}) {
        std::wstring cut = name;
        std::replace(cut.begin(), cut.end(), L'|', L'\0');
        EXPECT_EQ(MODULECreateFunction(HeapText(cut).Ref(), CREFString(L"Variant")), nullptr);
    }
    const std::string message = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(message.starts_with("Module not available ./NoSuchModule.so, error ")) << message;
    EXPECT_TRUE(message.size() > 52 && message.ends_with("\n")) << "lacks the loader's own text";
}

TEST_F(ComponentsTest, EmptyHolderIsFilledFromTheHostsModule) {
    SetGlobalComponents(nullptr);
    EXPECT_TRUE(Adopt(GLOBALComponents()) == m_Host->Components());
    EXPECT_TRUE(gGlobalComponentCollection == m_Host->Components());
}

TEST(ComponentsDeathTest, NamedCollectionIsLookedUpUntilFoundAndThenMadeAnew) {
    EXPECT_EXIT(UseTheNamedCollection(), testing::ExitedWithCode(0), "");
}
