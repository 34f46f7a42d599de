#pragma once

#include <cairo/cairo.h>
#include <memory>
#include <string>

/// Pixels that several icons draw, and none draws on.
using IconImage = std::shared_ptr<cairo_surface_t>;

/// Reads a PNG file; null for one that is missing or damaged. What was read last is kept while its
/// files are as they were: a control that is made loads its icons, and a host may make many. Any
/// thread may read. Throws std::bad_alloc.
IconImage ReadIcon(const std::string& fileName);
