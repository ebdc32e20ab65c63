"""The records of the interface as dataclasses, and their way to and from memory.

Their fields stand in the order of the C records, which have the same names without the
underscores."""

from __future__ import annotations

import ctypes
from dataclasses import dataclass, field, fields
from enum import IntEnum
from typing import Optional, TypeVar

from . import layouts


@dataclass
class AdjParam:
    """Parameters of a job; the values here are those of a new one."""

    mo: float = 2.5  #: a-priori standard error of a direction or azimuth, arc-seconds
    ms: float = 5.0  #: constant part of that of a distance, metres
    mr: float = 5.0  #: proportional part of it, a ratio: 5 ppm is 5e-6
    lvl1: int = 4  #: levelling grade
    lvl1_limit: int = 20  #: mm per square root of kilometres
    lvl2: int = 4  #: traverse grade
    lvl2_limit: int = 5  #: arc-seconds per square root of the angles
    limit: int = 3  #: tolerance factor of the traverse check, times mo
    format: int = 0  #: 0 ordinary, 1 traverse without orientation, 3 distances only


@dataclass
class PointData:
    """A point; a coordinate of 0.0 is not given."""

    name: str  #: at most 127 bytes
    type: int = 0  #: tens digit 1: plane coordinates known; units digit 1: height known
    x: float = 0.0  #: north, metres
    y: float = 0.0  #: east, metres
    h: float = 0.0  #: height, metres
    #: where the point is stored, if it comes from a job; of no effect when it is entered
    index: Optional[int] = field(default=None, compare=False)


@dataclass
class ObsData:
    """What was observed at one station towards one target; the defaults are "absent"."""

    distance: float = 0.0  #: horizontal, or length of the levelling line, metres
    direction: float = -1.0  #: dd.mmss
    height_diff: float = 0.0  #: target minus station, metres; needs a distance beside it
    azimuth: float = -1.0  #: dd.mmss


@dataclass
class CloseError:
    """The closure error of a levelling line, a loop or a traverse."""

    route: str  #: point names joined by " - "
    height_misclosure: float  #: mm; levelling only
    height_limit: float  #: mm
    angle_misclosure: float  #: arc-seconds; traverses only
    angle_limit: float  #: arc-seconds
    length_misclosure: float  #: metres
    route_length: float  #: metres
    relative_precision: int  #: N of 1:N; traverses only
    length_limit: float  #: metres; traverses only
    angle_within_limit: bool
    height_within_limit: bool  #: traverses: both misclosures within the tolerance
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


class FileKind(IntEnum):
    """The two kinds of file that are read."""

    PROJECT = 1
    STATION = 2


class Network(IntEnum):
    """The two networks of a job."""

    HEIGHTS = 1
    PLANE = 2


class Rules(IntEnum):
    """The two sets of rules of computations; docs/computations.md lists what differs."""

    TEXTBOOK = 0
    CLASSIC = 1  #: those of brenu.h


class Test(IntEnum):
    """How data snooping decides, two-sided."""

    W = 1  #: w = v / (sigma0 sqrt(q_vv)) with the a-priori sigma0 (Baarda)
    TAU = 2  #: tau: with the a-posteriori sigma0 (Pope); not by the classic rules


class ObservationKind(IntEnum):
    """What an observation is."""

    DIRECTION = 1
    DISTANCE = 2
    AZIMUTH = 3
    HEIGHT_DIFFERENCE = 4


@dataclass
class Figures:
    """Of an adjusted network."""

    control_points: int
    new_points: int
    #: observations minus unknowns; by the classic rules what data snooping took out is subtracted
    #: twice in the plane
    redundancy: int
    #: new points without results, by the rules of textbooks: what is not determined, and points of
    #: the other network alone
    left_out: int
    #: standard error of unit weight: metres for 1 km of levelling; in the plane a multiple of the
    #: a-priori errors; means nothing without redundancy
    m0: float


@dataclass
class ControlFit:
    """Of each known value by itself: by how much the observations want it greater, in metres, and
    the test value of that with a-priori errors; nan where nothing checks the value."""

    x: float
    y: float
    h: float
    wx: float
    wy: float
    wh: float


Record = TypeVar("Record")


def layout_fields(layout: type[ctypes.Structure]) -> list[str]:
    """The fields of a record in memory, without those that are not used."""
    return [name for name, *_ in layout._fields_ if not name.startswith("reserved")]


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
        for name, field_ in zip(layout_fields(layout), fields(record)):  # type: ignore[arg-type]
            value = getattr(record, field_.name)
            if isinstance(value, str):
                value = self.encode(value)
                room = getattr(layout, name).size
                if isinstance(getattr(struct, name), bytes) and len(value) >= room:
                    raise ValueError(f"{value!r} is longer than {room - 1} bytes")
            setattr(struct, name, value)
            stored = getattr(struct, name)
            if isinstance(stored, int) and stored != value:
                raise ValueError(f"{field_.name} {value} does not fit 32 bits")
        return struct

    def from_c(self, struct: ctypes.Structure, kind: type[Record]) -> Record:
        """A record from memory, its text decoded."""
        values = [getattr(struct, name) for name in layout_fields(type(struct))]
        texts = (bytes, type(None))
        return kind(*[self.decode(v) if isinstance(v, texts) else v for v in values])
