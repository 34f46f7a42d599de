#include "bench/Stage.h"

#include "framework/interfaces/TreeProperties.h"
#include "host/components/HostObject.h"

#include <filesystem>

namespace {

constexpr int32_t kWidth = 480;
constexpr int32_t kHeight = 640;
constexpr int32_t kRowHeight = 15;
constexpr int32_t kTextSize = 11;

/// The sizes that all measurements are made with, for the host's own.
class Sizes final : public HostObject<Sizes, IUIPropInterrogate> {
public:
    static constexpr const char* kKind = "Sizes";

    int32_t Inquire(int32_t id, int32_t* value) override {
        *value = id == UIDEFAULT_ROWHEIGHT ? kRowHeight : kTextSize;
        return S_OK;
    }
    int32_t Control(int32_t, int32_t) override { return E_INVALIDARG; }
    int32_t ParameterRange(int32_t, int32_t*, int32_t*) override { return E_INVALIDARG; }
    int32_t ParameterEnumeration(int32_t, IUnknown**) override { return E_INVALIDARG; }
};

} // namespace

Stage::Stage(SmartPtr<ISuperCollection> root)
    : m_Host(std::filesystem::read_symlink("/proc/self/exe").parent_path()),
      m_Module("./UITree.so", m_Host.Components()),
      m_Root(std::move(root)), m_Rect{0, 0, kWidth, kHeight},
      m_Surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight)),
      m_Context(cairo_create(m_Surface.get())),
      m_Floor(kHeight / kRowHeight, kRowHeight, kTextSize) {
    m_Host.Register(L"UIDefault", &CreateInstanceOf<Sizes>);
    m_Tree = m_Module.Create<IUITree>(L"UITree");
    m_Tree->put_Collection(m_Root.Get());
    Repaint(); // the scroll bar learns of the rows
}

int32_t Stage::CountRows() const {
    int32_t rows = 0;
    m_Tree->GetContainerSize(nullptr, &rows, nullptr);
    return rows;
}

void Stage::ScrollTo(int32_t row) const {
    m_Tree->Control(PROP_SCROLLPOS, row);
}

void Stage::Repaint() {
    cairo_set_source_rgb(m_Context.get(), 1, 1, 1);
    cairo_paint(m_Context.get());
    UbuntuCanvas canvas{m_Context.get()};
    Query<IRenderableObject>(m_Tree.Get())->Render(&canvas, &m_Rect, nullptr, 0);
}
