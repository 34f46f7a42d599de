#include "app/faults/FailingNew.h"
#include "app/faults/Gate.h"
#include "host/components/HostObject.h"
#include "host/text/Text.h"
#include "tests/framework/FrameworkTest.h"

#include <cstdlib>
#include <filesystem>

namespace {

using ComponentsTest = HostedTest;

bool HasCreator(const wchar_t* module, const wchar_t* component) {
    return MODULECreateFunction(GuardedText(module).Ref(), CREFString(component)) != nullptr;
}

/// A picture that can do without a file, and is drawn only with one.
class AnyPicture final : public HostObject<AnyPicture, IRenderableObject, IFileArchive> {
public:
    static constexpr const char* kKind = "AnyPicture";

    int32_t Render(UbuntuCanvas*, CANVASRect*, IUnknown*, int32_t) override {
        return m_HasFile ? S_OK : E_FAIL;
    }
    int32_t SetFileName(IString* name) override {
        m_HasFile = name && !ViewOf(CREFString(name)).empty();
        return S_OK;
    }
    int32_t Populate() override { return S_OK; }
    int32_t GetContentState(int32_t, int32_t*) override { return E_FAIL; }

private:
    bool m_HasFile = false;
};

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
        EXPECT_EQ(MODULECreateFunction(GuardedText(cut).Ref(), CREFString(L"Variant")), nullptr);
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

TEST_F(ComponentsTest, StringThatCannotBeMadeDoesNotAskForItsDescriptionAgain) {
    const Gate gate; // counts what the host's module is asked for
    std::optional<FailingNew> failing(std::in_place);
    const auto none = Adopt(CREFString::CreateString());
    failing.reset();
    const auto one = Adopt(CREFString::CreateString());
    EXPECT_TRUE(!none && one);
    EXPECT_EQ(gate.Calls(), 0U);
}

TEST_F(ComponentsTest, IconWhoseNameCannotBeMadeIsNone) {
    m_Host->Register(L"CIFFileEx", [](const IID& iid, void** object) {
        return AnyPicture::Make()->QueryInterface(iid, object);
    });
    bool hasFailed = true;
    for (size_t allowed = 0; hasFailed; ++allowed) {
        std::optional<FailingNew> failing(std::in_place, allowed, 1);
        const auto icon = Adopt(ICONCreate(CREFString(L"any.png")));
        hasFailed = failing->HasFailed();
        failing.reset();
        EXPECT_TRUE(icon ? icon->Render(nullptr, nullptr, nullptr, 0) == S_OK : hasFailed);
    }
}

TEST(ComponentsDeathTest, NamedCollectionIsLookedUpUntilFoundAndThenMadeAnew) {
    EXPECT_EXIT(UseTheNamedCollection(), testing::ExitedWithCode(0), "");
}
