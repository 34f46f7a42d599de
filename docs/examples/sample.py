"""A host in Python: binds a collection written here, clicks a row open and draws it into
sample-python.png. Nothing is compiled; pycairo is Debian's python3-cairo."""

import cairo
import uitree
from uitree import Canvas, Module, Object, Rect, String

surface = cairo.ImageSurface(cairo.FORMAT_RGB24, 200, 100)
context = cairo.Context(surface)  # the one that the control hands back to whoever draws


class Tree(Object):
    """A mapping of labels to what lies below them: another mapping, or nothing."""
    interfaces = ("ISuperCollection",)

    def __init__(self, content):
        super().__init__()
        self.names = list(content)
        self.items = [Tree(below) if below else Object() for below in content.values()]
        self.flags = [0] * len(self.items)  # the control's

    def GetCount(self, count):
        count[0] = len(self.items)

    def GetItem(self, index, item):
        item[0] = None
        return self.items[index].hand_out(item) if 0 <= index < len(self.items) else uitree.E_FAIL

    def GetItemName(self, index, name):
        String(self.names[index]).hand_out(name)

    def GetItemFlags(self, index, flags):
        if not 0 <= index < len(self.flags):
            return uitree.E_FAIL  # the control walks until it fails
        flags[0] = self.flags[index]

    def SetItemFlags(self, index, flags):
        self.flags[index] = flags


class Style(Object):
    interfaces = ("IPMRenderStyle",)

    def SetColor(self, rgb):
        context.set_source_rgb(*(byte / 255 for byte in rgb.to_bytes(3, "big")))


class Renderer(Object):
    interfaces = ("IPMRenderer",)

    def DrawText(self, style, text, canvas, rect, *_):
        context.move_to(rect[0].left, rect[0].top + rect[0].height - 4)
        context.show_text(str(text))


class Registry(Object):
    interfaces = ("IComponentCollection",)
    components = {"PMRenderStyle": Style, "PMRenderer": Renderer}

    def CreateComponent(self, name, iid, place):
        made = self.components.get(str(name))  # every other component is done without
        return made().QueryInterface(iid, place) if made else uitree.E_FAIL


module = Module("./UITree.so", Registry())
data = Tree({"Fruit": {"Apple": None, "Pear": None}, "Bread": None})
tree = module.create("UITree", "IUITree")
rect = Rect(0, 0, 200, 100)
tree.put_Collection(data)
mouse = tree.ask("IUIMouseInput")
for action in uitree.POINTERACTION_PRESS, uitree.POINTERACTION_RELEASE:
    mouse.Pointer(uitree.POINTERSTATE_PRIMARY, action, 0, 5, 5, rect, None)

context.set_source_rgb(1, 1, 1)
context.paint()
tree.ask("IRenderableObject").Render(Canvas(context), rect, None, 0)
surface.write_to_png("sample-python.png")
del tree, mouse
module.close()
assert data.flags[0] & uitree.NODE_EXPANDED, "the click opens the row"
