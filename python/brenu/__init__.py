"""Adjustment of survey control networks by least squares.

Functions and fields have the names of the C header, functions in the manner of Python.  Lengths are
metres, X is north, Y is east; angles in records and results are packed sexagesimal degrees
(30.15205 is 30 degrees 15' 20.5")."""

from .job import Job
from .outputs import (
    HeightObsResult,
    LinePrecision,
    ObservationResult,
    TraverseRow,
    TrilaterationChoice,
)
from .records import (
    AdjParam,
    BrenuError,
    CircleRecord,
    CloseError,
    ObsData,
    PlaneResult,
    PointData,
    VerticalResult,
)
from .reductions import (
    astronomical_azimuth_reduction,
    centre_correct,
    const_add_multiply_correct,
    direction_correct,
    distance_correct,
    distance_reduction,
    dov_correct,
    gauss_correct,
    get_rm,
    get_rn,
    height_mark_correct,
    meteorological_correct,
    meteorological_correct2,
    plane_azimuth_correct,
    projection_correct,
    section_correct,
)

__all__ = [
    "Job",
    "HeightObsResult",
    "LinePrecision",
    "ObservationResult",
    "TraverseRow",
    "TrilaterationChoice",
    "AdjParam",
    "BrenuError",
    "CircleRecord",
    "CloseError",
    "ObsData",
    "PlaneResult",
    "PointData",
    "VerticalResult",
    "astronomical_azimuth_reduction",
    "centre_correct",
    "const_add_multiply_correct",
    "direction_correct",
    "distance_correct",
    "distance_reduction",
    "dov_correct",
    "gauss_correct",
    "get_rm",
    "get_rn",
    "height_mark_correct",
    "meteorological_correct",
    "meteorological_correct2",
    "plane_azimuth_correct",
    "projection_correct",
    "section_correct",
]
