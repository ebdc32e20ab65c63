"""Finds the survey library and loads it."""

from __future__ import annotations

import ctypes
import ctypes.util
import os
import sys
from pathlib import Path

from .prototypes import PROTOTYPES


def _find() -> str:
    named = os.environ.get("BRENU_LIBRARY")
    if named:
        return named
    windows = sys.platform == "win32"
    file = "brenu-survey.dll" if windows else "libbrenu-survey.so"
    beside = Path(__file__).parent / file
    if beside.exists():
        return str(beside)
    return file if windows else ctypes.util.find_library("brenu-survey") or file


def _load() -> ctypes.CDLL:
    path = _find()
    try:
        library = ctypes.CDLL(path)
    except OSError as error:
        raise ImportError(
            f"the library {path} cannot be loaded ({error}); name its file in BRENU_LIBRARY"
        ) from error
    for name, (result, arguments) in PROTOTYPES.items():
        function = getattr(library, name, None)
        if function is None:
            raise ImportError(f"the library {path} lacks {name}; it must be brenu-survey")
        function.restype = result
        function.argtypes = arguments
    return library


#: The loaded library.
C = _load()
