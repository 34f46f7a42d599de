#include "app/validate/Candidate.h"
#include "app/validate/Scenario.h"
#include "framework/interfaces/TreeProperties.h"
#include "host/data/Expansion.h"

#include <iomanip>
#include <limits>
#include <sstream>

// Hostile numbers, two at a time, wherever a host hands a number over.

namespace {

constexpr double kWholes[] = {0, -1, 1, INT32_MIN, INT32_MAX};
constexpr double kReals[] = {0, -1, 1, INT32_MIN, INT32_MAX,
    std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(), 1e300, std::numeric_limits<double>::denorm_min()};

/// The numbers of a round; parameters follow.
enum Place : size_t {
    kLeft,
    kTop,
    kWidth,
    kHeight,
    kRow,
    kNodeRow,
    kFlags,
    kKeys,
    kState,
    kAction,
    kParam,
    kColumnWidth,
    kRowHeight,
    kScroll,
    kX,
    kY,
    kPhase,
    kPanX,
    kPanY,
    kTouch, // this and five more that Touch takes; from kX on real ones
    kPlaces = kTouch + 6
};
constexpr double kOrdinary[kPlaces] = {
    0, 0, 80, 60, 1, 2, 3, 0, 1, POINTERACTION_PRESS, 0, 0, 12, 0, 30, 20, 1, 0, -15};
constexpr const char* kNames[kPlaces] = {"left", "top", "width", "height", "row",
    "the row of put_Node", "flags", "keys", "state", "action", "param", "the width of an element",
    "the height of an element", "the scroll position", "x", "y", "phase", "the pan's x",
    "the pan's y", "Touch's 5th", "Touch's 6th", "Touch's 7th", "Touch's 8th", "Touch's 11th",
    "Touch's 12th"};

/// A component that is handed numbers in every way that it has an interface for.
class Target {
public:
    Target(Trial& trial, const Candidate& candidate)
        : m_Drawn(candidate.As<IRenderableObject>()), m_Tree(candidate.As<IUITree>()),
          m_Mouse(candidate.As<IUIMouseInput>()), m_Touch(candidate.As<IUITouchInput>()),
          m_Parameters(candidate.As<IUIPropInterrogateEx>()),
          m_Surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, 32, 32)) {
        if (!m_Drawn && !m_Tree && !m_Mouse && !m_Touch && !m_Parameters) {
            trial.Skip("the component takes no numbers");
        }
        if (m_Parameters) {
            FindParameters();
        }
    }

    size_t Places() const { return m_Numbers.size(); }
    static std::span<const double> ValuesAt(size_t place) {
        return place >= kX && place < kPlaces ? std::span<const double>(kReals)
                                              : std::span<const double>(kWholes);
    }
    std::string NameOf(size_t place) const {
        return place < kPlaces ? kNames[place]
                               : "parameter " + std::to_string(m_All[place - kPlaces].m_Number);
    }
    /// Does everything once with two numbers in the place of the ordinary ones.
    void Try(size_t first, double value, size_t second, double other) {
        const std::vector<double> ordinary = m_Numbers;
        m_Numbers[first] = value;
        m_Numbers[second] = other;
        if (m_Tree) {
            m_Data = DataOf("A\n a\n b\nB\nC\nD\n");
            m_Tree->put_Collection(m_Data.Get());
            m_Data->SetItemFlags(0, NODE_VISIBLE | NODE_EXPANDED | 1);
        }
        SetParameters();
        Round();
        m_Numbers = ordinary;
        SetParameters();
    }

private:
    int32_t Whole(size_t place) const { return static_cast<int32_t>(m_Numbers[place]); }

    /// A tree takes some that stand in no table.
    void FindParameters() {
        m_All = ParametersOf(m_Parameters);
        std::erase_if(m_All, [](const Parameter& each) { return !each.IsNumber(); });
        if (m_Tree) {
            for (const int32_t number : {PROP_OPTIONS, PROP_SELECTONPRESS, PROP_CLEARALLONSELECT}) {
                m_All.push_back({.m_Number = number, .m_Flags = 0, .m_Min = 0, .m_Max = 0});
            }
        }
        for (const Parameter& each : m_All) {
            int32_t value = 0;
            m_Parameters->Inquire(each.m_Number, &value);
            m_Numbers.push_back(value);
        }
    }

    void SetParameters() {
        for (size_t i = 0; i < m_All.size(); ++i) {
            m_Parameters->Control(m_All[i].m_Number, Whole(kPlaces + i));
        }
        if (m_Tree) {
            if (m_Numbers[kRowHeight] != kOrdinary[kRowHeight] ||
                m_Numbers[kColumnWidth] != kOrdinary[kColumnWidth]) {
                m_Tree->SetElementSize(Whole(kColumnWidth), Whole(kRowHeight));
            }
            m_Tree->Control(PROP_SCROLLPOS, Whole(kScroll));
        }
    }

    void Round() {
        CANVASRect rect{Whole(kLeft), Whole(kTop), Whole(kWidth), Whole(kHeight)};
        if (m_Drawn) {
            const ContextPtr context(cairo_create(m_Surface.get()));
            UbuntuCanvas canvas{context.get()};
            m_Drawn->Render(&canvas, &rect, nullptr, Whole(kParam));
        }
        if (m_Tree) {
            Browse(rect);
        }
        if (m_Mouse) {
            const double x = m_Numbers[kX];
            const double y = m_Numbers[kY];
            m_Mouse->Pointer(Whole(kState), Whole(kAction), Whole(kKeys), x, y, &rect, nullptr);
            m_Mouse->Pointer(1, POINTERACTION_MOVE, Whole(kKeys), x + 9, y, &rect, nullptr);
            m_Mouse->Pointer(1, POINTERACTION_RELEASE, Whole(kKeys), x, y, &rect, nullptr);
            m_Mouse->Pointer(POINTERSTATE_WHEEL, 0, Whole(kKeys), x, y, &rect, nullptr);
        }
        if (m_Touch) {
            for (const double phase : {0.0, m_Numbers[kPhase]}) {
                const double* more = &m_Numbers[kTouch];
                m_Touch->Touch(m_Numbers[kX], m_Numbers[kY], &rect, phase, more[0], more[1],
                    more[2], more[3], m_Numbers[kPanX], m_Numbers[kPanY], more[4], more[5]);
            }
        }
    }

    void Browse(CANVASRect& rect) {
        SmartPtr<IUnknown> answer;
        int32_t rows = 0;
        m_Tree->HitTest(Whole(kLeft), Whole(kTop), &rect, answer.Receive());
        m_Tree->get_Node(Whole(kFlags), Whole(kRow), 0, answer.Receive());
        m_Tree->put_Node(0, Whole(kNodeRow), 0, m_Item.Get());
        m_Tree->SelectNode(Whole(kRow), Whole(kFlags));
        m_Tree->GetSelected(Whole(kRow), Whole(kFlags), answer.Receive());
        m_Tree->MakeNodeVisible(m_Data.Get(), Whole(kRow));
        m_Tree->GetContainerSize(nullptr, &rows, nullptr);
    }

    IRenderableObject* m_Drawn;
    IUITree* m_Tree;
    IUIMouseInput* m_Mouse;
    IUITouchInput* m_Touch;
    IUIPropInterrogateEx* m_Parameters;
    SurfacePtr m_Surface;
    SmartPtr<ISuperCollection> m_Data;
    SmartPtr<ISuperCollection> m_Item = DataOf("x\n");
    std::vector<Parameter> m_All; ///< numbers only
    std::vector<double> m_Numbers{std::begin(kOrdinary), std::end(kOrdinary)};
};

std::string Shown(double value) {
    std::ostringstream text;
    text << std::setprecision(12) << value;
    return text.str();
}

void Pairs(Trial& trial) {
    Stage stage(trial.TheSubject());
    stage.Load();
    const Candidate candidate(stage);
    const auto well = Scenario().Picture(candidate.Get());
    Target target(trial, candidate);
    size_t pairs = 0;
    for (size_t first = 0; first < target.Places(); ++first) {
        for (size_t second = first + 1; second < target.Places(); ++second) {
            for (const double value : Target::ValuesAt(first)) {
                for (const double other : Target::ValuesAt(second)) {
                    trial.At("with " + target.NameOf(first) + " = " + Shown(value) + ", " +
                             target.NameOf(second) + " = " + Shown(other));
                    target.Try(first, value, second, other);
                    ++pairs;
                }
            }
        }
    }
    trial.Expect(
        Scenario().Picture(candidate.Get()) == well, "it does not draw as before any more");
    trial.Measure(
        std::to_string(pairs) + " pairs in " + std::to_string(target.Places()) + " places");
}

} // namespace

std::span<const Check> NumberChecks() {
    static constexpr Check checks[] = {
        {"numbers.pairs", "Any two numbers may be anything, wherever the host hands numbers over.",
            "conversions to whole numbers, sums of edges, divisions by sizes", &Pairs},
    };
    return checks;
}
