// The smallest host: binds a tree to the control and draws it into sample.png.

#include "framework/Interfaces.h"
#include "host/Host.h"
#include "host/components/Module.h"
#include "host/sources/OutlineSource.h"

#include <cairo.h>
#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <sstream>

int main(int count, char** arguments) try {
    const std::filesystem::path modules = count > 1 ? arguments[1] : "."; // where UITree.so is
    const auto picture = std::filesystem::absolute("sample.png");
    Host host(modules);                              // moves the process there
    Module module("./UITree.so", host.Components()); // loads it and hands the components over
    auto tree = module.Create<IUITree>(L"UITree");   // the one reference is ours
    std::istringstream text("Fruit\n  Apple\n  Pear\nBread\n");
    auto data = ReadOutline(text); // any ISuperCollection will do
    tree->put_Collection(data.Get());
    tree->MakeNodeVisible(data.Get(), 0);

    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 200, 100);
    UbuntuCanvas canvas{cairo_create(surface)};
    cairo_set_source_rgb(canvas.m_Context, 1, 1, 1);
    cairo_paint(canvas.m_Context);
    CANVASRect rect{0, 0, 200, 100};
    Query<IRenderableObject>(tree.Get())->Render(&canvas, &rect, nullptr, 0);
    cairo_destroy(canvas.m_Context);
    const auto status = cairo_surface_write_to_png(surface, picture.c_str());
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS) {
        std::cerr << "sample: cannot write " << picture << ": " << std::strerror(errno) << '\n';
    }
    return status == CAIRO_STATUS_SUCCESS ? 0 : 1;
} catch (const std::exception& error) {
    std::cerr << "sample: " << error.what() << '\n';
    return 1;
}
