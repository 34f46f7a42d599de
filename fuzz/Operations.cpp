// The whole control: any operations on it, on data whose calls fail from time to time. While the
// host is well the control's rows are those that a walk of the data finds, and a control whose
// collection has a version reports the same as one without; in the end nothing is held, and nothing
// was released twice.

#include "app/faults/Gate.h"
#include "app/replay/Clock.h"
#include "app/session/EventLog.h"
#include "framework/Interfaces.h"
#include "fuzz/Input.h"
#include "host/Host.h"
#include "host/components/LiveObjects.h"
#include "host/components/Module.h"
#include "host/data/Expansion.h"
#include "host/data/SuperCollection.h"
#include "host/drawing/Cairo.h"
#include "host/settings/Document.h"
#include "host/settings/XmlFile.h"
#include "host/sources/OutlineSource.h"

#include <array>
#include <limits>
#include <memory>
#include <sstream>

namespace {

constexpr int32_t kWidth = 120;
constexpr int32_t kHeight = 60;
constexpr const char* kOutlines[] = {"", "A\n", "A\n a1\n  x\n   y\n a2\nB\n b1\nC\n",
    "A\nB\nC\nD\nE\nF\nG\nH\n", "A\n a\n a\n  a\n   a\n    a\nB\n b\n"};
constexpr std::array kNumbers{INT32_MIN, -100, -1, 0, 1, 2, 3, 10, 22, 100, INT32_MAX};
constexpr std::array kParameters{
    4, 100, 101, 104, 105, 115, 116, 136, 145, 146, 147, 148, 170, 171, 172};
using Reals = std::numeric_limits<double>;
constexpr std::array kOddPlaces{
    -1.0, 1e300, -1e300, Reals::quiet_NaN(), Reals::infinity(), -Reals::infinity(), 0.5, 59.999};

class Hand {
public:
    Hand(const Module& module, Gate& gate, Input input, bool isVouched)
        : m_Input(input), m_Gate(gate),
          m_Surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)),
          m_Context(cairo_create(m_Surface.get())) {
        if (!isVouched) { // none of the host's collections vouches while one holds a wrapper
            m_Blind->Append("", m_Gate.Wrap(SuperCollection::Make()->Identity()).Get());
        }
        m_Tree = module.Create<IUITree>(L"UITree");
        m_Log = EventLog::Make(m_Tree.Get(), false);
        Bind(2);
    }
    ~Hand() {
        m_Gate.FailNothing();
        m_Tree->put_Collection(nullptr);
    }
    Hand(const Hand&) = delete;

    /// What the control answered, operation by operation.
    std::string Play() {
        for (int32_t steps = 1; !m_Input.IsEmpty(); ++steps) {
            m_Answers += std::to_string(Step()) + ' ';
            if (m_Gate.HasFailed()) {
                m_IsWell = false;
                m_HasBeenWell = false;
            }
            // A wrong row stays wrong, and to look at all of them costs more than the step.
            if (m_IsWell && (steps % 8 == 0 || m_Input.IsEmpty())) {
                CheckRows();
            }
        }
        return m_HasBeenWell ? m_Answers : "";
    }

private:
    template <class Values>
    auto One(const Values& values) {
        return values[m_Input.Byte() % std::size(values)];
    }
    double Place(int32_t side) {
        const uint8_t byte = m_Input.Byte();
        return byte >= 250 ? kOddPlaces[byte % std::size(kOddPlaces)] : byte % (side + 4) - 2.0;
    }
    template <class T>
    SmartPtr<T> As() const {
        return Query<T>(m_Tree.Get());
    }

    int32_t Step() {
        using Operation = int32_t (Hand::*)();
        struct Share {
            Operation m_Operation;
            int m_Parts;
        };
        // Settings are kept rarely: a document takes longer than all the rest.
        constexpr Share kShares[] = {{&Hand::Point, 6}, {&Hand::Touch, 2}, {&Hand::Select, 3},
            {&Hand::Open, 3}, {&Hand::Insert, 3}, {&Hand::BindAny, 2}, {&Hand::Set, 3},
            {&Hand::Keep, 1}, {&Hand::Draw, 3}, {&Hand::Wait, 1}, {&Hand::Fail, 2},
            {&Hand::Ask, 3}};
        int part = m_Input.Byte() % 32;
        const auto* share = std::begin(kShares);
        for (; part >= share->m_Parts; ++share) {
            part -= share->m_Parts;
        }
        return (this->*share->m_Operation)();
    }

    int32_t Point() {
        constexpr int32_t kActions[] = {
            POINTERACTION_PRESS, POINTERACTION_RELEASE, POINTERACTION_MOVE};
        constexpr int32_t kStates[] = {
            1, 1, 1, 2, 3, POINTERSTATE_WHEEL, POINTERSTATE_WHEEL | POINTERSTATE_FAST};
        constexpr int32_t kKeys[] = {0, 0, 0, 4, 8, 100, -300, INT32_MIN};
        CANVASRect rect{0, 0, kWidth, kHeight};
        const int32_t state = One(kStates);
        const int32_t action = One(kActions);
        const int32_t keys = One(kKeys);
        const double x = Place(kWidth);
        return As<IUIMouseInput>()->Pointer(state, action, keys, x, Place(kHeight), &rect, nullptr);
    }
    int32_t Touch() {
        CANVASRect rect{0, 0, kWidth, kHeight};
        const double phase = m_Input.Byte() % 4 - 1;
        return As<IUITouchInput>()->Touch(
            0, 0, &rect, phase, 0, 0, 0, 0, 0, Place(kHeight) - 30, 0, 0);
    }
    int32_t Select() {
        const int32_t row = One(kNumbers);
        return m_Tree->SelectNode(row, m_Input.Byte() % 16);
    }
    int32_t Open() {
        const int32_t index = m_Input.Byte() % 10 - 1;
        return m_Tree->MakeNodeVisible(m_Data.Get(), index);
    }
    int32_t Insert() {
        const auto item = m_Gate.Wrap(Outline(m_Input.Byte()).Get());
        const int32_t row = One(kNumbers);
        return row == 0 ? m_Tree->Insert(m_Data.Get(), item.Get(), {}, {}, {})
                        : m_Tree->put_Node(0, row, 0, item.Get());
    }
    SmartPtr<ISuperCollection> Outline(uint8_t number) {
        std::istringstream text(kOutlines[number % std::size(kOutlines)]);
        return ReadOutline(text);
    }
    int32_t Bind(uint8_t number) {
        m_Data = m_Gate.Wrap(Outline(number).Get());
        return m_Tree->put_Collection(number % 16 == 15 ? nullptr : m_Data.Get());
    }
    int32_t BindAny() { return Bind(m_Input.Byte()); }
    int32_t Wait() {
        m_Clock.Advance(int64_t{m_Input.Byte()} * 10'000);
        return 0;
    }
    int32_t Set() {
        const int32_t parameter = One(kParameters);
        return m_Tree->Control(parameter, One(kNumbers));
    }
    int32_t Keep() {
        const uint8_t how = m_Input.Byte();
        if (how % 2 == 0) {
            if (!m_Document) {
                m_Document.reset(new Document(Document::InMemory()));
                m_Folders = m_Gate.Wrap(m_Document->Root().Get());
            }
            const auto persist = As<IDataPersist>();
            return how % 4 == 0 ? persist->Save(m_Folders.Get(), 0)
                                : persist->Load(m_Folders.Get(), 0);
        }
        auto properties = As<IUIPropInterrogateEx>();
        const auto settings = Adopt(static_cast<IUIPropInterrogatePersist*>(properties.Detach()));
        return how % 4 == 1 ? settings->UIPropInterrogate_SaveXML(nullptr, m_Text.Get(), 0)
                            : settings->UIPropInterrogate_LoadXML(nullptr, m_Text.Get(), 0);
    }
    int32_t Draw() {
        CANVASRect rect{0, 0, kWidth, kHeight};
        UbuntuCanvas canvas{m_Context.get()};
        return As<IRenderableObject>()->Render(&canvas, &rect, nullptr, 0);
    }
    /// One call of the host, or all of them, from some call on; or none any more, and then all is
    /// well again with the next tree.
    int32_t Fail() {
        const uint8_t first = m_Input.Byte();
        const uint8_t failing = m_Input.Byte();
        m_HasBeenWell = false;
        m_IsWell = first == 0;
        if (first == 0) {
            m_Gate.FailNothing();
            return Bind(failing % 15); // not none
        }
        m_Gate.Fail(first - 1, failing == 0 ? SIZE_MAX : failing);
        return 0;
    }
    int32_t Ask() {
        CANVASRect rect{0, 0, kWidth, kHeight};
        SmartPtr<IUnknown> answer;
        switch (m_Input.Byte() % 6) {
        case 0:
            return m_Tree->HitTest(
                m_Input.Byte() % kWidth, m_Input.Byte() % kHeight, &rect, answer.Receive());
        case 1:
            return m_Tree->get_Node(0, One(kNumbers), 0, answer.Receive());
        case 2:
            return m_Tree->GetSelected(-1, m_Input.Byte() % 4, answer.Receive());
        case 3:
            return m_Tree->CompactNodes();
        case 4:
            return m_Tree->Clear();
        default:
            return As<IEventSource>()->Advise(m_Log->Identity(), m_Input.Byte() % 2);
        }
    }

    /// The rows by a walk of the host's own, beside the control's.
    void CheckRows() {
        SmartPtr<IUnknown> bound;
        m_Tree->get_Collection(bound.Receive());
        const auto root = Query<ISuperCollection>(bound.Get());
        if (!root) {
            return;
        }
        int32_t rows = 0;
        VisitRows(root.Get(), [&](ISuperCollection* collection, int32_t index, int32_t) {
            SmartPtr<IUnknown> item;
            SmartPtr<IUnknown> node;
            collection->GetItem(index, item.Receive());
            m_Tree->get_Node(0, rows++, 0, node.Receive());
            Require(node == item.Get());
            return true;
        });
        int32_t counted = -1;
        m_Tree->GetContainerSize(nullptr, &counted, nullptr);
        Require(counted == rows);
    }

    Input m_Input;
    Gate& m_Gate;
    StandingClock m_Clock;
    SurfacePtr m_Surface;
    ContextPtr m_Context;
    std::unique_ptr<Document> m_Document; ///< made when first used: it takes longer than the rest
    SmartPtr<IDataStream> m_Folders;
    SmartPtr<IDataStream> m_Text = m_Gate.Wrap(static_cast<IDataStream*>(XmlFile::Make().Get()));
    SmartPtr<SuperCollection> m_Blind = SuperCollection::Make();
    SmartPtr<ISuperCollection> m_Data;
    SmartPtr<IUITree> m_Tree;
    SmartPtr<EventLog> m_Log;
    std::string m_Answers;
    bool m_IsWell = true;      ///< no call of the host has failed since the tree was bound
    bool m_HasBeenWell = true; ///< nor before that: two controls failed at different calls
};

std::string Play(const Module& module, const Input& input, bool isVouched) {
    Gate gate;
    std::string answers = Hand(module, gate, input, isVouched).Play();
    Require(gate.References() == 0 && gate.Misuses().empty());
    return answers;
}

/// Lets the module make what it keeps until it is unloaded, before any gate could wrap that.
bool Warm(const Module& module) {
    const auto tree = module.Create<IUITree>(L"UITree");
    const auto text = XmlFile::Make();
    Document document = Document::InMemory();
    auto properties = Query<IUIPropInterrogateEx>(tree.Get());
    const auto settings = Adopt(static_cast<IUIPropInterrogatePersist*>(properties.Detach()));
    return settings->UIPropInterrogate_SaveXML(nullptr, text.Get(), 0) >= 0 &&
           settings->UIPropInterrogate_LoadXML(nullptr, text.Get(), 0) >= 0 &&
           Query<IDataPersist>(tree.Get())->Save(document.Root().Get(), 0) >= 0 &&
           Query<IDataPersist>(tree.Get())->Load(document.Root().Get(), 0) >= 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static Host gHost(".");
    static Module gModule("./UITree.so", gHost.Components()); // stays, with its counters
    static const bool gIsWarm = Warm(gModule);
    Require(gIsWarm);
    const Input input(data, size);
    Require(Play(gModule, input, true) == Play(gModule, input, false));
    return 0;
}
