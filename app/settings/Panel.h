#pragma once

#include "app/settings/SettingsPage.h"

#include <functional>
#include <string_view>

enum class PanelKey {
    kUp,
    kDown,
    kHome,
    kEnd,
    kBackspace,
    kEnter, ///< applies what was typed, or triggers an action
    kKeep,  ///< closes the panel
    kCancel ///< puts back what was applied and closes the panel
};

/// The settings page beside the tree: a list of names and values, one of them chosen. What is typed
/// replaces the chosen value until enter applies it; going to another line drops it. A value that
/// is not taken stays to be corrected.
///
/// The panel knows no window: it is fed with what the user does there, and Picture draws it.
class Panel {
public:
    /// Hears what was done to the control, as a line for the record with its status.
    using Recorder = std::function<void(const std::string& text, int32_t status)>;

    /// Throws what SettingsPage throws.
    explicit Panel(
        IUnknown* control, Recorder record = [](const std::string&, int32_t) {})
        : m_Page(control), m_Record(std::move(record)) {}

    void Press(PanelKey key);
    void Type(std::string_view utf8);
    /// Chooses the line there; `y` is in pixels below the panel's upper edge.
    void Click(double y);
    /// Fits the panel to a height in pixels, with the chosen line in view.
    void Resize(int32_t height);

    bool IsClosed() const { return m_IsClosed; }

    struct Line {
        std::string m_Name;
        std::string m_Value; ///< what is typed, or the control's value
        int32_t m_Top;       ///< pixels below the panel's upper edge
        bool m_IsChosen;
        bool m_IsEdited;
        bool m_IsRejected;

        bool operator==(const Line&) const = default;
    };
    /// What the chosen setting takes, once something else was typed; else how to leave the panel.
    std::string Hint() const;
    /// The lines in view. The space of one line above them is free.
    std::vector<Line> Lines() const;

    static constexpr int32_t kLineHeight = 22; // pixels
    /// The width of the panel, in pixels, at the right edge of a window. The tree keeps half of a
    /// narrow one.
    static int32_t WidthIn(int32_t windowWidth);

private:
    void Choose(int32_t index);
    void Erase();
    void Apply();
    void Cancel();
    bool CanBeTyped() const;
    int32_t LinesShown() const;

    SettingsPage m_Page;
    Recorder m_Record;
    int32_t m_Chosen = 0;
    int32_t m_First = 0;                 ///< the first line in view
    int32_t m_Height = 0;                ///< pixels
    std::optional<std::wstring> m_Typed; ///< for the chosen line
    bool m_IsRejected = false;           ///< what is typed
    bool m_IsClosed = false;
};
