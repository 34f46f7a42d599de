#pragma once

#include <string>

/// Asks a window to close, as a window manager does when its close button is pressed.
bool PressCloseButton(const std::string& display, unsigned long window);
