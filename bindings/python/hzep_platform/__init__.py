# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
"""Metadata of packaged hardware platforms, see docs/python.md."""

from importlib import metadata as _metadata

from . import native as _native
from ._handle import Handle

__all__ = ["Handle", "PlatformError", "ClosedError"]
for _name, _value in vars(_native).items():
    if isinstance(_value, type) and _value.__module__ == _native.__name__ and _name[0] != "_":
        __all__.append(_name)
globals().update((_name, getattr(_native, _name)) for _name in __all__)
for _name in __all__:
    globals()[_name].__module__ = __name__

try:
    __version__ = _metadata.version(__name__)
except _metadata.PackageNotFoundError:
    __version__ = "0"
