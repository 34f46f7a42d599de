#include "app/session/EventLog.h"

#include "app/tree/Rows.h"
#include "host/text/Text.h"

#include <iomanip>
#include <sstream>

namespace {

constexpr int32_t kLastDecimal = 9;

std::string Quoted(const std::wstring& label) {
    std::ostringstream text;
    text << std::quoted(ToPrintable(Refer(label)));
    return text.str();
}

std::string QuotedLabelOf(const Row& row) {
    return Quoted(LabelOf(Place{row.m_Collection, row.m_Index}));
}

std::string NodeActionText(int32_t action) {
    constexpr const char* kNames[] = {"none", "opened", "closed"};
    const auto number = static_cast<size_t>(action);
    return number < std::size(kNames) ? kNames[number] : std::to_string(action);
}

} // namespace

std::string StatusText(int32_t status) {
    std::ostringstream text;
    if (status < 0 || status > kLastDecimal) {
        text << "0x" << std::hex << static_cast<uint32_t>(status);
    } else {
        text << status;
    }
    return text.str();
}

int32_t EventLog::NodeSelect(
    IUnknown* container, int32_t state, int32_t index, int32_t action, IUnknown* node) {
    return Guarded([&] {
        Note([&] {
            return "NodeSelect container=" + ContainerText(container) +
                   " state=" + std::to_string(state) + " index=" + std::to_string(index) +
                   " action=" + NodeActionText(action) + " node=" + NodeText(node);
        });
        // A selection is announced by this event alone, and it shows.
        m_Heard.m_NeedsDrawing = true;
        if (IsSameObject(container, m_Tree)) {
            m_Heard.m_Reported = node;
        } else {
            m_Heard.m_Action = action;
        }
        return S_OK;
    });
}

int32_t EventLog::NodeDrag(
    IUnknown* /*context*/, int32_t state, int32_t x, int32_t y, IUnknown* node) {
    return Guarded([&] {
        Note([&] {
            return "NodeDrag state=" + std::to_string(state) + " x=" + std::to_string(x) +
                   " y=" + std::to_string(y) + " node=" + NodeText(node);
        });
        return S_OK;
    });
}

int32_t EventLog::UIItemChanged(IUnknown* /*item*/, int32_t /*flags*/) {
    return Guarded([&] {
        Note([] { return "UIItemChanged"; });
        m_Heard.m_NeedsDrawing = true;
        return S_OK;
    });
}

/// The control, the bound collection, or else the label of the row that the collection is below.
std::string EventLog::ContainerText(IUnknown* container) const {
    if (IsSameObject(container, m_Tree)) {
        return "control";
    }
    if (IsSameObject(container, RootOf(m_Tree).Get())) {
        return "root";
    }
    const Row row = RowOfCollection(m_Tree, container);
    return row.IsFound() ? QuotedLabelOf(row) : "other";
}

/// What is reported is mostly what is selected: no row is to be looked for then.
std::string EventLog::NodeText(IUnknown* node) const {
    const Place selected = SelectedPlace(m_Tree);
    if (node && selected.m_Collection && NodeAt(selected) == node) {
        return Quoted(LabelOf(selected));
    }
    const Row row = RowOfNode(m_Tree, node);
    return row.IsFound() ? QuotedLabelOf(row) : node ? "other" : "none";
}
