"""One job: points, observations, computations and results."""

from __future__ import annotations

import os
import sys
from ctypes import byref, c_double, c_int32, c_uint32, create_string_buffer
from typing import Callable, TypeVar, Union

from . import layouts, records
from .library import C
from .outputs import HeightObsResult, LinePrecision, ObservationResult, TraverseRow
from .outputs import TrilaterationChoice
from .records import AdjParam, BrenuError, CircleRecord, CloseError, ObsData, PlaneResult
from .records import PointData, VerticalResult

Result = TypeVar("Result")
Path = Union[str, bytes, "os.PathLike[str]"]


# Stays where there is no plane network: the library says true all the same.
_NOT_PLACED = 2**32 - 1


def _path(path: Path) -> bytes:
    """The narrow string of a path, which the library passes on unchanged."""
    path = os.fspath(path)
    if isinstance(path, str):
        path = path.encode("mbcs") if sys.platform == "win32" else os.fsencode(path)
    if b"\0" in path:
        raise ValueError(f"a NUL in the path {path!r}")
    return path


def _check(done: bool, what: str) -> None:
    if not done:
        raise BrenuError(what)


class Job:
    """A job, to be used by one thread at a time.  Closed by `with`, by close() or when collected.

    What cannot be done raises BrenuError; a result that is not there is None.  Points have the
    indices 0, 1, 2... after a file was read, otherwise those that the host chooses."""

    def __init__(self, encoding: str = "utf-8"):
        self._text = records.Coding(encoding)
        self._open = C.StartAdjustment()
        if not self._open:
            raise MemoryError("no room for a job")

    @property
    def _context(self) -> int:
        _check(self._open is not None, "the job is closed")
        return self._open

    def end_adjustment(self) -> None:
        """Frees the job; calling it again does nothing."""
        context, self._open = getattr(self, "_open", None), None
        if context:
            C.EndAdjustment(context)

    close = end_adjustment
    __del__ = end_adjustment

    def __enter__(self) -> Job:
        return self

    def __exit__(self, *exception: object) -> None:
        self.close()

    # ---- Parameters and files ----

    def set_adj_param(self, param: AdjParam) -> None:
        """Copies the parameters; nothing is checked."""
        C.SetAdjParam(self._context, self._text.to_c(param))

    def get_adj_param(self) -> AdjParam:
        """A copy of the parameters."""
        return self._text.from_c(C.GetAdjParam(self._context), AdjParam)

    def open_brenu_adjust_file(self, path: Path) -> None:
        """Reads a project file into the job, which should be fresh."""
        done = C.OpenBrenuAdjustFile(self._context, _path(path))
        _check(done, f"the project file {path!r} cannot be read")

    def save_brenu_adjust_file(self, path: Path) -> None:
        """Writes parameters, points and observations."""
        done = C.SaveBrenuAdjustFile(self._context, _path(path)) == 1
        _check(done, f"the project file {path!r} cannot be written")

    def load_korvel_adjust_file(self, path: Path) -> None:
        """Reads a station and observation file."""
        done = C.LoadKorvelAdjustFile(self._context, _path(path))
        _check(done, f"the station and observation file {path!r} cannot be read")

    # ---- Points ----

    def get_point_count(self) -> int:
        """The number of points."""
        return C.GetPointCount(self._context)

    def add_point(self, index: int, point: PointData) -> None:
        """Adds a point; neither index nor name may be taken."""
        added = C.AddPoint(self._context, index, self._text.to_c(point)) >= 0
        _check(added, f"the point {point.name!r} is refused")

    def delete_point(self, index: int) -> None:
        """Removes the point and its observations; those of higher index move down."""
        _check(C.DeletePoint(self._context, index) >= 0, f"there is no point {index}")

    def get_point(self, index: int) -> PointData | None:
        """The point as it is stored."""
        return self._point(C.GetPoint, index)

    def get_original_point(self, index: int) -> PointData | None:
        """Another name of get_point."""
        return self._point(C.GetOriginalPoint, index)

    def set_point(self, index: int, point: PointData) -> None:
        """Overwrites the point; a new name is carried through its observations."""
        done = C.SetPoint(self._context, index, self._text.to_c(point)) >= 0
        _check(done, f"the point {index} cannot be overwritten")

    def get_point_num(self, name: str) -> int | None:
        """The index of the point of this name."""
        index = C.GetPointNum(self._context, self._text.encode(name))
        return None if index < 0 else index

    # ---- Observations ----

    def get_obs_data_count(self, station: int) -> int:
        """The number of targets stored for the station, 0 when there is no such point."""
        return C.GetObsDataCount(self._context, station)

    def add_obs_data(self, station: int, target: str, observation: ObsData) -> None:
        """Adds what was observed at a station towards a target that has nothing yet."""
        done = C.AddObsData(self._context, *self._pair(station, target), self._obs(observation))
        _check(done >= 0, f"the observation {station} to {target!r} is refused")

    def add_obs_data2(
        self,
        station: int,
        target1: str,
        target2: str,
        observation1: ObsData,
        observation2: ObsData,
        reconcile: bool,
    ) -> None:
        """Adds two targets at once; see brenu.h for what `reconcile` does, and its failures."""
        done = C.AddObsData2(
            self._context,
            *self._pair(station, target1),
            self._text.encode(target2),
            self._obs(observation1),
            self._obs(observation2),
            1 if reconcile else 0,
        )
        _check(done == 1, f"the observations {station} to {target1!r}, {target2!r} are refused")

    def delete_obs_data(self, station: int, target: str) -> None:
        """Removes an observation."""
        done = C.DeleteObsData(self._context, *self._pair(station, target))
        _check(done >= 0, f"there is no observation {station} to {target!r}")

    def get_obs_data(self, station: int, target: str) -> ObsData | None:
        """The observation as it is stored."""
        out = layouts.ObsData()
        found = C.GetObsData(self._context, *self._pair(station, target), byref(out)) >= 0
        return self._text.from_c(out, ObsData) if found else None

    def set_obs_data(self, station: int, target: str, observation: ObsData) -> None:
        """Overwrites an observation that is there."""
        done = C.SetObsData(self._context, *self._pair(station, target), self._obs(observation))
        _check(done >= 0, f"there is no observation {station} to {target!r}")

    # ---- Computations ----

    def get_net_type(self) -> int:
        """0 no control point, 1 levelling network, 2 plane network, 3 both."""
        return C.GetNetType(self._context)

    def approx_calc(self) -> None:
        """Approximate values of all new points."""
        _check(C.ApproxCalc(self._context), "no control, or a point cannot be reached")

    def get_approx_result(self, number: int) -> PointData | None:
        """The point with its approximate values; `number` is that in the network (brenu.h)."""
        return self._record(C.GetApproxResult, layouts.PointData, PointData, number)

    def least_square_adj(self) -> None:
        """Least-squares adjustment of heights and coordinates."""
        _check(C.LeastSquareAdj(self._context), "the network cannot be adjusted")

    def non_direction_adj(self) -> None:
        """Traverses without orientation; for format 1."""
        _check(C.NonDirectionAdj(self._context), "the traverses cannot be computed")

    def data_snooping(self, kind: int, level_alpha: float, plane_alpha: float) -> None:
        """Adjusts and takes gross errors out; `kind` is the network type."""
        done = C.DataSnooping(self._context, kind, level_alpha, plane_alpha) == 1
        _check(done, "the network cannot be snooped")

    # ---- Results ----

    def get_plane_result(self, index: int) -> PlaneResult | None:
        """Adjusted coordinates with their standard errors and the error ellipse."""
        return self._record(C.GetPlaneResult, layouts.PlaneResult, PlaneResult, index)

    def get_dir_angle_result(self, station: int, target: str) -> ObservationResult | None:
        """Residual in arc-seconds, adjusted direction in dd.mmss."""
        return self._observed(C.GetDirAngleResult, ObservationResult, station, target)

    def get_length_result(self, station: int, target: str) -> ObservationResult | None:
        """Residual and adjusted length, metres."""
        return self._observed(C.GetLengthResult, ObservationResult, station, target)

    def get_azimuth_result(self, station: int, target: str) -> ObservationResult | None:
        """Residual in arc-seconds, adjusted azimuth in dd.mmss."""
        return self._observed(C.GetAzimuthResult, ObservationResult, station, target)

    def get_az_and_len_precision(self, station: int, target: str) -> LinePrecision | None:
        """Azimuth and length from adjusted coordinates; None for two plane control points."""
        return self._observed(C.GetAzAndLenPrecision, LinePrecision, station, target)

    def get_vertical_result(self, index: int) -> VerticalResult | None:
        """Adjusted height.  Take care: an index without a point gets an empty point."""
        return self._record(C.GetVerticalResult, layouts.VerticalResult, VerticalResult, index)

    def get_height_obs_result(self, station: int, target: str) -> HeightObsResult | None:
        """Of a levelled line, with the weight.  Take care: as get_vertical_result."""
        return self._observed(C.GetHeightObsResult, HeightObsResult, station, target)

    # ---- Closure errors, reports, traverses ----

    def calculate_close_error(self) -> None:
        """Closure errors of levelling lines, loops and traverses."""
        _check(C.CalculateCloseError(self._context), "closure errors cannot be computed")

    def get_close_error_count(self) -> int:
        """The number of closure errors, 0 before they are computed."""
        return C.GetCloseErrorCount(self._context)

    def get_close_error(self, index: int) -> CloseError | None:
        """The closure error of this index, counted from 0."""
        return self._record(C.GetCloseError, layouts.CloseError, CloseError, index)

    def get_close_error_mark(self) -> bool:
        """Whether every closure error passes."""
        return C.GetCloseErrorMark(self._context) == 1

    def export_result_file(self, path: Path) -> None:
        """Writes the report of all results, its labels in code page 936."""
        done = C.ExportResultFile(self._context, _path(path))
        _check(done, f"the report {path!r} cannot be written in full")

    def export_close_error_file(self, path: Path) -> None:
        """Writes the report of the closure errors; without any, it fails and no file is made."""
        done = C.ExportCloseErrorFile(self._context, _path(path))
        _check(done, f"the report {path!r} cannot be written")

    def get_traverse_result(self, index: int) -> TraverseRow | None:
        """The row of a point in the traverses computed last; None for a point on none."""
        values = [c_double() for _ in range(12)] + [c_int32()]
        found = C.GetTraverseResult(self._context, index, *map(byref, values)) == 1
        return TraverseRow(*[v.value for v in values]) if found else None

    # ---- Trilateration ----

    def judge_trilateration(self) -> None:
        """Puts every new point back to "not placed"; for format 3."""
        _check(C.JudgeTrilateration(self._context), "this is no network of distances only")

    def initialize_data_trilateration(self) -> None:
        """Prepares the plane network for placing."""
        _check(C.InitializeDataTrilateration(self._context), "there is no plane network")

    def trilateration_direction(self) -> None:
        """Ends the placing: sets the plane network up with the coordinates."""
        _check(C.TrilaterationDirection(self._context), "not all points are placed")

    def get_trilateration_direction(self, name: str = "") -> TrilaterationChoice | None:
        """The next point that can be placed, or the named one, and the circles that meet in it."""
        first, second = layouts.CircleRecord(), layouts.CircleRecord()
        direction = create_string_buffer(self._text.encode(name)[:254], 255)
        found = C.GetTrilaterationDirection(self._context, byref(first), byref(second), direction)
        if found != 1:
            return None
        circles = [self._text.from_c(circle, CircleRecord) for circle in (first, second)]
        return TrilaterationChoice(*circles, self._text.decode(direction.value))

    def calc_trilaterationp_point(
        self, right: bool, first: CircleRecord, second: CircleRecord, name: str
    ) -> int:
        """Places the point on one side of the line from first to second; how many are left."""
        remaining = c_uint32(_NOT_PLACED)
        done = C.CalcTrilaterationpPoint(
            self._context,
            1 if right else 0,
            self._text.to_c(first),
            self._text.to_c(second),
            self._text.encode(name),
            byref(remaining),
        )
        placed = done and remaining.value != _NOT_PLACED
        _check(placed, f"the point {name!r} cannot be placed")
        return remaining.value

    # ---- Help ----

    def _pair(self, station: int, target: str) -> tuple[int, bytes]:
        return station, self._text.encode(target)

    def _obs(self, observation: ObsData) -> layouts.ObsData:
        return self._text.to_c(observation)

    def _point(self, getter: Callable, index: int) -> PointData | None:
        out = layouts.PointData()
        found = index >= 0 and getter(self._context, index, byref(out)) == index
        return self._text.from_c(out, PointData) if found else None

    def _record(
        self, getter: Callable, layout: type, kind: type[Result], index: int
    ) -> Result | None:
        out = layout()
        return self._text.from_c(out, kind) if getter(self._context, index, byref(out)) else None

    def _observed(
        self, getter: Callable, kind: type[Result], station: int, target: str
    ) -> Result | None:
        # Every output of the getter behind context, station and target, of the type it points to.
        values = [pointer._type_() for pointer in getter.argtypes[3:]]
        found = getter(self._context, *self._pair(station, target), *map(byref, values))
        return kind(*[v.value for v in values]) if found else None
