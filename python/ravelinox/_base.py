"""What the compiled half of the package needs from Python."""

import enum


class Error(Exception):
    """A failure of the engine: its number, and one sentence on what failed and what to do."""

    def __new__(cls, number, text=""):
        # An overflow is also what Python calls one.
        return super().__new__(_Overflow if cls is Error and number == 6 else cls, number, text)

    def __init__(self, number, text=""):
        super().__init__(number, text)
        self.number = number
        self.text = text

    def __str__(self):
        return self.text

    def __reduce__(self):
        return Error, (self.number, self.text)


class _Overflow(Error, OverflowError):
    pass


Error.__module__ = "ravelinox"
_Overflow.__name__ = _Overflow.__qualname__ = "Error"
_Overflow.__module__ = "ravelinox"


class Mark(enum.Enum):
    """Values that Python has no word for. Both count as false."""

    MISSING = "an optional parameter that was left out"
    EMPTY = "a value that nothing was ever assigned to"

    def __bool__(self):
        return False

    def __repr__(self):
        return f"ravelinox.{self.name}"

    __str__ = __repr__


Mark.__module__ = "ravelinox"
