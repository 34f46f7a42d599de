#pragma once

#include "app/replay/Clock.h"
#include "framework/Interfaces.h"
#include "framework/Runtime.h"
#include "host/components/Module.h"
#include "host/data/SuperCollection.h"
#include "tests/support/HostedTest.h"
#include "tests/support/Listener.h"

/// The real module in the reference host, with a control of its own for every test. At the end the
/// control has to be gone and the module unloaded.
/// Trees are written as outlines: Bind("A\n a1\n a2\nB").
class TreeTest : public HostedTest {
protected:
    /// Creates the control; a test that registers components of its own does so before.
    void SetUp() override { m_Tree = m_Module->Create<IUITree>(L"UITree"); }
    /// Lets go of the control and checks that nothing is left.
    void TearDown() override;

    /// Connects a listener, m_Listener, to the control.
    void Listen();
    template <class T>
    SmartPtr<T> As() const {
        return Query<T>(m_Tree.Get());
    }
    /// The interface of the settings as a whole, which has no identifier.
    SmartPtr<IUIPropInterrogatePersist> Settings() const {
        return Adopt(static_cast<IUIPropInterrogatePersist*>(As<IUIPropInterrogateEx>().Detach()));
    }

    /// Whether the host vouches for its collections: none does while one holds a wrapper.
    void Vouch(bool vouched);
    /// Makes a collection of an indented outline and binds it.
    void Bind(const std::string& outline) { BindCollection(Outline(outline)); }
    void BindCollection(const SmartPtr<ISuperCollection>& collection);
    /// Binds a new collection of these items.
    SmartPtr<SuperCollection> BindItems(
        std::initializer_list<std::pair<const char*, IUnknown*>> items);
    static SmartPtr<ISuperCollection> Outline(const std::string& outline);

    /// Where a node is kept. Looks into the data, not through the control.
    struct Place {
        SmartPtr<ISuperCollection> collection;
        int index = -1;

        std::string Label() const;
        SmartPtr<IUnknown> Item() const;
        int Flags() const;
        /// The first node with this label from here on, in display order.
        Place Find(const std::string& label) const;
        void SetFlags(int flags) const { collection->SetItemFlags(index, flags); }
    };
    Place Find(const std::string& label) const { return Place{m_Root, 0}.Find(label); }
    SmartPtr<IUnknown> Item(const std::string& label) const { return Find(label).Item(); }
    int Flags(const std::string& label) const { return Find(label).Flags(); }
    void SetFlags(const std::string& label, int flags) const { Find(label).SetFlags(flags); }
    /// Opens a closed node by its flag words, as a host does.
    void Open(const std::string& label);

    int32_t Draw(CANVASRect rect) const {
        return As<IRenderableObject>()->Render(nullptr, &rect, nullptr, 0);
    }
    int32_t Pointer(int state, int action, int keys, double x, double y,
        CANVASRect rect = {0, 0, 100, 100}, IUnknown* context = nullptr) const;

    /// The labels of the rows. Looks into the data, not through the control.
    std::string Rows() const;
    int RowCount() const;
    /// The label of the selected node as GetSelected answers it, or "".
    std::string SelectedLabel() const;
    /// The value of a parameter of the control.
    int Value(int id) const;
    /// How many references an object has.
    static int References(IUnknown* object);

    StandingClock m_Clock;
    std::optional<Module> m_Module{std::in_place, "./UITree.so", m_Host->Components()};
    SmartPtr<IUITree> m_Tree;
    SmartPtr<ISuperCollection> m_Root;
    SmartPtr<SuperCollection> m_Blind = SuperCollection::Make();
    SmartPtr<Listener> m_Listener;
};
