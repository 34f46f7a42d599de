#pragma once

#include "app/faults/Gate.h"
#include "app/validate/CanvasWatch.h"
#include "app/validate/Check.h"
#include "framework/Interfaces.h"
#include "framework/settings/ParameterTable.h"
#include "host/drawing/Cairo.h"

#include <optional>

class Document;

/// The life of a component in a host, from binding to closing, as far as it has the interfaces for
/// it: everything that the host brings is made before, so that what is played allocates nothing of
/// its own and every call and allocation in it is the module's.
class Scenario {
public:
    /// What the component gets is wrapped by the gate when there is one.
    explicit Scenario(Gate* gate = nullptr) : Scenario(gate, OrdinaryData()) {}
    /// The same with a tree that a component is to be given.
    Scenario(Gate* gate, const SmartPtr<ISuperCollection>& data);
    ~Scenario();
    Scenario(const Scenario&) = delete;
    Scenario& operator=(const Scenario&) = delete;

    /// Binds, draws, opens, selects, clicks, drags, wheels, touches, asks, saves, loads and closes.
    void Play(IUnknown* object);
    /// What is wrong with the canvas that the life was drawn on; null when nothing is, and from
    /// then on.
    const char* CanvasFault() { return m_Watch.Fault(); }
    /// A number for the picture that the object draws on fresh paper when it is given another tree;
    /// none when it fails to.
    std::optional<size_t> Picture(IUnknown* object);

private:
    static SmartPtr<ISuperCollection> OrdinaryData();
    void Bind(IUnknown* object, ISuperCollection* data);
    int32_t Draw(IUnknown* object, UbuntuCanvas& canvas);
    void Browse(IUITree& tree);
    void Point(IUIMouseInput& input);
    void Ask(IUnknown* object);
    void Keep(IUnknown* object);
    void Close(IUnknown* object);

    SmartPtr<ISuperCollection> m_Data;
    SmartPtr<ISuperCollection> m_Second; ///< for when the host is well again
    SmartPtr<IUnknown> m_Item;
    SmartPtr<IUnknown> m_Listener;
    std::unique_ptr<Document> m_Document;
    SmartPtr<IDataStream> m_Folders;
    SmartPtr<IDataStream> m_Text;
    SurfacePtr m_Surface;
    ContextPtr m_Context;
    UbuntuCanvas m_Canvas = {};
    CanvasWatch m_Watch{m_Context.get()};
    CANVASRect m_Rect = {};
};

/// An outline as a collection of the host's.
SmartPtr<ISuperCollection> DataOf(const std::string& outline);
