#pragma once

#include "framework/Interfaces.h"
#include "framework/Runtime.h"
#include "host/Host.h"
#include "host/Module.h"
#include "host/SuperCollection.h"
#include "tests/support/Listener.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

/// The real module in the reference host, with a control of its own for every test. At the end the
/// control has to be gone, the module unloaded, and every host object given back.
///
/// Trees are written as outlines, whose labels spell their position:
///
///     Bind("A\n a1\n a2\nB");
///     Open("A");
///     EXPECT_EQ(Rows(), "A a1 a2 B");
class TreeTest : public ::testing::Test {
protected:
    TreeTest();

    /// Creates the control; a test that registers components of its own does so before.
    void SetUp() override;
    /// Lets go of the control and checks that nothing is left.
    void TearDown() override;

    /// Connects a listener, m_Listener, to the control.
    void Listen();

    template <class T>
    SmartPtr<T> As() const {
        return Query<T>(m_Tree.Get());
    }

    /// Makes a collection of an indented outline and binds it.
    void Bind(const std::string& outline);
    void BindCollection(const SmartPtr<ISuperCollection>& collection);
    static SmartPtr<ISuperCollection> Outline(const std::string& outline);

    /// Where the node with this label is kept; the first one in display order. Looks through the
    /// data, not through the control.
    struct Place {
        SmartPtr<ISuperCollection> collection;
        int32_t index = -1;
    };
    Place Find(const std::string& label) const;
    SmartPtr<IUnknown> Item(const std::string& label) const;
    int32_t Flags(const std::string& label) const;
    void SetFlags(const std::string& label, int32_t flags);
    /// Opens a node by its flag words, as a host does.
    void Open(const std::string& label);

    /// The labels of the rows as the control resolves them one by one.
    std::string Rows() const;
    /// The label of one row, or "" when it does not resolve.
    std::string RowLabel(int32_t row) const;
    int32_t RowCount() const;
    /// The label of the selected node as GetSelected answers it, or "".
    std::string SelectedLabel() const;

    std::optional<Host> m_Host;
    std::optional<Module> m_Module;
    SmartPtr<IUITree> m_Tree;
    SmartPtr<ISuperCollection> m_Root;
    SmartPtr<Listener> m_Listener;

private:
    std::map<std::string, int32_t> m_LiveBefore;
};

/// The name that a collection keeps for an item, as UTF-8.
std::string LabelOf(ISuperCollection& collection, int32_t index);
