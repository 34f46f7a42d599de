#include "host/drawing/IconImage.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <mutex>
#include <string_view>
#include <vector>

namespace {

// Of what is kept. A small file may hold a large image.
constexpr size_t kMostImages = 4;
constexpr size_t kLargestFile = size_t{1} << 16;
constexpr int kLargestSide = 512; // pixels

struct KeptImage {
    std::string m_File; ///< its bytes, by which it is known
    IconImage m_Image;
};
std::mutex gMutex;            ///< for the next
std::vector<KeptImage> gKept; ///< the one read last is at the end

IconImage Checked(cairo_surface_t* surface) {
    IconImage image(surface, &cairo_surface_destroy);
    return cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS ? image : nullptr;
}

IconImage Decode(std::string_view file) {
    const auto read = [](void* rest, unsigned char* bytes, unsigned count) {
        auto& left = *static_cast<std::string_view*>(rest);
        if (left.size() < count) {
            return CAIRO_STATUS_READ_ERROR;
        }
        std::memcpy(bytes, left.data(), count);
        left.remove_prefix(count);
        return CAIRO_STATUS_SUCCESS;
    };
    return Checked(cairo_image_surface_create_from_png_stream(read, &file));
}

bool IsSmall(cairo_surface_t* image) {
    return std::max(cairo_image_surface_get_width(image), cairo_image_surface_get_height(image)) <=
           kLargestSide;
}

/// A small file's image, which is decoded unless it is kept.
IconImage Keep(std::string file) {
    const std::lock_guard lock(gMutex);
    const auto kept = std::find_if(
        gKept.begin(), gKept.end(), [&file](const KeptImage& each) { return each.m_File == file; });
    if (kept != gKept.end()) {
        std::rotate(kept, kept + 1, gKept.end());
        return gKept.back().m_Image;
    }
    IconImage image = Decode(file);
    if (image && IsSmall(image.get())) {
        gKept.push_back({std::move(file), image});
        if (gKept.size() > kMostImages) {
            gKept.erase(gKept.begin());
        }
    }
    return image;
}

} // namespace

IconImage ReadIcon(const std::string& fileName) {
    std::ifstream stream(fileName, std::ios::binary);
    std::string file(kLargestFile + 1, '\0');
    stream.read(file.data(), static_cast<std::streamsize>(file.size()));
    file.resize(static_cast<size_t>(stream.gcount()));
    return file.size() <= kLargestFile
               ? Keep(std::move(file))
               : Checked(cairo_image_surface_create_from_png(fileName.c_str()));
}
