#pragma once

#include "app/input/Dwell.h"
#include "app/input/Keyboard.h"
#include "app/input/Milliseconds.h"
#include "app/input/Search.h"
#include "app/session/EventLog.h"
#include "app/view/Backdrop.h"
#include "app/view/Picture.h"
#include "host/data/Rereading.h"

#include <ostream>

/// A control in use: hands input on to it, listens to it, writes the record, and does what a host
/// does about a double click, which selects the row and opens or closes it unless the click before
/// has done that already.
///
/// The record has one line for everything done to the control with the status that it returned, and
/// indented below it a line for every event that this fired:
///
///     release 40 11 -> 0
///       UIItemChanged
///       NodeSelect container=root state=1 index=0 action=opened node="Fruit"
class Session {
public:
    /// The control's rectangle begins at 0, 0. `tree` and `record` outlive the session.
    Session(IUITree* tree, Size size, std::ostream& record);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    IUITree* Tree() const { return m_Tree; }
    Size GetSize() const { return m_Size; }
    void Resize(Size size) { m_Size = size; }

    void Feed(const Input& input);

    /// What is searched for; none unless a search was begun by typing '/'. Letters go on with it,
    /// down, enter and up go to the next and to the previous item found, and any other key ends it.
    const Search* Searching() const { return m_Search ? &*m_Search : nullptr; }
    /// Long work goes on for so long at a time from now on, and not to its end.
    void LimitTurns(std::chrono::milliseconds limit) {
        m_Turns.Limit(limit);
        m_Keyboard.LimitTurns(limit);
    }
    /// Whether a key has begun work that is not over.
    bool IsAtWork() const { return IsOpening() || (m_Search && m_Search->IsOn()); }
    /// Whether that is the opening of folders, which escape stops.
    bool IsOpening() const { return m_Keyboard.IsOpening(); }
    /// Does the next turn of that work, if there is any.
    void GoOn();

    /// Brings the folders of which a watch has heard up to what is on disk now, and takes what was
    /// read beside the window's thread, for a turn. What is at the top and what is selected stay
    /// so, by name. Goes on where the turn before has ended, whatever that has read again.
    void ReadChanged();
    /// Whether a reading again, of what was changed or of all by F5, goes on with the next call.
    bool IsReadingAgain() const { return m_Rereading.has_value(); }
    /// Whether that is a reading of all. One may be stopped: what was begun is still taken.
    bool IsReadingAll() const { return m_Rereading && m_Rereading->Which() == RereadParts::kAll; }
    void StopReadingAll();

    /// Guide lines are drawn from now on.
    void ShowGuides() { m_HasGuides = true; }
    /// Brings a picture of a scene up to date, whose control and highlights are the session's; true
    /// when it had to be drawn. `isSet` says that something was set of which the control does not
    /// tell.
    bool Draw(KeptPicture& picture, Scene scene, bool isSet = false);
    /// What to mark beside the selected rows, by what was drawn last.
    Highlights Marked() const;
    /// The pointer is elsewhere now.
    void NoteLeft() {
        m_Pointer.reset();
        m_Dwell.End();
    }
    /// For how many milliseconds nothing that is drawn changes by itself; none for ever.
    std::optional<int64_t> UntilNextPicture() const { return m_Dwell.Left(Milliseconds()); }

    /// How many of the visible rows are selected.
    int32_t CountSelected();

    /// Something else than input may leave several rows marked.
    void NoteMarks() { m_Keyboard.NoteMarks(); }

    /// Records something that was done to the control, with its result, and what was heard of it.
    EventLog::Heard Note(const std::string& text, const std::string& result);

    /// What was copied since the last time it was asked for, UTF-8.
    std::optional<std::string> TakeCopied() { return std::exchange(m_Copied, std::nullopt); }

private:
    struct Point {
        double m_X;
        double m_Y;
    };

    int32_t Perform(const PointerInput& input);
    int32_t Perform(const TouchInput& input);
    int32_t Perform(const KeyInput& input);
    int32_t Perform(const TypedInput& input);
    int32_t ReadAgain();
    int32_t Copy();
    void PrepareForKeys();
    int32_t PressInSearch(Key key);
    int32_t SearchIn(Search::Direction direction);
    int32_t SearchOn();
    void GoOnSearching();
    void TellScrollBar();
    void Activate(IUnknown* node);
    void NotePointer(const PointerInput& input);
    void NoteDwell(const PointerInput& input);
    bool IsOnBar() const;
    std::optional<int32_t> PointedRow() const;
    BarLook LookOfBar() const;
    int32_t RowsShown() const;

    IUITree* m_Tree;
    Size m_Size;
    std::ostream& m_Record;
    Keyboard m_Keyboard;
    std::optional<Search> m_Search;
    std::optional<Rereading> m_Rereading;
    Turns m_Turns;
    std::optional<Point> m_Pointer; ///< where it is, while it is on the control
    Dwell m_Dwell;                  ///< of the pointer, at the tops of labels that are cut short
    bool m_HasGuides = false;
    bool m_IsKeyUsed = false; ///< and not the pointer
    bool m_IsThumbHeld = false;
    Noted m_Shown; ///< what was drawn last
    std::optional<std::string> m_Copied;
    SmartPtr<EventLog> m_Log;
    std::optional<int32_t> m_Selected; ///< how many rows, since the last change
    bool m_IsChanged = true;           ///< a new control was never drawn
    bool m_ClickToggled = false;       ///< the last click opened or closed its row
};
