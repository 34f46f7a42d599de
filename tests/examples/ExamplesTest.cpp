#include "host/drawing/Cairo.h"
#include "tests/support/TreeTest.h"

#include <cairo.h>
#include <cstdlib>
#include <filesystem>

// The samples of docs/examples: what they draw, by rows.

namespace {

constexpr int kWidth = 200;

/// A picture that counts the rows of a height, from the top, in which something is drawn on white.
class Picture {
public:
    explicit Picture(cairo_surface_t* surface) : m_Surface(surface) {}
    ~Picture() { cairo_surface_destroy(m_Surface); }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    cairo_surface_t* Surface() const { return m_Surface; }
    /// 0xRRGGBB
    uint32_t At(int x, int y) const {
        const int stride = cairo_image_surface_get_stride(m_Surface);
        const unsigned char* line = cairo_image_surface_get_data(m_Surface) + y * stride;
        return reinterpret_cast<const uint32_t*>(line)[x] & 0xFFFFFF;
    }
    int RowsDrawn(int height) const {
        int rows = 0;
        while ((rows + 1) * height <= cairo_image_surface_get_height(m_Surface) &&
               IsDrawn(rows * height, height)) {
            ++rows;
        }
        return rows;
    }

private:
    bool IsDrawn(int top, int height) const {
        for (int i = 0; i < kWidth * height; ++i) {
            if (At(i % kWidth, top + i / kWidth) != 0xFFFFFF) {
                return true;
            }
        }
        return false;
    }

    cairo_surface_t* m_Surface;
};

void ExpectRows(const std::string& command, const char* file, int rows, int height) {
    std::filesystem::remove(file);
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    const Picture picture(cairo_image_surface_create_from_png(file));
    ASSERT_EQ(cairo_surface_status(picture.Surface()), CAIRO_STATUS_SUCCESS) << file;
    EXPECT_EQ(picture.RowsDrawn(height), rows);
}

constexpr int kRows = 4; ///< of the tree that all samples open
/// Pixels: the reference host's, and the control's own in a host without a default.
constexpr int kHostRowHeight = 22;
constexpr int kOwnRowHeight = 15;
const std::string kEmulator(EMULATOR);

using SwatchTest = TreeTest;

} // namespace

TEST(Sample, HostInCppDrawsItsTree) {
    ExpectRows(kEmulator + " ./sample", "sample.png", kRows, kHostRowHeight);
}

TEST(Sample, HostInCDrawsItsTreeWithTheRowOpenedByAClick) {
    ExpectRows(kEmulator + " ./sample_c", "sample-c.png", kRows, kOwnRowHeight);
}

TEST(Sample, HostInPythonDrawsItsTreeWithTheRowOpenedByAClick) {
    if (*PYTHON == '\0') {
        GTEST_SKIP() << "no Python with pycairo, or one that cannot load this build's modules";
    }
    ExpectRows(PYTHON " -B " EXAMPLES "/sample.py", "sample-python.png", kRows, kOwnRowHeight);
}

TEST_F(SwatchTest, ItemOfAnotherModuleIsDrawnInItsColour) {
    const Module module("./Swatch.so", m_Host->Components());
    const auto swatch = module.Create<IUIPropInterrogateEx>(L"Swatch");
    ASSERT_EQ(swatch->Control(1, 0xC03000), S_OK);
    BindItems({{"Red", swatch.Get()}});
    int32_t height = 0;
    m_Tree->GetElementSize(nullptr, &height);
    const Picture picture(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, height));
    UbuntuCanvas canvas{cairo_create(picture.Surface())};
    CANVASRect rect{0, 0, kWidth, height};
    EXPECT_EQ(As<IRenderableObject>()->Render(&canvas, &rect, nullptr, 0), S_OK);
    cairo_destroy(canvas.m_Context);
    cairo_surface_flush(picture.Surface());
    EXPECT_EQ(picture.At(height + height / 2, height / 2), 0xC03000U);
    BindItems({}); // an item goes before its module
}

TEST_F(SwatchTest, ComponentOfAnotherModuleIsMadeByItsName) {
    const CREFString name(L"Swatch");
    const auto registry = Query<IHostComponents>(m_Host->Components());
    const auto description = CreateHostObject<IComponentString>("ComponentString");
    description->SetPart(COMPONENTPART_MODULE, name);
    description->SetPart(COMPONENTPART_NAME, name);
    EXPECT_EQ(registry->Register(name, description.Get()), S_OK);
    EXPECT_TRUE(CreateHostObject<IRenderableObject>("Swatch"));
    registry->Unregister(name);
}
