"""The functions of the C headers: results and arguments."""

from __future__ import annotations

from ctypes import POINTER, c_bool, c_char_p, c_double, c_int32, c_size_t, c_uint8, c_uint32
from ctypes import c_void_p

from . import layouts as rec


class _Index(c_int32):
    """An index as an argument; ctypes itself would cut it to 32 bits and find another point."""

    @classmethod
    def from_param(cls, value: int) -> c_int32:  # type: ignore[override]
        index = c_int32(value)
        if index.value != value:
            raise OverflowError(f"the index {value} does not fit 32 bits")
        return index


_CONTEXT = c_void_p
_TEXT = c_char_p
_OUT = POINTER(c_double)
_OBS_GETTER = (c_bool, [_CONTEXT, _Index, _TEXT, _OUT, _OUT, _OUT])
_COMPUTATION = (c_bool, [_CONTEXT, POINTER(rec.brenu_options)])
_TEXT_COPIER = (c_int32, [_CONTEXT, _Index, _TEXT, c_int32])


def _doubles(count: int) -> list[type]:
    return [c_double] * count


#: Result and arguments of every function.
PROTOTYPES = {
    "StartAdjustment": (_CONTEXT, []),
    "EndAdjustment": (None, [_CONTEXT]),
    "SetAdjParam": (None, [_CONTEXT, rec.AdjParam]),
    "GetAdjParam": (rec.AdjParam, [_CONTEXT]),
    "OpenBrenuAdjustFile": (c_bool, [_CONTEXT, _TEXT]),
    "SaveBrenuAdjustFile": (c_int32, [_CONTEXT, _TEXT]),
    "LoadKorvelAdjustFile": (c_bool, [_CONTEXT, _TEXT]),
    "GetPointCount": (c_uint32, [_CONTEXT]),
    "AddPoint": (c_int32, [_CONTEXT, _Index, rec.PointData]),
    "DeletePoint": (c_int32, [_CONTEXT, _Index]),
    "GetPoint": (c_int32, [_CONTEXT, _Index, POINTER(rec.PointData)]),
    "GetOriginalPoint": (c_int32, [_CONTEXT, _Index, POINTER(rec.PointData)]),
    "SetPoint": (c_int32, [_CONTEXT, _Index, rec.PointData]),
    "GetPointNum": (c_int32, [_CONTEXT, _TEXT]),
    "GetObsDataCount": (c_int32, [_CONTEXT, _Index]),
    "AddObsData": (c_int32, [_CONTEXT, _Index, _TEXT, rec.ObsData]),
    "AddObsData2": (
        c_int32,
        [_CONTEXT, _Index, _TEXT, _TEXT, rec.ObsData, rec.ObsData, c_uint8],
    ),
    "DeleteObsData": (c_int32, [_CONTEXT, _Index, _TEXT]),
    "GetObsData": (c_int32, [_CONTEXT, _Index, _TEXT, POINTER(rec.ObsData)]),
    "SetObsData": (c_int32, [_CONTEXT, _Index, _TEXT, rec.ObsData]),
    "GetNetType": (c_int32, [_CONTEXT]),
    "ApproxCalc": (c_bool, [_CONTEXT]),
    "GetApproxResult": (c_bool, [_CONTEXT, _Index, POINTER(rec.PointData)]),
    "LeastSquareAdj": (c_bool, [_CONTEXT]),
    "NonDirectionAdj": (c_bool, [_CONTEXT]),
    "DataSnooping": (c_int32, [_CONTEXT, c_uint32, c_double, c_double]),
    "GetPlaneResult": (c_bool, [_CONTEXT, _Index, POINTER(rec.PlaneResult)]),
    "GetDirAngleResult": _OBS_GETTER,
    "GetLengthResult": _OBS_GETTER,
    "GetAzimuthResult": _OBS_GETTER,
    "GetAzAndLenPrecision": (
        c_bool,
        [_CONTEXT, _Index, _TEXT, _OUT, _OUT, _OUT, _OUT, POINTER(c_int32)],
    ),
    "GetVerticalResult": (c_bool, [_CONTEXT, _Index, POINTER(rec.VerticalResult)]),
    "GetHeightObsResult": (c_bool, [_CONTEXT, _Index, _TEXT, _OUT, _OUT, _OUT, _OUT]),
    "CalculateCloseError": (c_bool, [_CONTEXT]),
    "GetCloseErrorCount": (c_int32, [_CONTEXT]),
    "GetCloseError": (c_bool, [_CONTEXT, _Index, POINTER(rec.CloseError)]),
    "GetCloseErrorMark": (c_int32, [_CONTEXT]),
    "ExportResultFile": (c_bool, [_CONTEXT, _TEXT]),
    "ExportCloseErrorFile": (c_bool, [_CONTEXT, _TEXT]),
    "JudgeTrilateration": (c_bool, [_CONTEXT]),
    "InitializeDataTrilateration": (c_bool, [_CONTEXT]),
    "TrilaterationDirection": (c_bool, [_CONTEXT]),
    "GetTrilaterationDirection": (
        c_int32,
        [_CONTEXT, POINTER(rec.CircleRecord), POINTER(rec.CircleRecord), _TEXT],
    ),
    "CalcTrilaterationpPoint": (
        c_bool,
        [_CONTEXT, c_uint8, rec.CircleRecord, rec.CircleRecord, _TEXT, POINTER(c_uint32)],
    ),
    "GetTraverseResult": (c_int32, [_CONTEXT, _Index, *[_OUT] * 12, POINTER(c_int32)]),
    "CentreCorrect": (None, [*_doubles(4), _OUT, _OUT]),
    "DovCorrect": (c_double, _doubles(4)),
    "HeightMarkCorrect": (c_double, _doubles(5)),
    "SectionCorrect": (c_double, _doubles(5)),
    "DistanceReduction": (c_double, _doubles(7)),
    "AstronomicalAzimuthReduction": (c_double, _doubles(4)),
    "DirectionCorrect": (c_double, _doubles(5)),
    "DistanceCorrect": (c_double, _doubles(4)),
    "PlaneAzimuthCorrect": (c_double, _doubles(9)),
    "MeteorologicalCorrect": (None, [*_doubles(10), _OUT]),
    "MeteorologicalCorrect2": (None, [*_doubles(8), _OUT]),
    "ConstAddMultiplyCorrect": (None, [*_doubles(3), _OUT]),
    "ProjectionCorrect": (None, [*_doubles(6), _OUT]),
    "GaussCorrect": (None, [*_doubles(9), _OUT, _OUT]),
    "GetRm": (c_double, _doubles(4)),
    "GetRn": (c_double, _doubles(5)),
    "brenu_version": (_TEXT, []),
    "brenu_set_threads": (None, [c_int32]),
    "brenu_finding_count": (c_int32, [_CONTEXT]),
    "brenu_get_finding": (c_bool, [_CONTEXT, _Index, POINTER(rec.brenu_finding)]),
    "brenu_finding_text": _TEXT_COPIER,
    "brenu_finding_name": (c_int32, [_CONTEXT, _Index, _Index, _TEXT, c_int32]),
    "brenu_finding_excerpt": _TEXT_COPIER,
    "brenu_finding_value": (c_bool, [_CONTEXT, _Index, _Index, _OUT]),
    "brenu_code_id": (_TEXT, [c_int32]),
    "brenu_import": (
        c_bool,
        [_CONTEXT, _CONTEXT, _TEXT, _TEXT, POINTER(rec.brenu_import_options), _TEXT],
    ),
    "brenu_read_file": (c_int32, [_CONTEXT, _TEXT]),
    "brenu_read_memory": (c_int32, [_CONTEXT, _TEXT, c_size_t]),
    "brenu_check_data": (c_bool, [_CONTEXT]),
    "brenu_adjust": _COMPUTATION,
    "brenu_approximate": _COMPUTATION,
    "brenu_compute_closures": _COMPUTATION,
    "brenu_taken_out_count": (c_int32, [_CONTEXT]),
    "brenu_get_taken_out": (c_bool, [_CONTEXT, _Index, POINTER(rec.brenu_taken_out)]),
    "brenu_get_alternative": (
        c_bool,
        [_CONTEXT, _Index, _Index, POINTER(rec.brenu_observation)],
    ),
    "brenu_report": (_TEXT, [_CONTEXT, c_int32, c_int32, _TEXT]),
    "brenu_untested_count": (c_int32, [_CONTEXT, c_int32]),
    "brenu_get_control_fit": (c_bool, [_CONTEXT, _Index, POINTER(rec.brenu_control_fit)]),
    "brenu_get_figures": (c_bool, [_CONTEXT, c_int32, POINTER(rec.brenu_figures)]),
    "brenu_next_point": (c_bool, [_CONTEXT, POINTER(c_int32)]),
    "brenu_next_observation": (c_bool, [_CONTEXT, POINTER(rec.brenu_pair)]),
}
