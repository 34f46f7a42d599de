#include "app/validate/Candidate.h"
#include "app/validate/Scenario.h"

// Null for every pointer that may be null.

namespace {

/// Where a result has nowhere to go, the operation says so.
void Refused(Trial& trial, int32_t status, const char* operation) {
    trial.Expect(
        status < 0, std::string(operation) + " has no place for its result and is content");
}

void OfObject(Trial& trial, const Candidate& candidate) {
    trial.At("in GetName");
    if (auto* info = candidate.As<IObjectInfo>()) {
        Refused(trial, info->GetName(0, nullptr), "GetName");
    }
    trial.At("in get_Parent or put_Parent");
    if (auto* child = candidate.As<IParent>()) {
        Refused(trial, child->get_Parent(nullptr), "get_Parent");
        child->put_Parent(nullptr);
    }
    trial.At("in GetPages");
    if (auto* pages = candidate.As<IUIPropertyPageSpecify>()) {
        Refused(trial, pages->GetPages(0, nullptr, nullptr), "GetPages");
    }
    trial.At("in Save or Load");
    if (auto* persist = candidate.As<IDataPersist>()) {
        trial.Expect(persist->Save(nullptr, 0) == S_OK && persist->Load(nullptr, 0) == S_OK,
            "a stream that is null is not passed over with S_OK");
    }
    trial.At("in Advise or GetAdviseItem");
    if (auto* source = candidate.As<IEventSource>()) {
        source->Advise(nullptr, 1);
        source->Advise(nullptr, ADVISE_REPLACE);
        source->Advise(nullptr, 1, IID__IUIRefreshEvent);
        source->GetAdviseItem(0, nullptr, nullptr);
        source->Advise(nullptr, ADVISE_DISCONNECT);
    }
    trial.At("in UIItemChanged");
    if (auto* refreshed = candidate.As<_IUIRefreshEvent>()) {
        refreshed->UIItemChanged(nullptr, 0);
    }
}

void OfParameters(Trial& trial, const Candidate& candidate) {
    auto* parameters = candidate.As<IUIPropInterrogateEx>();
    if (!parameters) {
        return;
    }
    std::vector<int32_t> numbers = {PROPID_ALL, 0, -1, INT32_MAX};
    for (const Parameter& parameter : ParametersOf(parameters)) {
        numbers.push_back(parameter.m_Number);
    }
    for (const int32_t number : numbers) {
        trial.At("with parameter " + std::to_string(number));
        parameters->Inquire(number, nullptr);
        parameters->ParameterRange(number, nullptr, nullptr);
        parameters->ParameterEnumeration(number, nullptr);
        parameters->InquireEx(number, nullptr);
        parameters->ControlEx(number, nullptr);
    }
}

void OfPicture(Trial& trial, const Candidate& candidate) {
    trial.At("in Render");
    const SurfacePtr surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 40, 40));
    const ContextPtr context(cairo_create(surface.get()));
    UbuntuCanvas canvas{context.get()};
    UbuntuCanvas empty{nullptr};
    CANVASRect rect{0, 0, 40, 40};
    for (UbuntuCanvas* each : {&canvas, &empty, static_cast<UbuntuCanvas*>(nullptr)}) {
        for (CANVASRect* area : {&rect, static_cast<CANVASRect*>(nullptr)}) {
            if (auto* drawn = candidate.As<IRenderableObject>()) {
                drawn->Render(each, area, nullptr, 0);
            }
        }
    }
    trial.At("in Pointer");
    if (auto* input = candidate.As<IUIMouseInput>()) {
        for (const int32_t action :
            {POINTERACTION_PRESS, POINTERACTION_MOVE, POINTERACTION_RELEASE}) {
            input->Pointer(1, action, 0, 5, 5, nullptr, nullptr);
        }
    }
    trial.At("in Touch");
    if (auto* input = candidate.As<IUITouchInput>()) {
        input->Touch(5, 5, nullptr, 0, 0, 0, 0, 0, 0, 5, 0, 0);
    }
}

void OfTree(Trial& trial, IUITree& tree) {
    SmartPtr<IUnknown> node;
    trial.At("in get_Collection, get_Node or HitTest");
    Refused(trial, tree.get_Collection(nullptr), "get_Collection");
    Refused(trial, tree.get_Node(0, 0, 0, nullptr), "get_Node");
    Refused(trial, tree.HitTest(5, 5, nullptr, nullptr), "HitTest");
    tree.HitTest(5, 5, nullptr, node.Receive());
    trial.At("in GetElementSize, GetContainerSize or Inquire");
    tree.GetElementSize(nullptr, nullptr);
    tree.GetContainerSize(nullptr, nullptr, nullptr);
    tree.Inquire(PROPID_ALL, nullptr);
    trial.At("in MakeNodeVisible, Insert, put_Node or GetSelected");
    tree.MakeNodeVisible(nullptr, 0);
    tree.Insert(nullptr, nullptr, {}, {}, {});
    tree.put_Node(0, 0, 0, nullptr);
    for (const int32_t kind : {SELECTED_NODE, SELECTED_DATA, SELECTED_COLLECTION}) {
        tree.GetSelected(-1, kind, nullptr);
    }
    trial.At("in put_Collection");
    trial.Expect(tree.put_Collection(nullptr) < 0, "no collection is bound");
}

void Pointers(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    auto* tree = candidate.As<IUITree>();
    for (const bool isBound : {false, true}) {
        const auto data = DataOf("A\n a\nB\n");
        if (isBound && tree) {
            tree->put_Collection(data.Get());
        }
        OfPicture(trial, candidate);
        if (tree) {
            OfTree(trial, *tree);
        }
        OfObject(trial, candidate);
        OfParameters(trial, candidate);
    }
    trial.Measure(tree ? "without a tree and with one" : "1 object");
}

} // namespace

std::span<const Check> NullChecks() {
    static constexpr Check checks[] = {
        {"null.pointers", "Every pointer that may be null may be null.",
            "canvas, rectangle and out-parameters, which the host may leave out", &Pointers},
    };
    return checks;
}
