"""The interfaces of uitree.h for Python, with ctypes alone.

Everything is read from the header: the operations in table order with what they take, and the
constants, which become names of this module. `Module` loads a module, a `Pointer` calls an object of
the other side, an `Object` is one that the other side calls.
"""

import ctypes
import os
import re
import traceback

# Where the project keeps it, and where it is installed; or as the environment says.
HERE = os.path.dirname(os.path.abspath(__file__))
HEADER = os.environ.get("UITREE_HEADER") or next(filter(os.path.exists, (
    os.path.join(HERE, "../../include/uitree.h"),
    os.path.join(HERE, "../../../../include/uitree/uitree.h"))))


class IID(ctypes.Structure):
    _fields_ = [("words", ctypes.c_uint32 * 4)]


class Rect(ctypes.Structure):
    _fields_ = [(name, ctypes.c_int32) for name in ("left", "top", "width", "height")]


class Text(ctypes.Structure):
    """A reference to characters; str() copies them."""
    _fields_ = [("length", ctypes.c_int32), ("characters", ctypes.c_void_p)]

    def __str__(self):
        return ctypes.wstring_at(self.characters, self.length) if self.length > 0 else ""


class Canvas(ctypes.Structure):
    """The canvas of a pycairo context, which CPython keeps behind the head of its object."""
    _fields_ = [("context", ctypes.c_void_p)]

    def __init__(self, context):
        super().__init__(ctypes.c_void_p.from_address(id(context) + object.__basicsize__).value)
        self.owner = context


def _read():
    """The tables {interface: [(operation, prototype)]} and the constants of the header."""
    with open(HEADER, encoding="utf-8") as file:
        source = re.sub(r"//.*|/\*.*?\*/", "", file.read()).replace("\\\n", "")
    macros = dict(re.findall(r"#define (UITREE_\w+)(?:\(Self\))? +(int32_t.*|UITREE_.*)", source))
    tables = {}
    for interface, body in re.findall(r"struct (\w+)Operations \{(.*?)\n\};", source, re.S):
        while used := re.search(r"(UITREE_\w+)(\(\w+\))?", body):
            body = body.replace(used.group(), macros[used.group(1)])
        tables[interface] = [
            (name, ctypes.CFUNCTYPE(_type(result), *map(_type, arguments.split(","))))
            for result, name, arguments in re.findall(r"(\w+) \(\*(\w+)\)\(([^)]*)\)", body)]
    constants = {}
    for body in re.findall(r"enum \{(.*?)\}", source, re.S):
        for name, value in re.findall(r"(\w+) = (?:\(int32_t\))?(\S+?)(?:,|\s)", body + " "):
            constants[name] = ctypes.c_int32(int(value, 0)).value
    return tables, constants


_POINTERS = {"IID*": IID, "CANVASRect*": Rect, "UbuntuCanvas*": Canvas, "tagREFString*": Text,
             "int32_t*": ctypes.c_int32}
_NUMBERS = {"int32_t": ctypes.c_int32, "uint32_t": ctypes.c_uint32, "double": ctypes.c_double,
            "tagREFString": Text}


def _type(declaration):
    words = declaration.replace("const ", "").split()
    if words[0].endswith("**"):
        return ctypes.POINTER(ctypes.c_void_p)
    if words[0] in _POINTERS:
        return ctypes.POINTER(_POINTERS[words[0]])
    return ctypes.c_void_p if words[0].endswith("*") else _NUMBERS[words[0]]


_TABLES, _CONSTANTS = _read()
globals().update(_CONSTANTS)


def iid(name):
    """The identifier of the interface of that name."""
    if name == "IUnknown":
        return IID((0, 0, 0xC0, 0x46000000))
    bits = 0
    for place, c in enumerate(name[:25]):
        letter = ord(c.lower()) - 96 if c.isalpha() else 28 + int(c) if c in "01234" else 27
        bits |= letter << 5 * place
    return IID(tuple(bits >> 32 * word & 0xFFFFFFFF for word in range(4)))


class Pointer:
    """One reference to an object of the other side, given back when nobody uses it here any more.

    Operations are called by name, `place()` receives what they hand out, and `ask` finds another
    interface of the object."""

    def __init__(self, interface, address):
        self._as_parameter_ = ctypes.c_void_p(address)
        table = ctypes.POINTER(ctypes.c_void_p).from_address(address)
        self._operations = {name: prototype(table[slot])
                            for slot, (name, prototype) in enumerate(_TABLES[interface])}

    def __getattr__(self, name):
        try:
            operation = self.__dict__["_operations"][name]
        except KeyError:
            raise AttributeError(name) from None
        return lambda *arguments: operation(self._as_parameter_, *arguments)

    def __del__(self):
        if "_operations" in self.__dict__:
            self.Release()

    def ask(self, interface):
        place = ctypes.c_void_p()
        self.QueryInterface(iid(interface), place)
        return Pointer(interface, place.value) if place.value else None


class Object:
    """An object of ours: a subclass names its `interfaces` and has a method for each operation, which
    takes what stands in the header after `self`. The status is S_OK when a method returns nothing;
    E_FAIL when it raises, and for an operation without a method."""
    interfaces = ("IUnknown",)
    _held = {}  # what the other side has references to

    def __init__(self):
        self._count = 0
        self._parts = {interface: self._part(interface) for interface in self.interfaces}

    def _part(self, interface):
        functions = [prototype(self._entry(name)) for name, prototype in _TABLES[interface]]
        table = (ctypes.c_void_p * len(functions))(
            *(ctypes.cast(function, ctypes.c_void_p).value for function in functions))
        part = ctypes.pointer(table)
        part.functions = functions
        return part

    def _entry(self, name):
        method = getattr(self, name, None)

        def call(_, *arguments):
            try:
                status = method(*arguments) if method else E_FAIL
                return S_OK if status is None else status
            except Exception:
                traceback.print_exc()
                return E_FAIL
        return call

    @property
    def _as_parameter_(self):
        return self.address(self.interfaces[0])

    def address(self, interface):
        return ctypes.c_void_p(ctypes.addressof(self._parts[interface]))

    def hand_out(self, place, interface=None):
        """Stores the object in an out-place, with one reference for the receiver."""
        self.AddRef()
        place[0] = self.address(interface or self.interfaces[0]).value

    def QueryInterface(self, wanted, place):
        for interface in self.interfaces:
            if bytes(wanted[0]) in (bytes(iid(interface)), bytes(iid("IUnknown"))):
                return self.hand_out(place, interface)
        place[0] = None
        return E_NOINTERFACE

    def AddRef(self):
        self._count += 1
        Object._held[id(self)] = self
        return self._count

    def Release(self):
        self._count -= 1
        if self._count == 0:
            del Object._held[id(self)]
        return self._count


class String(Object):
    interfaces = ("IString",)

    def __init__(self, text):
        super().__init__()
        self._characters = ctypes.create_unicode_buffer(text)

    def GetString(self, text, length):
        text[0] = ctypes.addressof(self._characters)
        length[0] = len(self._characters) - 1


class Module:
    """A module of the framework, which has the host's registry until `close`."""

    def __init__(self, file, components=None):
        self._library = ctypes.CDLL(file)
        self._initialize = self._library["_Z16InitializeModulePvP20IComponentCollection"]
        self._initialize.argtypes = (ctypes.c_void_p, ctypes.c_void_p)
        self._initialize(None, components)

    def create(self, component, interface):
        characters = ctypes.create_unicode_buffer(component)
        find, creator, place = self._library["CreateFunction"], ctypes.c_void_p(), ctypes.c_void_p()
        find(Text(len(component), ctypes.addressof(characters)), ctypes.byref(creator))
        create = ctypes.CFUNCTYPE(ctypes.c_int32, ctypes.c_void_p, ctypes.POINTER(IID),
                                  ctypes.POINTER(ctypes.c_void_p))(creator.value)
        if create(None, iid(interface), place) < 0:
            raise OSError(f"cannot make a {component}")
        return Pointer(interface, place.value)

    def close(self):
        self._initialize(None, None)
