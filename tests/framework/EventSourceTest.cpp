#include "tests/framework/FailingNew.h"
#include "tests/framework/FrameworkTest.h"

namespace {

class Source final : public Component<Source, IEventSourceImpl<Source, &IID_IUnknown>>,
                     public _FIREUIContainerEvents<Source>,
                     public _FIREUIRefreshEvents<Source> {
public:
    using _FIREUIContainerEvents::Fire_NodeDrag;
    using _FIREUIContainerEvents::Fire_NodeSelect;
    using _FIREUIRefreshEvents::FIRE_UIItemChanged;
};

/// A listener of some events, which writes its letter into a log for each.
template <class... Events>
class SinkOf final : public HostObject<SinkOf<Events...>, Events...> {
public:
    static constexpr const char* kKind = "Sink";
    SinkOf(char letter, std::string& log) : m_Letter(letter), m_Log(log) {}
    ~SinkOf() { m_OnDeath(); }

    int32_t NodeSelect(IUnknown* object, int32_t a, int32_t b, int32_t c, IUnknown* node) {
        return Note(object, a, b, c, node);
    }
    int32_t NodeDrag(IUnknown* object, int32_t a, int32_t b, int32_t c, IUnknown* node) {
        return Note(object, a, b, c, node);
    }
    int32_t UIItemChanged(IUnknown* item, int32_t flags) { return Note(item, flags, 0, 0, item); }

    std::tuple<IUnknown*, int32_t, int32_t, int32_t, IUnknown*> m_Arguments;
    std::function<void()> m_OnEvent = [] {};
    std::function<void()> m_OnDeath = [] {};

private:
    template <class... Arguments>
    int32_t Note(Arguments... arguments) {
        m_Arguments = {arguments...};
        m_Log += m_Letter;
        m_OnEvent();
        return E_FAIL; // nobody cares
    }

    char m_Letter;
    std::string& m_Log;
};
using Sink = SinkOf<_IUIContainerEvents, _IUIRefreshEvent>;
using ContainerSink = SinkOf<_IUIContainerEvents>;
using RefreshSink = SinkOf<_IUIRefreshEvent>;

class EventSourceTest : public LeakTest {
protected:
    /// Connects a sink that the list alone holds from then on.
    Sink* Connect(char letter, int32_t flags = 1) {
        const auto sink = Sink::Make(letter, m_Log);
        EXPECT_EQ(Advise(sink.Get(), flags), S_OK);
        return sink.Get();
    }
    int32_t Advise(Sink* sink, int32_t flags) {
        return m_Source->Advise(sink ? sink->Identity() : nullptr, flags);
    }
    std::string FireContainer() {
        m_Log.clear();
        m_Source->Fire_NodeSelect(nullptr, 0, 0, 0, nullptr);
        return m_Log;
    }
    std::string FireRefresh() {
        m_Log.clear();
        m_Source->FIRE_UIItemChanged(nullptr, 0);
        return m_Log;
    }
    void TearDown() override {
        EXPECT_EQ(m_Source->m_LockDepth, 0);
        m_Source.Reset();
        LeakTest::TearDown();
    }

    std::string m_Log;
    SmartPtr<Source> m_Source = Adopt(new Source);
};

} // namespace

TEST_F(EventSourceTest, SinkIsConnectedOnceWhicheverInterfaceItGives) {
    const auto sink = Sink::Make('a', m_Log);
    EXPECT_EQ(Advise(sink.Get(), 5), S_OK);
    EXPECT_EQ(Advise(sink.Get(), 6), S_FALSE);
    EXPECT_EQ(m_Source->Advise(static_cast<_IUIRefreshEvent*>(sink.Get()), 1), S_FALSE);
    EXPECT_EQ(FireRefresh(), "a");
    EXPECT_EQ(m_Source->Advise(static_cast<_IUIRefreshEvent*>(sink.Get()), 0), S_OK);
    EXPECT_EQ(Advise(sink.Get(), 0), E_FAIL);
    EXPECT_EQ(m_Source->GetAdviseCount(), 0);
    EXPECT_EQ(CountOf(sink->Identity()), 1);
}

TEST_F(EventSourceTest, SinkWithoutTheRequiredEventsIsRefused) {
    const auto sink = ContainerSink::Make('a', m_Log);
    for (const int32_t flags : {1, 2}) {
        EXPECT_EQ(m_Source->Advise(sink.Get(), flags, IID__IUIRefreshEvent), E_NOINTERFACE);
        EXPECT_EQ(m_Source->Advise(nullptr, flags), E_POINTER);
    }
    EXPECT_EQ(Advise(nullptr, 0), S_OK);
    EXPECT_EQ(m_Source->GetAdviseCount(), 0);
    EXPECT_EQ(m_Source->Advise(sink.Get(), 1, IID__IUIContainerEvents), S_OK);
}

TEST_F(EventSourceTest, ReplacingSinkTakesThePlaceOfTheEarlierOneUntested) {
    Connect('a');
    Connect('b', ADVISE_REPLACE);
    Connect('c');
    const auto before = LiveObjects();
    Connect('d', ADVISE_REPLACE);
    EXPECT_EQ(LiveObjects(), before);
    EXPECT_EQ(FireContainer(), "adc");
    const auto refresh = RefreshSink::Make('r', m_Log);
    EXPECT_EQ(m_Source->Advise(refresh.Get(), 2, IID__IUIContainerEvents), S_OK);
    EXPECT_EQ(FireContainer(), "ac");
    EXPECT_EQ(FireRefresh(), "arc");
}

TEST_F(EventSourceTest, DisconnectingKeepsTheOthersInOrder) {
    const std::pair<std::string, const char*> cases[] = {
        {"b", "acd"}, {"a", "bcd"}, {"d", "abc"}, {"ad", "bc"}, {"dcba", ""}};
    for (const auto& [removed, left] : cases) {
        std::map<char, Sink*> sinks;
        for (const char letter : {'a', 'b', 'c', 'd'}) {
            sinks[letter] = Connect(letter);
        }
        for (const char letter : removed) {
            EXPECT_EQ(Advise(sinks[letter], 0), S_OK);
        }
        EXPECT_EQ(FireRefresh(), left) << removed;
        EXPECT_EQ(Advise(nullptr, 0), S_OK);
        EXPECT_EQ(LiveObjects(), m_Before);
    }
}

TEST_F(EventSourceTest, ListingAnswersEachSinkAndFailsPastTheEnd) {
    std::string letters;
    for (char letter = 'a'; letter <= 't'; ++letter) { // past 8 and 16
        Sink* connected = Connect(letter, letter);
        letters += letter;
        EXPECT_EQ(FireContainer(), letters);
        SmartPtr<IUnknown> sink;
        int32_t flags = 0;
        const auto last = static_cast<uint32_t>(letters.size() - 1);
        EXPECT_EQ(m_Source->GetAdviseItem(last, sink.Receive(), nullptr), S_OK);
        EXPECT_EQ(sink.Get(), connected->Identity());
        EXPECT_EQ(m_Source->GetAdviseItem(last, nullptr, &flags), S_OK);
        EXPECT_EQ(flags, letter);
    }
    for (const uint32_t index : {20U, 0x80000000U, 0xFFFFFFFFU}) {
        auto* sink = reinterpret_cast<IUnknown*>(this);
        EXPECT_EQ(m_Source->GetAdviseItem(index, &sink, nullptr), E_FAIL) << index;
        EXPECT_EQ(sink, nullptr) << index;
    }
}

TEST_F(EventSourceTest, EventsReachOnlyTheSinksThatSpeakThem) {
    const auto both = Sink::Make('b', m_Log);
    m_Source->Advise(ContainerSink::Make('c', m_Log).Get(), 1);
    m_Source->Advise(Thing::Make().Get(), 1);
    m_Source->Advise(both->Identity(), 1);
    m_Source->Advise(RefreshSink::Make('r', m_Log).Get(), 1);
    const auto first = Thing::Make();
    const auto second = Thing::Make();
    m_Source->Fire_NodeSelect(first.Get(), 1, 2, 3, second.Get());
    EXPECT_EQ(both->m_Arguments, std::tuple(first.Get(), 1, 2, 3, second.Get()));
    m_Source->Fire_NodeDrag(second.Get(), -1, -2, -3, first.Get());
    EXPECT_EQ(both->m_Arguments, std::tuple(second.Get(), -1, -2, -3, first.Get()));
    m_Source->FIRE_UIItemChanged(first.Get(), 9);
    EXPECT_EQ(both->m_Arguments, std::tuple(first.Get(), 9, 0, 0, first.Get()));
    EXPECT_EQ(m_Log, "cbcbbr");
}

TEST_F(EventSourceTest, SinksMayChangeTheListWhileTheyAreServed) {
    std::map<char, Sink*> sinks;
    const auto connect = [&](char letter) { sinks[letter] = Connect(letter); };
    const auto disconnect = [&](char letter) { Advise(sinks[letter], 0); };
    const struct {
        std::function<void()> act; ///< what b does among a, b and c
        const char* container;
        const char* refresh;
    } cases[] = {
        {[&] { disconnect('b'); }, "ab", "ab"},
        {[&] { disconnect('a'); }, "ab", "ab"},
        {[&] { disconnect('c'); }, "ab", "ab"},
        {[&] { Advise(nullptr, 0); }, "ab", "ab"},
        {[&] { connect('d'); }, "abc", "abcd"},
        {[&] { disconnect('a'), connect('d'); }, "abd", "abd"},
    };
    for (const bool refreshing : {false, true}) {
        for (const auto& [act, container, refresh] : cases) {
            for (const char letter : {'a', 'b', 'c'}) {
                connect(letter);
            }
            sinks['b']->m_OnEvent = [this, act = act] {
                EXPECT_EQ(m_Source->m_LockDepth, 0);
                act();
            };
            EXPECT_EQ(
                refreshing ? FireRefresh() : FireContainer(), refreshing ? refresh : container)
                << "case " << &act - &cases[0].act;
            Advise(nullptr, 0);
        }
    }
}

TEST_F(EventSourceTest, SinkThatConnectsAnotherWhileItDiesLosesNothing) {
    for (const bool all : {true, false}) {
        Connect('a');
        Sink* dying = Connect('b');
        Connect('c');
        dying->m_OnDeath = [&] {
            EXPECT_EQ(m_Source->Advise(Thing::Make().Get(), 0), E_FAIL);
            Connect('z');
        };
        EXPECT_EQ(Advise(all ? nullptr : dying, 0), S_OK);
        EXPECT_EQ(FireContainer(), all ? "z" : "acz");
        Advise(nullptr, 0);
    }
}

TEST_F(EventSourceTest, WithoutMemoryTheListStaysAsItWas) {
    for (char letter = 'a'; letter <= 'h'; ++letter) {
        Connect(letter);
    }
    const auto next = Sink::Make('i', m_Log); // the list has to grow for it
    for (const size_t allowed : {0U, 1U}) {
        int32_t status = S_OK;
        {
            const FailingNew noMemory(allowed);
            status = Advise(next.Get(), 1);
        }
        EXPECT_EQ(status, E_FAIL) << allowed;
        EXPECT_EQ(FireContainer(), "abcdefgh") << allowed;
        EXPECT_EQ(CountOf(next->Identity()), 1) << allowed;
    }
    EXPECT_EQ(Advise(next.Get(), 1), S_OK);
    EXPECT_EQ(FireContainer(), "abcdefghi");
}
