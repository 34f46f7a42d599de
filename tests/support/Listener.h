#pragma once

#include "framework/Interfaces.h"
#include "host/HostObject.h"

#include <functional>
#include <string>
#include <vector>

/// A listener for both events that writes down what it hears and may act on it.
class Listener final : public HostObject<Listener, _IUIContainerEvents, _IUIRefreshEvent> {
public:
    static constexpr const char* kKind = "Listener";

    struct Event {
        std::string name;
        IUnknown* source; ///< container, context or item; not held, it may be the control
        int32_t state = 0;
        int32_t first = 0;  ///< index or x
        int32_t second = 0; ///< action or y
        SmartPtr<IUnknown> node = {};
    };

    int32_t NodeSelect(IUnknown* container, int32_t state, int32_t index, int32_t action,
        IUnknown* node) override {
        return Note({"NodeSelect", container, state, index, action, SmartPtr(node)});
    }
    int32_t NodeDrag(
        IUnknown* context, int32_t state, int32_t x, int32_t y, IUnknown* node) override {
        return Note({"NodeDrag", context, state, x, y, SmartPtr(node)});
    }
    int32_t UIItemChanged(IUnknown* item, int32_t flags) override {
        return Note({"UIItemChanged", item, flags});
    }

    /// The events so far by name, in order, separated by blanks; forgets them.
    std::string TakeNames() {
        std::string names;
        for (const Event& event : m_Events) {
            names += (names.empty() ? "" : " ") + event.name;
        }
        m_Events.clear();
        return names;
    }

    std::vector<Event> m_Events;
    /// Called after an event is noted.
    std::function<void(const Event&)> m_Reaction;

private:
    int32_t Note(Event event) {
        m_Events.push_back(std::move(event));
        if (m_Reaction) {
            const auto reaction = m_Reaction;
            const Event noted = m_Events.back();
            reaction(noted);
        }
        return E_FAIL; // ignored by whoever fires
    }
};
