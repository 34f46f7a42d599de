#pragma once

#include "framework/Interfaces.h"
#include "host/components/HostObject.h"

#include <functional>
#include <string>
#include <vector>

/// A word and numbers behind it.
inline std::string Line(std::string text, std::initializer_list<int> numbers) {
    for (const int number : numbers) {
        text += " " + std::to_string(number);
    }
    return text;
}

/// A listener for events that writes down what it hears and may act on it.
template <class... Events>
class ListenerTo final : public HostObject<ListenerTo<Events...>, Events...> {
public:
    static constexpr const char* kKind = "Listener";

    struct Event {
        /// The event and its numbers: "NodeSelect <state> <index> <action>",
        /// "NodeDrag <state> <x> <y>" or "UIItemChanged <flags>".
        std::string text;
        IUnknown* source = nullptr; ///< container, context or item; not held, it may be the control
        SmartPtr<IUnknown> node = {};
    };

    int32_t NodeSelect(
        IUnknown* container, int32_t state, int32_t index, int32_t action, IUnknown* node) {
        return Note({Line("NodeSelect", {state, index, action}), container, SmartPtr(node)});
    }
    int32_t NodeDrag(IUnknown* context, int32_t state, int32_t x, int32_t y, IUnknown* node) {
        return Note({Line("NodeDrag", {state, x, y}), context, SmartPtr(node)});
    }
    int32_t UIItemChanged(IUnknown* item, int32_t flags) {
        return Note({Line("UIItemChanged", {flags}), item});
    }

    std::vector<Event> m_Events;
    /// Called after an event is noted.
    std::function<void(const Event&)> m_Reaction;

private:
    int32_t Note(const Event& noted) {
        m_Events.push_back(noted);
        if (const auto reaction = m_Reaction) {
            reaction(noted);
        }
        return E_FAIL; // ignored by whoever fires
    }
};

using Listener = ListenerTo<_IUIContainerEvents, _IUIRefreshEvent>;
