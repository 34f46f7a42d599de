#pragma once

#include "framework/interfaces/EventInterfaces.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "host/components/HostObject.h"

#include <string>
#include <vector>

/// A status as records write it: small numbers in decimal, failures and flags in hexadecimal.
std::string StatusText(int32_t status);

/// Listens to a control and writes down what it hears, one line for each event.
class EventLog final : public HostObject<EventLog, _IUIContainerEvents, _IUIRefreshEvent> {
public:
    static constexpr const char* kKind = "EventLog";

    /// What was heard since the last time.
    struct Heard {
        std::vector<std::string> m_Lines = {};
        bool m_NeedsDrawing = false;
        SmartPtr<IUnknown> m_Reported = {}; ///< the node that the control itself reported last
        int32_t m_Action = -1; ///< of the last click on a row; negative when there was none
    };

    /// `tree` outlives the log. Without a record no lines are written, which takes a look at every
    /// row.
    EventLog(IUITree* tree, bool isRecorded) : m_Tree(tree), m_IsRecorded(isRecorded) {}

    Heard Take() { return std::exchange(m_Heard, {}); }

    int32_t NodeSelect(
        IUnknown* container, int32_t state, int32_t index, int32_t action, IUnknown* node) override;
    int32_t NodeDrag(
        IUnknown* context, int32_t state, int32_t x, int32_t y, IUnknown* node) override;
    int32_t UIItemChanged(IUnknown* item, int32_t flags) override;

private:
    std::string ContainerText(IUnknown* container) const;
    std::string NodeText(IUnknown* node) const;

    /// Adds a line, made only when it is wanted.
    template <class MakeLine>
    void Note(const MakeLine& makeLine) {
        if (m_IsRecorded) {
            m_Heard.m_Lines.push_back(makeLine());
        }
    }

    IUITree* m_Tree;
    bool m_IsRecorded;
    Heard m_Heard;
};
