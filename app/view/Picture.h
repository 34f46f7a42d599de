#pragma once

#include "app/settings/Panel.h"
#include "app/view/Backdrop.h"
#include "framework/interfaces/TreeInterfaces.h"
#include "host/drawing/Cairo.h"

#include <optional>
#include <string>
#include <vector>

/// In the control's pixels, of which each may be several of the display's.
struct Size {
    int32_t m_Width = 0;
    int32_t m_Height = 0;
    double m_Scale = 1; ///< the display's pixels along a side of one of the control's

    bool operator==(const Size&) const = default;
};

/// Reads WIDTHxHEIGHT. Throws UsageError.
Size ParseSize(const std::string& text, double scale = 1);

/// What a picture shows: a control on its paper, with a panel at its right when there is one, and a
/// status line below both when it has a text.
struct Scene {
    IUITree* m_Tree = nullptr; ///< the control, borrowed
    Size m_Size = {};
    Panel* m_Panel = nullptr; ///< which is fitted to the height, or null
    Highlights m_Highlights = {};
    std::string m_Status = {}; ///< UTF-8
};

/// Draws a scene in the display's pixels. `noted` receives what the control drew where, unless it
/// is null. Throws std::runtime_error.
SurfacePtr DrawPicture(const Scene& scene, Noted* noted = nullptr);

/// The picture of a window, which is drawn again only when something in it changed.
class KeptPicture {
public:
    /// Brings the picture up to date; true when it had to be drawn. `isTreeChanged` says that the
    /// control has changed, which the scene does not tell.
    bool Update(const Scene& scene, bool isTreeChanged);
    /// Null before the first update.
    cairo_surface_t* Surface() const { return m_Surface.get(); }
    /// What the control drew in it.
    const Noted& Shown() const { return m_Noted; }

private:
    SurfacePtr m_Surface;
    Noted m_Noted;
    Scene m_Scene; ///< what it shows, of which the control and the panel change by themselves
    std::optional<std::vector<Panel::Line>> m_Panel; ///< what the panel shows, when there is one
};

/// Writes a PNG file, or to standard output for "-"; `name` is what the caller called it.
void WritePicture(cairo_surface_t* picture, const std::string& file, const std::string& name);
