#include "host/data/SuperCollection.h"
#include "tests/framework/FrameworkTest.h"
#include "tests/support/Listener.h"

namespace {

struct Source final : Component<Source, IEventSourceImpl<Source, &IID_IUnknown>>,
                      _FIREUIContainerEvents<Source>,
                      _FIREUIRefreshEvents<Source> {
    using _FIREUIContainerEvents::Fire_NodeSelect;
    using _FIREUIRefreshEvents::FIRE_UIItemChanged;
};

struct EventSourceTest : HostedTest {
    /// Connects a sink for each letter, which the list alone holds from then on. It writes the
    /// letter into a log for each event.
    void Connect(const std::string& letters, int32_t flags = 1) {
        for (const char letter : letters) {
            const auto sink = Listener::Make();
            sink->m_Reaction = [this, letter](const Listener::Event&) { m_Log += letter; };
            m_Sinks[letter] = sink.Get();
            EXPECT_EQ(m_Source->Advise(sink->Identity(), flags), S_OK) << letter;
        }
    }
    void Disconnect(const std::string& letters) {
        for (const char letter : letters) {
            EXPECT_EQ(m_Source->Advise(m_Sinks[letter]->Identity(), 0), S_OK) << letter;
        }
    }
    std::string Fire(bool refreshing = false) {
        m_Log.clear();
        refreshing ? m_Source->FIRE_UIItemChanged(nullptr, 0)
                   : m_Source->Fire_NodeSelect(nullptr, 0, 0, 0, nullptr);
        EXPECT_EQ(m_Source->m_LockDepth, 0);
        return m_Log;
    }

    std::string m_Log;
    std::map<char, Listener*> m_Sinks;
    SmartPtr<Source> m_Source = Adopt(new Source);
};

} // namespace

TEST_F(EventSourceTest, ReplacingSinkTakesThePlaceOfTheEarlierOneUntested) {
    const auto thing = SuperCollection::Make(); // hears nothing
    Connect("a");
    Connect("b", ADVISE_REPLACE);
    Connect("c");
    Connect("d", ADVISE_REPLACE);
    EXPECT_EQ(Fire(), "adc");
    EXPECT_EQ(m_Source->Advise(thing->Identity(), 2, IID__IUIRefreshEvent), S_OK);
    EXPECT_EQ(Fire() + Fire(true), "acac");
}

TEST_F(EventSourceTest, GrowingAndShrinkingListHasEachSinkOnceInOrder) {
    std::string letters;
    for (char letter = 'a'; letter <= 't'; ++letter) { // past 8 and 16
        Connect({letter}, letter);
        EXPECT_EQ(Fire(), letters += letter);
    }
    EXPECT_EQ(m_Source->Advise(static_cast<_IUIRefreshEvent*>(m_Sinks['r']), 6), S_FALSE);
    EXPECT_EQ(m_Source->Advise(SuperCollection::Make()->Identity(), 0), E_FAIL);
    Disconnect("atk");
    EXPECT_EQ(Fire(true), "bcdefghijlmnopqrs");
    int32_t flags = 0;
    EXPECT_TRUE(m_Source->GetAdviseItem(16, nullptr, &flags) == S_OK && flags == 's');
    SmartPtr<IUnknown> sink;
    EXPECT_EQ(m_Source->GetAdviseItem(0, sink.Receive(), nullptr), S_OK);
    EXPECT_EQ(sink.Get(), m_Sinks['b']->Identity());
    EXPECT_EQ(m_Source->GetAdviseItem(17, sink.Receive(), &flags), E_FAIL);
    EXPECT_TRUE(!sink && flags == 0);
}

TEST_F(EventSourceTest, SinksMayChangeTheListWhileTheyAreServed) {
    // Who leaves and joins a, b and c when b is served; who hears a selection, and a refresh.
    struct Case {
        std::string leaving, joining, select, refresh;
    };
    const Case cases[] = {{"b", "", "ab", "ab"}, {"a", "", "ab", "ab"}, {"c", "", "ab", "ab"},
        {"abc", "", "ab", "ab"}, {"", "d", "abc", "abcd"}, {"a", "d", "abd", "abd"}};
    for (const Case& each : cases) {
        for (const bool refreshing : {false, true}) {
            Connect("abc");
            m_Sinks['b']->m_Reaction = [&](const Listener::Event&) {
                m_Log += 'b';
                Disconnect(each.leaving);
                Connect(each.joining);
            };
            EXPECT_EQ(Fire(refreshing), refreshing ? each.refresh : each.select)
                << each.leaving << " leaving, joining: " << each.joining;
            EXPECT_EQ(m_Source->Advise(nullptr, 0), S_OK);
        }
    }
}
