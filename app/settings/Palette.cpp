#include "app/settings/Palette.h"

#include "framework/interfaces/TreeProperties.h"

#include <algorithm>
#include <cmath>

namespace {

struct Theme {
    const char* m_Name;
    Palette m_Palette;
};
// Legible beneath the red in which the control draws selected labels.
constexpr Theme kThemes[] = {{"light", {0x4B4B4B, 0xFFFFFF, 0x000000}},
    {"dark", {0xD4D7DB, 0x15181B, 0xFFFFFF}}, {"contrast", {0xFFFFFF, 0x000000, 0xFFFF00}}};

int32_t Parameter(IUITree* tree, int32_t number) {
    int32_t value = 0;
    tree->Inquire(number, &value);
    return value;
}

/// How light a colour is to the eye, from 0 to 1.
double LightOf(int32_t color) {
    const auto part = [color](int shift) {
        const double value = (color >> shift & 0xFF) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(16) + 0.7152 * part(8) + 0.0722 * part(0);
}

} // namespace

Palette PaletteOf(IUITree* tree) {
    return {Parameter(tree, PROP_TEXTCOLOR), Parameter(tree, PROP_COLOR101),
        Parameter(tree, PROP_COLOR102)};
}

bool IsStark(const Palette& palette) {
    constexpr double kLeast = 15; // to one; the most there is is 21
    constexpr double kGlare = 0.05;
    const double text = LightOf(palette.m_Text) + kGlare;
    const double paper = LightOf(palette.m_Paper) + kGlare;
    return std::max(text, paper) / std::min(text, paper) >= kLeast;
}

std::vector<std::string> ThemeNames() {
    std::vector<std::string> names;
    for (const Theme& theme : kThemes) {
        names.emplace_back(theme.m_Name);
    }
    return names;
}

void ApplyTheme(IUITree* tree, const std::string& name) {
    for (const auto& [each, palette] : kThemes) {
        if (name == each) {
            tree->Control(PROP_TEXTCOLOR, palette.m_Text);
            tree->Control(PROP_COLOR101, palette.m_Paper);
            tree->Control(PROP_COLOR102, palette.m_Band);
        }
    }
}

int32_t Mix(int32_t from, int32_t to, int32_t percent) {
    int32_t mixed = 0;
    for (const int shift : {16, 8, 0}) {
        const int32_t first = from >> shift & 0xFF;
        const int32_t second = to >> shift & 0xFF;
        mixed |= (first + (second - first) * percent / 100) << shift;
    }
    return mixed;
}
