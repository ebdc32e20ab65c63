"""Adjustment of survey control networks by least squares.

Functions and fields have the names of the C header in the manner of Python.  Lengths are metres, X
is north, Y is east; angles in records and results are packed sexagesimal degrees (30.15205 is 30
degrees 15' 20.5")."""

from .findings import (
    BrenuError,
    CallError,
    ComputationError,
    DataError,
    FileError,
    Finding,
    Severity,
)
from .job import Job
from .library import C as _library
from .outputs import (
    HeightObsResult,
    LinePrecision,
    Observation,
    ObservationResult,
    TakenOut,
    TraverseRow,
    TrilaterationChoice,
)
from .records import (
    AdjParam,
    CircleRecord,
    CloseError,
    ControlFit,
    Figures,
    FileKind,
    Network,
    ObsData,
    ObservationKind,
    PlaneResult,
    PointData,
    Rules,
    Test,
    VerticalResult,
)
from .report import Report
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

#: of the library
__version__: str = _library.brenu_version().decode()

__all__ = [
    "Job",
    "Report",
    "BrenuError",
    "CallError",
    "ComputationError",
    "DataError",
    "FileError",
    "Finding",
    "Severity",
    "HeightObsResult",
    "LinePrecision",
    "Observation",
    "ObservationResult",
    "TakenOut",
    "TraverseRow",
    "TrilaterationChoice",
    "AdjParam",
    "CircleRecord",
    "CloseError",
    "ControlFit",
    "Figures",
    "FileKind",
    "Network",
    "ObsData",
    "ObservationKind",
    "PlaneResult",
    "PointData",
    "Rules",
    "Test",
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
