#include "tests/host/CloseButton.h"

#include <X11/Xlib.h>
#include <memory>

bool PressCloseButton(const std::string& display, unsigned long window) {
    const std::unique_ptr<Display, int (*)(Display*)> connection(
        XOpenDisplay(display.c_str()), &XCloseDisplay);
    if (!connection) {
        return false;
    }
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(connection.get(), "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] =
        static_cast<long>(XInternAtom(connection.get(), "WM_DELETE_WINDOW", False));
    return XSendEvent(connection.get(), window, False, NoEventMask, &event) != 0;
}
