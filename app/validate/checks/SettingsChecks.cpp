#include "app/faults/Gate.h"
#include "app/validate/Candidate.h"
#include "framework/settings/DisplayNames.h"
#include "host/settings/DocumentInMemory.h"
#include "host/settings/TextStream.h"
#include "host/settings/XmlFile.h"
#include "host/text/Text.h"

#include <algorithm>

// Settings in both forms: what was saved is what is loaded, whole or not at all.

namespace {

using Values = std::vector<int32_t>;

/// An object whose numbers are not what they were at first, and which has lost its first object.
struct Changed {
    Changed(Trial& trial, const Stage& stage)
        : m_Candidate(stage),
          m_Object(m_Candidate.Need<IUIPropInterrogateEx>(trial, "numbered parameters")),
          m_All(ParametersOf(m_Object)), m_First(ValuesOf(m_Object, m_All)) {
        for (size_t i = 0; i < m_All.size(); ++i) {
            if (m_All[i].IsNumber()) {
                m_Object->Control(m_All[i].m_Number, m_All[i].Other(m_First[i]));
            }
        }
        m_Changed = ValuesOf(m_Object, m_All);
        const auto lost = std::find_if(m_All.begin(), m_All.end(),
            [](const Parameter& each) { return each.IsObject() && each.IsPersistent(); });
        if (lost != m_All.end() && m_Object->ControlEx(lost->m_Number, nullptr) >= 0) {
            m_Lost = lost->m_Number;
        }
    }

    Candidate m_Candidate;
    IUIPropInterrogateEx* m_Object;
    std::vector<Parameter> m_All;
    Values m_First;                ///< of a new object
    Values m_Changed;              ///< of this one
    std::optional<int32_t> m_Lost; ///< the object parameter that is null
};

/// The settings as a whole: every component on the framework's table has them there.
IUIPropInterrogatePersist& SettingsOf(const Candidate& candidate) {
    return *static_cast<IUIPropInterrogatePersist*>(candidate.As<IUIPropInterrogateEx>());
}

std::string Describe(const Changed& changed, const Values& values) {
    std::string text;
    for (size_t i = 0; i < values.size(); ++i) {
        if (values[i] != changed.m_Changed[i]) {
            text += (text.empty() ? "" : ", ") + std::to_string(changed.m_All[i].m_Number);
        }
    }
    return text;
}

/// What an object is saved as. There are elements only where the host has names for them.
std::wstring SavedText(Trial& trial, const Candidate& candidate) {
    if (!DisplayNames(nullptr, candidate.Get()).Exist()) {
        trial.Skip("the host has no names for the component");
    }
    const auto xml = XmlFile::Make();
    trial.Expect(SettingsOf(candidate).UIPropInterrogate_SaveXML(nullptr, xml.Get(), 0) >= 0,
        "saving as XML fails");
    std::wstring text(ViewOf(CREFString(xml.Get())));
    trial.Expect(!text.empty(), "nothing is saved as XML");
    return text;
}

int32_t LoadText(const Candidate& candidate, std::wstring text) {
    const auto stream = TextStream::Make(std::move(text));
    return SettingsOf(candidate).UIPropInterrogate_LoadXML(nullptr, stream.Get(), 0);
}

void SaveFolders(Trial& trial, const Candidate& candidate, const DocumentInMemory& document) {
    trial.Expect(
        SettingsOf(candidate).UIPropInterrogate_SaveFolderStream(nullptr, document.Root(), 0) >= 0,
        "saving in folders fails");
}

void LoadFolders(Trial& trial, const Candidate& candidate, IFolderStream* stream) {
    trial.Expect(SettingsOf(candidate).UIPropInterrogate_LoadFolderStream(stream, 0) >= 0,
        "loading from folders fails");
}

/// Transient numbers stay as they are in a new object.
void ExpectLoaded(Trial& trial, const Changed& changed, const Candidate& loaded) {
    Values values = ValuesOf(loaded.As<IUIPropInterrogateEx>(), changed.m_All);
    for (size_t i = 0; i < values.size(); ++i) {
        if (!changed.m_All[i].IsPersistent()) {
            values[i] = changed.m_Changed[i];
        }
    }
    trial.Expect(values == changed.m_Changed,
        "a save and a load change parameter " + Describe(changed, values));
}

void InFolders(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Changed changed(trial, stage);
    const DocumentInMemory saved;
    const DocumentInMemory again;
    SaveFolders(trial, changed.m_Candidate, saved);
    const Candidate loaded(stage);
    LoadFolders(trial, loaded, saved.Root());
    ExpectLoaded(trial, changed, loaded);
    SmartPtr<IUnknown> object;
    if (changed.m_Lost) {
        loaded.As<IUIPropInterrogateEx>()->InquireEx(*changed.m_Lost, object.Receive());
    }
    trial.Expect(!object, "an object that was null is there again");
    SaveFolders(trial, loaded, again);
    trial.Expect(saved.Describe() == again.Describe(), "what was loaded is saved otherwise");
    trial.Measure(std::to_string(saved.Describe().size()) + " characters of folders");
}

void InText(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Changed changed(trial, stage);
    const std::wstring text = SavedText(trial, changed.m_Candidate);
    const Candidate loaded(stage);
    trial.Expect(LoadText(loaded, text) >= 0, "loading from XML fails");
    ExpectLoaded(trial, changed, loaded);
    trial.Expect(SavedText(trial, loaded) == text, "what was loaded is saved otherwise");
    trial.Measure(std::to_string(text.size()) + " characters of XML");
}

/// Each number has to be what it was before or what was saved, but for the one that was cut.
void ExpectEither(Trial& trial, const Changed& changed, const Candidate& loaded, size_t place) {
    const Values values = ValuesOf(loaded.As<IUIPropInterrogateEx>(), changed.m_All);
    int others = 0;
    for (size_t i = 0; i < values.size(); ++i) {
        others += values[i] != changed.m_First[i] && values[i] != changed.m_Changed[i] ? 1 : 0;
    }
    trial.Expect(others <= 1, "cut at " + std::to_string(place) + " a load changes " +
                                  std::to_string(others) + " numbers to what nobody saved");
}

void CutText(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Changed changed(trial, stage);
    const std::wstring text = SavedText(trial, changed.m_Candidate);
    for (size_t length = 0; length < text.size(); ++length) {
        trial.At("cut at " + std::to_string(length));
        const Candidate loaded(stage);
        LoadText(loaded, text.substr(0, length));
        ExpectEither(trial, changed, loaded, length);
        LoadText(loaded, text);
        ExpectLoaded(trial, changed, loaded);
    }
    trial.Measure("cut at " + std::to_string(text.size()) + " places");
}

/// The host's stream is cut by the gate: from a call on it has nothing more. Answers at how many.
size_t CutAtEveryCall(Trial& trial, const Stage& stage, Gate& gate) {
    const Changed changed(trial, stage);
    const DocumentInMemory saved;
    SaveFolders(trial, changed.m_Candidate, saved);
    const auto stream = gate.Wrap<IFolderStream>(saved.Root());
    for (size_t calls = 0;; ++calls) {
        trial.At("with nothing from call " + std::to_string(calls) + " on");
        const Candidate loaded(stage);
        gate.Fail(calls);
        SettingsOf(loaded).UIPropInterrogate_LoadFolderStream(stream.Get(), 0);
        const bool isCut = gate.HasFailed();
        gate.FailNothing();
        ExpectEither(trial, changed, loaded, calls);
        LoadFolders(trial, loaded, stream.Get());
        ExpectLoaded(trial, changed, loaded);
        if (!isCut) {
            return calls;
        }
    }
}

/// The host's values are cut: of each, there are only so many bytes. Answers at how many lengths.
size_t CutAtEveryByte(Trial& trial, const Stage& stage) {
    const Changed changed(trial, stage);
    const size_t longest = sizeof(int32_t);
    for (size_t length = 0; length < longest; ++length) {
        for (size_t i = 0; i < changed.m_All.size(); ++i) {
            const Parameter& parameter = changed.m_All[i];
            const std::string whole(sizeof(int32_t), 'x');
            const DocumentInMemory cut;
            cut.Add(parameter.m_Number, uint32_t(parameter.m_Flags), whole.substr(0, length));
            trial.At("with " + std::to_string(length) + " bytes of parameter " +
                     std::to_string(parameter.m_Number));
            const Candidate loaded(stage);
            SettingsOf(loaded).UIPropInterrogate_LoadFolderStream(cut.Root(), 0);
            Values values = ValuesOf(loaded.As<IUIPropInterrogateEx>(), changed.m_All);
            values[i] = changed.m_First[i];
            trial.Expect(
                values == changed.m_First, "a value that is cut changes another parameter");
        }
    }
    return longest;
}

void CutFolders(Trial& trial) {
    Stage stage(trial.TheSubject());
    Gate& gate = stage.RaiseGate();
    stage.Load();
    const size_t calls = CutAtEveryCall(trial, stage, gate);
    const size_t lengths = CutAtEveryByte(trial, stage);
    stage.Unload();
    trial.Expect(gate.Misuses().empty(), "a folder is used after it was given back");
    trial.Measure("cut at " + std::to_string(calls) + " calls, values at " +
                  std::to_string(lengths) + " lengths");
}

} // namespace

std::span<const Check> SettingsChecks() {
    static constexpr const char* kTable = "the parameters' flags, and an overridden Save or Load";
    static constexpr const char* kCut = "what is set before all of a parameter was read";
    static constexpr Check checks[] = {
        {"settings.folders", "What is saved in folders is loaded, byte for byte.", kTable,
            &InFolders},
        {"settings.xml", "What is saved as XML is loaded, byte for byte.", kTable, &InText},
        {"settings.cut-folders",
            "Folders that end at any call, and values that end at any byte, are loaded up to "
            "there.",
            kCut, &CutFolders},
        {"settings.cut-xml", "XML that ends anywhere is loaded up to there.", kCut, &CutText},
    };
    return checks;
}
