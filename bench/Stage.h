#pragma once

#include "bench/PictureFloor.h"
#include "bench/Trees.h"
#include "host/Host.h"
#include "host/components/Module.h"
#include "host/drawing/Cairo.h"

/// The host with rows of 15 pixels and letters of 11, and one control of 480x640 pixels on a tree.
class Stage {
public:
    explicit Stage(SmartPtr<ISuperCollection> root);

    IUITree* Tree() const { return m_Tree.Get(); }
    ISuperCollection* Root() const { return m_Root.Get(); }
    CANVASRect* Rect() { return &m_Rect; }
    int32_t CountRows() const;
    void ScrollTo(int32_t row) const;

    /// A frame: white, and the control on it.
    void Repaint();
    /// The same picture, and nothing else, without the control.
    void RepaintBare() { m_Floor.Draw(m_Context.get()); }

private:
    Host m_Host;
    Module m_Module;
    SmartPtr<ISuperCollection> m_Root;
    SmartPtr<IUITree> m_Tree;
    CANVASRect m_Rect;
    SurfacePtr m_Surface;
    ContextPtr m_Context;
    PictureFloor m_Floor;
};
