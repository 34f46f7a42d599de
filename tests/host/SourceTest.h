#pragma once

#include "host/data/Expansion.h"
#include "host/sources/Source.h"
#include "host/text/Text.h"
#include "tests/support/HostTest.h"
#include "tests/support/Reread.h"
#include "tests/support/TreeTest.h"

/// What a source shows in a control.
class SourceTest : public TreeTest {
protected:
    ReadFailuresPtr m_Failures = std::make_shared<ReadFailures>();

    /// Binds a tree and opens levels of it. The labels of the visible rows, separated by blanks,
    /// each with its level, a '-' when open and a '*' when selected.
    std::string OpenedRows(const SmartPtr<ISuperCollection>& root, int32_t levels) {
        BindCollection(root);
        OpenLevels(root.Get(), levels);
        return ShownRows(root);
    }
    static std::string ShownRows(const SmartPtr<ISuperCollection>& root) {
        std::string text;
        VisitRows(root.Get(), [&](ISuperCollection* collection, int32_t index, int32_t flags) {
            text += (text.empty() ? "" : " ") + Place{SmartPtr(collection), index}.Label() +
                    std::to_string(flags & NODE_LEVEL_MASK) + ((flags & NODE_EXPANDED) ? "-" : "") +
                    ((flags & NODE_SELECTED) ? "*" : "");
            return true;
        });
        return text;
    }

    /// What a reader makes of a text: `rows`, unless null, and then the fault as one more.
    template <class Reader>
    void ExpectRead(
        Reader read, const std::string& text, const char* rows, const std::string& fault) {
        std::string found;
        const auto tree = read(text, found);
        EXPECT_EQ(found, fault);
        if (rows) {
            const std::string shown = OpenedRows(tree, 9);
            EXPECT_EQ(ToUtf8(Refer(ToWide(shown))),
                ToUtf8(Refer(ToWide(rows + found + (found.empty() ? "" : "1")))));
        }
    }
};
