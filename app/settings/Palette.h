#pragma once

#include "framework/interfaces/TreeInterfaces.h"

#include <string>
#include <vector>

/// The colours of everything that is shown, 0xRRGGBB. They are the control's parameters 100 to 102,
/// so that its stored settings carry them.
struct Palette {
    int32_t m_Text;
    int32_t m_Paper;
    int32_t m_Band; ///< of the bands beneath rows, which let most of the paper through

    bool operator==(const Palette&) const = default;
};
Palette PaletteOf(IUITree* tree);
/// Whether text and paper are as far apart as black and white, nearly: nothing is drawn faintly
/// then.
bool IsStark(const Palette& palette);

/// The names of the themes: "light" first, which is the control's own.
std::vector<std::string> ThemeNames();
/// Gives the control the colours of a theme; one without that name changes nothing.
void ApplyTheme(IUITree* tree, const std::string& name);

/// A colour between two, so many percent on the way to the second.
int32_t Mix(int32_t from, int32_t to, int32_t percent);
