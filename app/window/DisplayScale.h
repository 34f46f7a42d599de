#pragma once

/// The scale of all that an X11 display shows, as its resources tell it (Xft.dpi, of which 96 is
/// 1), from 1 to 4. 0 where they do not, and for another kind of display, which tells it with the
/// window's own size. SDL is started.
double ScaleOfDisplay();
