"""What functions with several outputs give, in the order of these outputs."""

from __future__ import annotations

from dataclasses import dataclass

from .records import CircleRecord, ObservationKind


@dataclass
class ObservationResult:
    """A direction or azimuth (arc-seconds, dd.mmss, arc-seconds) or a distance (metres)."""

    residual: float
    adjusted: float
    apriori: float  #: a-priori standard error


@dataclass
class HeightObsResult:
    """A height difference, metres."""

    residual: float
    adjusted: float
    sigma: float  #: standard error
    weight: float  #: 1000 / length


@dataclass
class LinePrecision:
    """A line from adjusted coordinates."""

    azimuth: float  #: dd.mmss
    azimuth_error: float  #: arc-seconds
    length: float  #: metres
    length_error: float  #: metres
    relative_precision: int  #: N of 1:N


@dataclass
class TraverseRow:
    """The row of a point in the traverse table."""

    angle: float  #: from back sight to fore sight, clockwise, dd.mmss
    angle_correction: float  #: arc-seconds
    azimuth: float  #: to the next point, dd.mmss
    length: float  #: to the next point, metres
    dx: float  #: metres, like the next five
    dy: float
    dx_correction: float
    dy_correction: float
    x: float
    y: float
    angle_misclosure: float  #: of the whole traverse, arc-seconds
    length_misclosure: float  #: of the whole traverse, metres
    relative_precision: int  #: N of 1:N


@dataclass
class TrilaterationChoice:
    """The two circles that meet in the next point, and a text that names its two sides."""

    first: CircleRecord
    second: CircleRecord
    text: str


@dataclass
class Observation:
    """One observation."""

    station: str
    target: str
    kind: ObservationKind


@dataclass
class TakenOut:
    """An observation that data snooping took out."""

    observation: Observation
    test_value: float  #: when it was taken out
    error: float  #: estimated: observed minus adjusted without it, metres or arc-seconds
    #: others whose test values cannot be told apart from its own: the error may be in one of them
    alternatives: list[Observation]
