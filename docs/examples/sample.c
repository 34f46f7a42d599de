// A host in C on the plain header: supplies what draws texts, shows a tree, clicks a row open and
// writes the picture to sample-c.png.

#include "objects.h"

#include <cairo.h>
#include <dlfcn.h>

// The text style remembers the colour, which is all that this host's renderer looks at.
static int32_t color;
static int32_t SetColor(IPMRenderStyle* self, int32_t rgb) {
    color = rgb;
    return S_OK;
}
static int32_t SetValue(IPMRenderStyle* self, int32_t value) { return S_OK; }
static int32_t SetPair(IPMRenderStyle* self, int32_t first, int32_t second) { return S_OK; }
static const IPMRenderStyleOperations styling = {
    OBJECT_OPERATIONS, SetValue, SetValue, SetValue, SetPair, SetColor, SetValue, SetValue};
static Object style = {{(const IUnknownOperations*)&styling}, "IPMRenderStyle"};

static int32_t DrawText(IPMRenderer* self, IPMRenderStyle* with, tagREFString text,
    UbuntuCanvas* canvas, CANVASRect* rect, int32_t a, int32_t b) {
    char ascii[64] = "";
    for (int32_t i = 0; i < text.m_Length && i < 63; ++i) {
        ascii[i] = (char)text.m_String[i]; // the labels below are no more than that
    }
    cairo_set_source_rgb(canvas->m_Context, (color >> 16 & 255) / 255.0, (color >> 8 & 255) / 255.0,
        (color & 255) / 255.0);
    cairo_move_to(canvas->m_Context, rect->left, rect->top + rect->height - 4);
    cairo_show_text(canvas->m_Context, ascii);
    return S_OK;
}
static const IPMRendererOperations drawing = {OBJECT_OPERATIONS, DrawText};
static Object renderer = {{(const IUnknownOperations*)&drawing}, "IPMRenderer"};

static Component list[] = {{L"PMRenderStyle", &style}, {L"PMRenderer", &renderer}};
static Registry components = REGISTRY(list);

static Item fruit[] = {LEAF(L"Apple"), LEAF(L"Pear")};
static Item rows[] = {FOLDER(L"Fruit", fruit), LEAF(L"Bread")};
static Item data = FOLDER(L"", rows);

int main(void) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, 200, 100);
    UbuntuCanvas canvas = {cairo_create(surface)};
    cairo_set_source_rgb(canvas.m_Context, 1, 1, 1);
    cairo_paint(canvas.m_Context);

    void* module = dlopen("./UITree.so", RTLD_NOW | RTLD_LOCAL);
    InitializeFunction initialize;
    FactoryFunction find;
    *(void**)&initialize = module ? dlsym(module, UITREE_INITIALIZE) : NULL;
    *(void**)&find = module ? dlsym(module, UITREE_FACTORY) : NULL;
    CreatorFunction create = NULL;
    void* object = NULL;
    IID iid = uitree_iid("IUITree");
    if (!module || initialize(NULL, (IComponentCollection*)&components) < 0 ||
        find(uitree_text(L"UITree"), &create) < 0 || create(NULL, &iid, &object) < 0) {
        return 1;
    }
    IUITree* tree = object; // the one reference is ours
    IUIMouseInput* mouse = uitree_query(tree, "IUIMouseInput");
    IRenderableObject* drawn = uitree_query(tree, "IRenderableObject");
    CANVASRect rect = {0, 0, 200, 100};
    tree->table->put_Collection(tree, (IUnknown*)&data);
    mouse->table->Pointer(mouse, POINTERSTATE_PRIMARY, POINTERACTION_PRESS, 0, 5, 5, &rect, NULL);
    mouse->table->Pointer(mouse, POINTERSTATE_PRIMARY, POINTERACTION_RELEASE, 0, 5, 5, &rect, NULL);
    drawn->table->Render(drawn, &canvas, &rect, NULL, 0);

    cairo_destroy(canvas.m_Context);
    const int written = cairo_surface_write_to_png(surface, "sample-c.png") == CAIRO_STATUS_SUCCESS;
    cairo_surface_destroy(surface);
    uitree_release(drawn);
    uitree_release(mouse);
    uitree_release(tree);
    initialize(NULL, NULL);
    dlclose(module);
    return written && (rows[0].flags & NODE_EXPANDED) ? 0 : 1;
}
