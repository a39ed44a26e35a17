"""The station side of a railway simulation: see docs/python.md and the C++ headers, whose names the
package keeps."""

import contextlib
import datetime
import os
from typing import Union

from ._base import Error, Mark
from ._engine import (
    Connection,
    CursorLocation,
    Field,
    LockType,
    ObjectState,
    Recordset,
    RowWriter,
    ShareMode,
    TelephoneView,
    cmdl1,
    create_line_database,
    create_station_database,
    frmTelefonoINdll,
    platform,
)

MISSING = Mark.MISSING
EMPTY = Mark.EMPTY

# What a variant may hold. None stands for Null.
Value = Union[None, Mark, bool, int, float, str, datetime.datetime, Connection, Recordset]

# Shown under the name by which programs import them.
for _shown in (Connection, CursorLocation, Field, LockType, ObjectState, Recordset, RowWriter,
               ShareMode, TelephoneView, cmdl1):
    _shown.__module__ = __name__
del _shown


def _rows(slot):
    """The rows from the current one on, each a tuple of its values."""
    while not slot.end_of_file:
        yield tuple(slot.field(at).value for at in range(slot.field_count))
        slot.move_next()


Recordset.__iter__ = _rows

__all__ = [
    "Connection", "CursorLocation", "EMPTY", "Error", "Field", "LockType", "MISSING",
    "ObjectState", "Recordset", "RowWriter", "ShareMode", "TelephoneView", "Value",
    "cmdl1", "create_line_database", "create_station_database", "frmTelefonoINdll", "override",
    "platform",
]


@contextlib.contextmanager
def override(**seams):
    """Puts other seams in force for a `with` block: override(random=..., voice=...)."""
    previous = {name: getattr(platform, name) for name in seams}
    try:
        for name, value in seams.items():
            setattr(platform, name, value)
        yield platform
    finally:
        for name, value in previous.items():
            setattr(platform, name, value)


def _folder_of_the_user():
    data = os.environ.get("XDG_DATA_HOME", "")
    if not os.path.isabs(data):
        data = os.path.expanduser("~/.local/share")
    return os.path.join(data, "ravelinox")


# A package installed for all users lies where none of them may write. The folder is made by the
# first object that is created.
if not os.access(platform.component_folder, os.W_OK):
    platform.component_folder = _folder_of_the_user()
