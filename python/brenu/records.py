"""The records of the interface as dataclasses, and their way to and from memory."""

from __future__ import annotations

import ctypes
from dataclasses import dataclass, fields
from typing import TypeVar

from . import layouts


class BrenuError(Exception):
    """A function of the library gave its failure value."""


@dataclass
class AdjParam:
    """Parameters of a job; the values here are those of a new one."""

    MO: float = 2.5  #: a-priori standard error of a direction or azimuth, arc-seconds
    MS: float = 5.0  #: constant part of that of a distance, metres
    MR: float = 5.0  #: proportional part of it, a ratio: 5 ppm is 5e-6
    Lvl1: int = 4  #: levelling grade
    Lvl1Limit: int = 20  #: mm per square root of kilometres
    Lvl2: int = 4  #: traverse grade
    Lvl2Limit: int = 5  #: arc-seconds per square root of the angles
    Limit: int = 3  #: tolerance factor of the traverse check, times MO
    format: int = 0  #: 0 ordinary, 1 traverse without orientation, 3 distances only


@dataclass
class PointData:
    """A point; a coordinate of 0.0 is not given."""

    name: str  #: at most 127 bytes
    type: int = 0  #: tens digit 1: plane coordinates known; units digit 1: height known
    x: float = 0.0  #: north, metres
    y: float = 0.0  #: east, metres
    h: float = 0.0  #: height, metres


@dataclass
class ObsData:
    """What was observed at one station towards one target; the defaults are "absent"."""

    distance: float = 0.0  #: horizontal, or length of the levelling line, metres
    direction: float = -1.0  #: dd.mmss
    heightDiff: float = 0.0  #: target minus station, metres; needs a distance beside it
    azimuth: float = -1.0  #: dd.mmss


@dataclass
class CloseError:
    """The closure error of a levelling line, a loop or a traverse."""

    route: str  #: point names joined by " - "
    heightMisclosure: float  #: mm; levelling only
    heightLimit: float  #: mm
    angleMisclosure: float  #: arc-seconds; traverses only
    angleLimit: float  #: arc-seconds
    lengthMisclosure: float  #: metres
    routeLength: float  #: metres
    relativePrecision: int  #: N of 1:N; traverses only
    lengthLimit: float  #: metres; traverses only
    angleWithinLimit: bool
    heightWithinLimit: bool
    mark: bool  #: the record passes


@dataclass
class PlaneResult:
    """Adjusted coordinates with their precision; the ellipse of a control point is 0."""

    x: float  #: metres
    y: float  #: metres
    mx: float  #: standard error, metres
    my: float  #: standard error, metres
    mp: float  #: standard error of the position, metres
    e: float  #: major semi-axis of the error ellipse, metres
    f: float  #: minor semi-axis, metres
    t: float  #: azimuth of the major semi-axis, dd.mmss


@dataclass
class VerticalResult:
    """Adjusted height with its precision."""

    correction: float  #: to the approximate height, metres
    height: float  #: metres
    sigma: float  #: standard error, metres


@dataclass
class CircleRecord:
    """What is measured from one placed point."""

    name: str  #: the centre
    x: float  #: metres
    y: float  #: metres
    radius: float  #: metres


Record = TypeVar("Record")


class Coding:
    """How the byte strings of the library are read and written."""

    def __init__(self, encoding: str):
        self.encoding = encoding

    def encode(self, text: str) -> bytes:
        if "\0" in text:
            raise ValueError(f"a NUL in the name {text!r}")
        return text.encode(self.encoding, "surrogateescape")

    def decode(self, data: bytes | None) -> str:
        return (data or b"").decode(self.encoding, "surrogateescape")

    def to_c(self, record: object) -> ctypes.Structure:
        """The record as it lies in memory; ValueError for a name or a number that does not fit."""
        layout = getattr(layouts, type(record).__name__, None)
        if layout is None:
            raise TypeError(f"{record!r} is no record")
        struct = layout()
        for field in fields(record):  # type: ignore[arg-type]
            value = getattr(record, field.name)
            if isinstance(value, str):
                value = self.encode(value)
                room = getattr(type(struct), field.name).size
                if isinstance(getattr(struct, field.name), bytes) and len(value) >= room:
                    raise ValueError(f"{value!r} is longer than {room - 1} bytes")
            setattr(struct, field.name, value)
            stored = getattr(struct, field.name)
            if isinstance(stored, int) and stored != value:
                raise ValueError(f"{field.name} {value} does not fit 32 bits")
        return struct

    def from_c(self, struct: ctypes.Structure, kind: type[Record]) -> Record:
        """A record from memory, its text decoded."""
        values = [getattr(struct, field.name) for field in fields(kind)]  # type: ignore[arg-type]
        texts = (bytes, type(None))
        return kind(*[self.decode(v) if isinstance(v, texts) else v for v in values])
