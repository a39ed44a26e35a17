"""A host's side of the binary face of Ravelinox.so, with nothing but the standard library.

create("Ravelinox.cmdl1") makes an object through the user's registry of components. Its members
are called by name: engine.Nome_PdS = "Empoli", engine.MkTime(6, 0, 0, 22, 4, 2026). A failure of
the engine raises Failure with its number and sentence.
"""

import ctypes
import datetime
import os
from ctypes import POINTER, byref, c_int16, c_int32, c_uint8, c_uint16, c_uint32, c_void_p

EMPTY, NULL, I2, I4, R4, R8, DATE, TEXT, DISPATCH, ERROR, BOOL = 0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11
VARIANT, UNKNOWN, UI1, BYREF = 12, 13, 17, 0x4000
METHOD, GET, PUT, PUT_REFERENCE = 1, 2, 4, 8
NAME_OF_PUT = -3
NOT_FOUND, EXCEPTION = 0x80020004, 0x80020009
DAY_ZERO = datetime.datetime(1899, 12, 30)

libc = ctypes.CDLL(None)
libc.calloc.restype = c_void_p
libc.calloc.argtypes = [ctypes.c_size_t, ctypes.c_size_t]
libc.free.argtypes = [c_void_p]


class Guid(ctypes.Structure):
    _fields_ = [("data1", c_uint32), ("data2", c_uint16), ("data3", c_uint16),
                ("data4", c_uint8 * 8)]

    @classmethod
    def of(cls, text):
        digits = text.strip("{}").replace("-", "")
        return cls(int(digits[:8], 16), int(digits[8:12], 16), int(digits[12:16], 16),
                   (c_uint8 * 8)(*bytes.fromhex(digits[16:])))


class Value(ctypes.Union):
    _fields_ = [("uint8", c_uint8), ("int16", c_int16), ("int32", c_int32),
                ("real32", ctypes.c_float), ("real64", ctypes.c_double), ("pointer", c_void_p),
                ("words", c_void_p * 2)]


class Variant(ctypes.Structure):
    _fields_ = [("kind", c_uint16), ("reserved", c_uint16 * 3), ("value", Value)]


class Arguments(ctypes.Structure):
    _fields_ = [("values", POINTER(Variant)), ("names", POINTER(c_int32)), ("count", c_uint32),
                ("named_count", c_uint32)]


class Exception_(ctypes.Structure):
    _fields_ = [("code", c_uint16), ("reserved", c_uint16), ("source", c_void_p),
                ("description", c_void_p), ("help_file", c_void_p), ("help_context", c_uint32),
                ("pointer", c_void_p), ("deferred", c_void_p), ("result", c_int32)]


CLASS_FACTORY = Guid.of("00000001-0000-0000-C000-000000000046")
DISPATCH_ID = Guid.of("00020400-0000-0000-C000-000000000046")
NO_ID = Guid()


class Failure(Exception):
    """A call that failed: the engine's number and sentence, or a code of the border."""

    def __init__(self, code, text="", argument=None):
        own = code & 0xFFFF0000 == 0x800A0000
        self.number = code & 0xFFFF if own else code
        self.argument = argument
        super().__init__(f"{self.number}: {text}" if own else f"0x{code:08X}: {text}")


def new_text(text):
    """A counted text in the C library's memory."""
    units = text.encode("utf-16-le", "surrogatepass")
    block = libc.calloc(1, len(units) + 10)
    ctypes.memmove(block + 4, len(units).to_bytes(4, "little"), 4)
    ctypes.memmove(block + 8, units, len(units))
    return block + 8


def read_text(text):
    """What a counted text says; null is the empty text."""
    if not text:
        return ""
    size = int.from_bytes(ctypes.string_at(text - 4, 4), "little")
    return ctypes.string_at(text, size).decode("utf-16-le", "replace")


def free_text(text):
    if text:
        libc.free(text - 8)


def slot(pointer, index, *types, result=c_int32):
    """The function in an object's table, ready to be called with the arguments after the object."""
    table = ctypes.cast(pointer, POINTER(POINTER(c_void_p))).contents
    function = ctypes.CFUNCTYPE(result, c_void_p, *types)(table[index])
    return lambda *arguments: function(pointer, *arguments)


class Missing:
    """Stands for an optional argument that is left out."""


class Null:
    """Stands for a value that is known to be none; None is the empty value."""


class Nothing:
    """Stands for no object: clears a property that holds one."""


def pack(value):
    """A variant of a Python value; the caller clears it."""
    variant = Variant()
    if value is Missing:
        variant.kind, variant.value.int32 = ERROR, NOT_FOUND - (1 << 32)
    elif value is Null:
        variant.kind = NULL
    elif value is Nothing:
        variant.kind = DISPATCH
    elif isinstance(value, bool):
        variant.kind, variant.value.int16 = BOOL, -value
    elif isinstance(value, int) and not -1 << 31 <= value < 1 << 31:
        variant.kind, variant.value.real64 = R8, value
    elif isinstance(value, int):
        variant.kind, variant.value.int32 = I4, value
    elif isinstance(value, float):
        variant.kind, variant.value.real64 = R8, value
    elif isinstance(value, str):
        variant.kind, variant.value.pointer = TEXT, new_text(value)
    elif isinstance(value, Component):
        value.add_reference()
        variant.kind, variant.value.pointer = DISPATCH, value.pointer
    elif value is not None:
        raise TypeError(f"no variant for {value!r}")
    return variant


def unpack(variant):
    """The Python value of a variant, which is cleared."""
    value, kind = variant.value, variant.kind
    try:
        if kind == BOOL:
            return value.int16 != 0
        if kind == DATE:
            return DAY_ZERO + datetime.timedelta(seconds=round(value.real64 * 86400))
        if kind == TEXT:
            return read_text(value.pointer)
        if kind in (DISPATCH, UNKNOWN):
            return Component(value.pointer) if value.pointer else None
        plain = {UI1: value.uint8, I2: value.int16, I4: value.int32, R4: value.real32,
                 R8: value.real64}
        return plain.get(kind)
    finally:
        if kind == TEXT:
            free_text(value.pointer)


def clear(variant):
    if variant.kind == TEXT:
        free_text(variant.value.pointer)
    elif variant.kind == DISPATCH and variant.value.pointer:
        slot(variant.value.pointer, 2, result=c_uint32)()


class Component:
    """An object with the dispatch interface; holds one reference, given up with `release`."""

    def __init__(self, pointer):
        self.__dict__["pointer"] = pointer
        self.__dict__["_ids"] = {}

    def add_reference(self):
        return slot(self.pointer, 1, result=c_uint32)()

    def release(self):
        pointer = self.__dict__.pop("pointer", None)
        return slot(pointer, 2, result=c_uint32)() if pointer else 0

    def __del__(self):
        self.release()

    def id_of(self, *names):
        """The identifier of a member, or of a member and its parameters."""
        texts = [ctypes.create_string_buffer(name.encode("utf-16-le") + b"\0\0") for name in names]
        pointers = (c_void_p * len(texts))(*map(ctypes.addressof, texts))
        ids = (c_int32 * len(texts))()
        code = slot(self.pointer, 5, POINTER(Guid), POINTER(c_void_p), c_uint32, c_uint32,
                    POINTER(c_int32))(byref(NO_ID), pointers, len(texts), 0, ids)
        if code < 0:
            raise Failure(code & 0xFFFFFFFF, names[0])
        return ids[0] if len(texts) == 1 else list(ids)

    def invoke(self, member, use, values=(), names=()):
        """One call by identifier. `values` are variants: named ones first, then the others from the
        last to the first."""
        block = (Variant * max(1, len(values)))(*values)
        arguments = Arguments(block, (c_int32 * max(1, len(names)))(*names), len(values),
                              len(names))
        result, failure, wrong = Variant(), Exception_(), c_uint32(0)
        code = slot(self.pointer, 6, c_int32, POINTER(Guid), c_uint32, c_uint16,
                    POINTER(Arguments), POINTER(Variant), POINTER(Exception_), POINTER(c_uint32))(
            member, byref(NO_ID), 0, use, byref(arguments), byref(result), byref(failure),
            byref(wrong)) & 0xFFFFFFFF
        if code == EXCEPTION:
            text = read_text(failure.description)
            free_text(failure.description)
            free_text(failure.source)
            raise Failure(failure.result & 0xFFFFFFFF, text)
        if code & 0x80000000:
            raise Failure(code, "the call was refused", wrong.value)
        return unpack(result)

    def call(self, name, use, *values):
        if name not in self._ids:
            self._ids[name] = self.id_of(name)
        variants = [pack(value) for value in reversed(values)]
        try:
            return self.invoke(self._ids[name], use, variants,
                               [NAME_OF_PUT] if use & (PUT | PUT_REFERENCE) else [])
        finally:
            for variant in variants:
                clear(variant)

    def read(self, name, *values):
        return self.call(name, GET, *values)

    def __getattr__(self, name):
        """A method, as a function; a property that takes no arguments, its value."""
        if name.startswith("_"):
            raise AttributeError(name)
        try:
            return self.read(name)
        except Failure as failure:
            if failure.number not in (0x80020003, 0x8002000E):  # no property; wants arguments
                raise
        return lambda *values: self.call(name, METHOD | GET, *values)

    def __setattr__(self, name, value):
        is_object = isinstance(value, Component) or value is Nothing
        self.call(name, PUT_REFERENCE if is_object else PUT, value)


def rows(recordset):
    """The rows of an open recordset from the current one on, each a tuple of its values."""
    while not recordset.EOF:
        yield tuple(recordset.Fields(at).Value for at in range(recordset.FieldCount))
        recordset.MoveNext()


def registry():
    """The user's registry of components, as a dictionary."""
    data = os.environ.get("XDG_DATA_HOME", "")
    if not data.startswith("/"):
        data = os.path.join(os.environ["HOME"], ".local", "share")
    with open(os.path.join(data, "ravelinox", "registry"), encoding="utf-8") as lines:
        return dict(line.rstrip("\n").split(" = ", 1) for line in lines if " = " in line)


def create_from_file(file, class_id):
    """An object of a class in a library."""
    library = ctypes.CDLL(file)
    factory, made = c_void_p(), c_void_p()
    code = library.DllGetClassObject(byref(Guid.of(class_id)), byref(CLASS_FACTORY), byref(factory))
    if code >= 0:
        code = slot(factory.value, 3, c_void_p, POINTER(Guid), POINTER(c_void_p))(
            None, byref(DISPATCH_ID), byref(made))
        slot(factory.value, 2, result=c_uint32)()
    if code < 0:
        raise Failure(code & 0xFFFFFFFF, file)
    return Component(made.value)


def create(program_id):
    """An object of a registered class."""
    entries = registry()
    class_id = entries[program_id + "\\CLSID"]
    return create_from_file(entries["CLSID\\" + class_id + "\\InprocServer32"], class_id)
