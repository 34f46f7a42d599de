#include "app/validate/Exports.h"
#include "app/validate/Growth.h"
#include "app/validate/Stage.h"
#include "framework/Interfaces.h"
#include "host/text/Text.h"

#include <algorithm>
#include <dlfcn.h>

// What the loader and the host see of a module before they see an object of it.

namespace {

constexpr const char* kInitialize = "_Z16InitializeModulePvP20IComponentCollection";
constexpr int kLoads = 1000;

bool IsOfTheContract(const std::string& name) {
    return name == "CreateFunction" || name == kInitialize || name.starts_with("IID_") ||
           name == "gGlobalComponentCollection" || name.ends_with("E12m_ObjectNameE");
}

void Exports(Trial& trial) {
    const auto symbols = ExportedSymbols(trial.TheSubject().m_Module);
    const auto shows = [&](const char* name) {
        return std::any_of(symbols.begin(), symbols.end(),
            [&](const ExportedSymbol& symbol) { return symbol.m_Name == name; });
    };
    trial.Expect(shows("CreateFunction"), "CreateFunction is missing");
    trial.Expect(shows(kInitialize), "InitializeModule is missing");
    for (const ExportedSymbol& symbol : symbols) {
        trial.Expect(IsOfTheContract(symbol.m_Name), symbol.m_Name + " is shown");
        trial.Expect(!symbol.m_IsUnique, symbol.m_Name + " is unique in the process");
    }
    trial.Measure(std::to_string(symbols.size()) + " symbols");
}

/// The entry points, found as any host finds them.
struct Entries {
    explicit Entries(const Subject& subject)
        : m_Library(dlopen(subject.m_Module.c_str(), RTLD_NOW)),
          m_Create(reinterpret_cast<Create>(dlsym(m_Library, "CreateFunction"))),
          m_Initialize(reinterpret_cast<Initialize>(dlsym(m_Library, kInitialize))) {}
    ~Entries() { dlclose(m_Library); }
    Entries(const Entries&) = delete;
    Entries& operator=(const Entries&) = delete;

    using Create = int32_t (*)(tagREFString, void**);
    using Initialize = int32_t (*)(void*, IComponentCollection*);
    void* m_Library;
    Create m_Create;
    Initialize m_Initialize;
};

void Names(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Entries entries(trial.TheSubject());
    const std::wstring& known = trial.TheSubject().m_Component;
    std::wstring otherCase = known;
    otherCase[0] ^= 0x20;
    const std::wstring zeroed = known + L'\0';
    for (const std::wstring& name : {std::wstring(), otherCase, zeroed, known + L"x",
             known.substr(0, known.size() - 1), std::wstring(100'000, L'x')}) {
        int untouched = 0;
        void* creator = &untouched;
        const int32_t status = entries.m_Create(Refer(name), &creator);
        const std::string shown = "'" + ToUtf8(Refer(name.substr(0, 20))) + "'";
        trial.Expect(status < 0, "answers a creator for " + shown);
        trial.Expect(creator == &untouched, "writes the creator of the unknown " + shown);
    }
    trial.Expect(entries.m_Create(Refer(known), nullptr) < 0, "no place for the creator is well");
    void* creator = nullptr;
    trial.Expect(entries.m_Create(Refer(known), &creator) >= 0 && creator, "its own name is not");
    trial.Measure("6 unknown names");
}

/// A registry that has nothing to offer.
class EmptyRegistry final : public HostObject<EmptyRegistry, IComponentCollection> {
public:
    static constexpr const char* kKind = "EmptyRegistry";

    int32_t GetItem(int32_t, IUnknown** item) override { return *item = nullptr, E_FAIL; }
    int32_t FindItem(IString*, int32_t*) override { return E_FAIL; }
    int32_t CreateComponent(tagREFString, const IID*, void** object) override {
        return *object = nullptr, E_FAIL;
    }
};

void Registry(Trial& trial) {
    Stage stage(trial.TheSubject());
    const Entries entries(trial.TheSubject());
    const auto first = EmptyRegistry::Make();
    const auto second = EmptyRegistry::Make();
    const struct {
        IComponentCollection* m_Given;
        int32_t m_First, m_Second; ///< references afterwards
    } steps[] = {{first.Get(), 2, 1}, {first.Get(), 2, 1}, {second.Get(), 1, 2}, {nullptr, 1, 1}};
    for (const auto& [given, firsts, seconds] : steps) {
        trial.Expect(entries.m_Initialize(nullptr, given) >= 0, "a registry is refused");
        trial.Expect(CountOf(first->Identity()) == firsts && CountOf(second->Identity()) == seconds,
            "the registry is not held by exactly one reference until the next one comes");
    }
    trial.Measure(std::to_string(std::size(steps)) + " registries in turn");
}

void Unloads(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    stage.CreateOrThrow().Reset();
    stage.Unload();
    trial.Expect(!stage.IsStillLoaded(), "the module is still there after it was unloaded");
    trial.Expect(stage.Leaked().empty(), "host objects are held: " + stage.Leaked());
    trial.Measure("1 load");
}

void Loads(Trial& trial) {
    Stage stage(trial.TheSubject());
    const Growth growth(kLoads, [&] {
        stage.Load();
        stage.CreateOrThrow().Reset();
        stage.Unload();
    });
    trial.Measure(std::to_string(kLoads) + " loads, " + growth.Figure());
    if (!IsSanitized()) {
        growth.Judge(trial, "every load");
    }
}

} // namespace

std::span<const Check> ModuleChecks() {
    static constexpr Check checks[] = {
        {"module.exports",
            "The two entry points are there, and nothing but the contract's symbols.",
            "hidden visibility, -Bsymbolic and --exclude-libs,ALL of the link", &Exports},
        {"module.names", "An unknown component is refused and the creator left alone.",
            "CreateFunction: the comparison of the whole name, the null pointer", &Names},
        {"module.registry", "The host's registry is held by one reference until it is replaced.",
            "InitializeModule: SetGlobalComponents does all of it", &Registry},
        {"module.unloads", "A module that is closed is gone, and holds nothing of the host's.",
            "unique symbols (nm -D shows a u), -z nodelete, statics that hold objects", &Unloads},
        {"module.loads",
            "Loading and unloading again and again costs no memory, files or mappings.",
            "what static objects take and do not give back", &Loads},
    };
    return checks;
}
