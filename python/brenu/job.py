"""One job: points, observations, computations and results."""

from __future__ import annotations

import os
import sys
from ctypes import byref, c_int32, c_uint32, create_string_buffer
from typing import Any, Callable, Iterator, TypeVar, Union

from . import layouts, records
from .findings import Finding, findings_of, raise_cause
from .library import C
from .outputs import HeightObsResult, LinePrecision, Observation, ObservationResult, TakenOut
from .outputs import TraverseRow, TrilaterationChoice
from .records import AdjParam, CircleRecord, CloseError, ControlFit, Figures, FileKind, Network
from .records import ObsData, ObservationKind, PlaneResult, PointData, Rules, Test, VerticalResult
from .report import Report

Result = TypeVar("Result")
Path = Union[str, bytes, "os.PathLike[str]"]


def _path(path: Path, utf8: bool = False) -> bytes:
    """A path as the library takes it: on Windows in the code page of the system or in UTF-8."""
    path = os.fspath(path)
    if isinstance(path, str):
        narrow = sys.platform == "win32" and not utf8
        path = path.encode("mbcs") if narrow else os.fsencode(path)
    if b"\0" in path:
        raise ValueError(f"a NUL in the path {path!r}")
    return path


class Job:
    """A job, to be used by one thread at a time.  Closed by `with`, by close() or when collected.

    What fails raises a BrenuError by its cause, memory exhaustion MemoryError; a result that is not
    there is None.  Points have the indices 0, 1, 2... after a file was read, otherwise those that
    the host chooses.

    Computations follow `rules`; by those of textbooks `level_sigma` is the a-priori standard error
    of 1 km of levelling in metres."""

    def __init__(
        self,
        encoding: str = "utf-8",
        rules: Rules = Rules.TEXTBOOK,
        level_sigma: float = 0.001,
    ):
        self._text = records.Coding(encoding)
        self.rules = rules
        self.level_sigma = level_sigma
        self._open = C.StartAdjustment()
        if not self._open:
            raise MemoryError("no room for a job")

    @property
    def _context(self) -> int:
        if self._open is None:
            raise ValueError("the job is closed")
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

    @property
    def findings(self) -> list[Finding]:
        """Of the last call that changes, computes, reads or writes: after a success its doubts."""
        return findings_of(self._context, self._text)

    # ---- Parameters and files ----

    def set_adj_param(self, param: AdjParam) -> None:
        """Copies the parameters; nothing is checked."""
        C.SetAdjParam(self._context, self._text.to_c(param))

    def get_adj_param(self) -> AdjParam:
        """A copy of the parameters."""
        return self._text.from_c(C.GetAdjParam(self._context), AdjParam)

    def read(self, source: str | bytes | os.PathLike[str]) -> FileKind:
        """Reads a project file or a station and observation file, told apart by content, into the
        job, which should be fresh.  A str or a path names the file, bytes are its contents."""
        if isinstance(source, bytes):
            return FileKind(self._call(C.brenu_read_memory, source, len(source)))
        return FileKind(self._call(C.brenu_read_file, _path(source, utf8=True)))

    def import_field_books(
        self,
        *paths: Path,
        control: Path | None = None,
        heights: Job | None = None,
        log: Path | None = None,
        face_one_only: bool = False,
        first_set_only: bool = False,
        first_setup_only: bool = False,
        centring: bool = True,
        trig_heights: bool = False,
        refraction: float | None = None,
        constant: float = 0.0,
        scale: float = 0.0,
        height: float | None = None,
        projection_scale: float = 1.0,
    ) -> list[Finding]:
        """Reads what instruments write (docs/import.md) into the job, which should be fresh, and
        heights beside a plane survey into another one.  Returns what was left out or is doubtful.

        control names a file of known points, log one to be written.  Constants are mm, scales
        mm/km, height is the mean one above the ellipsoid."""
        steps = [face_one_only, first_set_only, first_setup_only, not centring, trig_heights]
        steps += [refraction is not None, height is not None]
        options = layouts.brenu_import_options(
            sum(1 << bit for bit, step in enumerate(steps) if step), 0, refraction or 0.0,
            constant, scale, height or 0.0, projection_scale,
        )  # fmt: skip
        optional = [None if path is None else _path(path, utf8=True) for path in (control, log)]
        self._call(
            C.brenu_import, None if heights is None else heights._context,
            b"\n".join(_path(path, utf8=True) for path in paths),
            optional[0], byref(options), optional[1],
        )  # fmt: skip
        return self.findings

    def open_brenu_adjust_file(self, path: Path) -> None:
        """Reads a project file into the job, which should be fresh."""
        self._call(C.OpenBrenuAdjustFile, _path(path))

    def save_brenu_adjust_file(self, path: Path) -> None:
        """Writes parameters, points and observations."""
        self._call(C.SaveBrenuAdjustFile, _path(path))

    def load_korvel_adjust_file(self, path: Path) -> None:
        """Reads a station and observation file."""
        self._call(C.LoadKorvelAdjustFile, _path(path))

    def check_data(self) -> list[Finding]:
        """What looks wrong in the data as a whole; errors are not raised here."""
        C.brenu_check_data(self._context)
        return self.findings

    # ---- Points ----

    @property
    def points(self) -> Iterator[PointData]:
        """All points in the order of their indices, which stand in the records."""
        index = c_int32(-1)
        while C.brenu_next_point(self._context, byref(index)):
            point = self.get_point(index.value)
            if point is not None:
                yield point

    def get_point_count(self) -> int:
        """The number of points."""
        return C.GetPointCount(self._context)

    def add_point(self, index: int, point: PointData) -> None:
        """Adds a point; neither index nor name may be taken."""
        self._call(C.AddPoint, index, self._text.to_c(point))

    def delete_point(self, index: int) -> None:
        """Removes the point and its observations; those of higher index move down."""
        self._call(C.DeletePoint, index)

    def get_point(self, index: int) -> PointData | None:
        """The point as it is stored."""
        return self._point(C.GetPoint, index)

    def get_original_point(self, index: int) -> PointData | None:
        """Another name of get_point."""
        return self._point(C.GetOriginalPoint, index)

    def set_point(self, index: int, point: PointData) -> None:
        """Overwrites the point; a new name is carried through its observations."""
        self._call(C.SetPoint, index, self._text.to_c(point))

    def get_point_num(self, name: str) -> int | None:
        """The index of the point of this name."""
        index = C.GetPointNum(self._context, self._text.encode(name))
        return None if index < 0 else index

    # ---- Observations ----

    @property
    def observations(self) -> Iterator[tuple[str, str, ObsData]]:
        """Station, target and what is stored between them, in the order of the names."""
        pair = layouts.brenu_pair()
        while C.brenu_next_observation(self._context, byref(pair)):
            station, target = self._text.decode(pair.station), self._text.decode(pair.target)
            yield station, target, self._text.from_c(pair.observation, ObsData)

    def get_obs_data_count(self, station: int) -> int:
        """The number of targets stored for the station, 0 when there is no such point."""
        return C.GetObsDataCount(self._context, station)

    def add_obs_data(self, station: int, target: str, observation: ObsData) -> None:
        """Adds what was observed at a station towards a target that has nothing yet."""
        self._call(C.AddObsData, *self._pair(station, target), self._text.to_c(observation))

    def add_obs_data2(
        self,
        station: int,
        target1: str,
        target2: str,
        observation1: ObsData,
        observation2: ObsData,
        reconcile: bool,
    ) -> None:
        """Adds two targets at once; see brenu.h for what `reconcile` does.  Raises when anything
        was refused, and only then; the first target stays when the second is refused."""
        self._call(
            C.AddObsData2,
            *self._pair(station, target1),
            self._text.encode(target2),
            self._text.to_c(observation1),
            self._text.to_c(observation2),
            1 if reconcile else 0,
        )

    def delete_obs_data(self, station: int, target: str) -> None:
        """Removes an observation."""
        self._call(C.DeleteObsData, *self._pair(station, target))

    def get_obs_data(self, station: int, target: str) -> ObsData | None:
        """The observation as it is stored."""
        out = layouts.ObsData()
        found = C.GetObsData(self._context, *self._pair(station, target), byref(out)) >= 0
        return self._text.from_c(out, ObsData) if found else None

    def set_obs_data(self, station: int, target: str, observation: ObsData) -> None:
        """Overwrites an observation that is there."""
        self._call(C.SetObsData, *self._pair(station, target), self._text.to_c(observation))

    # ---- Computations ----

    def get_net_type(self) -> int:
        """0 no control point, 1 levelling network, 2 plane network, 3 both."""
        return C.GetNetType(self._context)

    def approx_calc(self) -> None:
        """Approximate values of all new points."""
        self._compute(C.brenu_approximate)

    def get_approx_result(self, number: int) -> PointData | None:
        """The point with its approximate values; `number` is that in the network (brenu.h)."""
        return self._record(C.GetApproxResult, layouts.PointData, PointData, number)

    def least_square_adj(self) -> None:
        """Least-squares adjustment of heights and coordinates.  Raises when one of two networks
        fails, too; the results of the other one are there.  By the rules of textbooks also for
        formats 1 and 3; by the classic ones format 3 adjusts what trilateration has placed."""
        if self.rules == Rules.CLASSIC:
            self._call(C.LeastSquareAdj)
        else:
            self._compute(C.brenu_adjust)

    def non_direction_adj(self) -> None:
        """Traverses without orientation; for format 1."""
        self._call(C.NonDirectionAdj)

    def data_snooping(
        self, alpha: float = 0.001, test: Test = Test.W, critical: float = 0.0
    ) -> None:
        """Adjusts and takes gross errors out, of which the test values exceed the critical value of
        that level of significance, or `critical` if it is given."""
        self._compute(C.brenu_adjust, test=test, alpha=alpha, critical=critical)

    # ---- Results ----

    def get_figures(self, network: Network) -> Figures | None:
        """Figures of the last adjustment; None when it did not adjust that network."""
        return self._record(C.brenu_get_figures, layouts.brenu_figures, Figures, network)

    def report(self, title: str = "", chinese: bool = False) -> Report:
        """The report of the last adjustment, with the closures that were computed before it."""
        forms = {"json": 1, "html": 2, "svg": 3, "dxf": 4, "text": 5}

        def render(form: str) -> str:
            text = C.brenu_report(self._context, forms[form], int(chinese), title.encode())
            if text is None:
                raise MemoryError("no room for the report")
            return text.decode()

        return Report(render)

    @property
    def taken_out(self) -> list[TakenOut]:
        """What data snooping by the rules of textbooks took out, in that order, heights first."""
        record = layouts.brenu_taken_out()
        found = []
        while C.brenu_get_taken_out(self._context, len(found), byref(record)):
            alternatives = []
            other = layouts.brenu_observation()
            for number in range(record.alternatives):
                C.brenu_get_alternative(self._context, len(found), number, byref(other))
                alternatives.append(self._observation(other))
            observation = self._observation(record.observation)
            found.append(TakenOut(observation, record.testValue, record.error, alternatives))
        return found

    def get_untested_count(self, network: Network) -> int:
        """How many observations data snooping did not test, since the others hardly check them."""
        return C.brenu_untested_count(self._context, network)

    def get_control_fit(self, index: int) -> ControlFit | None:
        """How well a control point fits the observations, by the rules of textbooks."""
        return self._record(C.brenu_get_control_fit, layouts.brenu_control_fit, ControlFit, index)

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
        """Adjusted height."""
        if self.get_point(index) is None:  # the library would add an empty one
            return None
        return self._record(C.GetVerticalResult, layouts.VerticalResult, VerticalResult, index)

    def get_height_obs_result(self, station: int, target: str) -> HeightObsResult | None:
        """Of a levelled line, with the weight."""
        if self.get_point(station) is None:  # as above
            return None
        return self._observed(C.GetHeightObsResult, HeightObsResult, station, target)

    # ---- Closure errors, reports, traverses ----

    def calculate_close_error(self) -> None:
        """Closure errors of levelling lines, loops and traverses."""
        self._compute(C.brenu_compute_closures)

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
        self._call(C.ExportResultFile, _path(path))

    def export_close_error_file(self, path: Path) -> None:
        """Writes the report of the closure errors; without any, it fails and no file is made."""
        self._call(C.ExportCloseErrorFile, _path(path))

    def get_traverse_result(self, index: int) -> TraverseRow | None:
        """The row of a point in the traverses computed last; None for a point on none."""
        return self._outputs(C.GetTraverseResult, TraverseRow, index)

    # ---- Trilateration: a dialogue for the classic rules, which least_square_adj ends.  By those of
    # textbooks that places the points itself ----

    def judge_trilateration(self) -> None:
        """Puts every new point back to "not placed"; for format 3."""
        self._call(C.JudgeTrilateration)

    def initialize_data_trilateration(self) -> None:
        """Prepares the plane network for placing."""
        self._call(C.InitializeDataTrilateration)

    def trilateration_direction(self) -> None:
        """Ends the placing: sets the plane network up with the coordinates."""
        self._call(C.TrilaterationDirection)

    def get_trilateration_direction(self, name: str = "") -> TrilaterationChoice | None:
        """The next point that can be placed, or the named one, and the circles that meet in it."""
        first, second = layouts.CircleRecord(), layouts.CircleRecord()
        direction = create_string_buffer(self._text.encode(name)[:254], 255)
        found = C.GetTrilaterationDirection(self._context, byref(first), byref(second), direction)
        if found != 1:
            return None
        return TrilaterationChoice(
            self._text.from_c(first, CircleRecord),
            self._text.from_c(second, CircleRecord),
            self._text.decode(direction.value),
        )

    def calc_trilaterationp_point(
        self, right: bool, first: CircleRecord, second: CircleRecord, name: str
    ) -> int:
        """Places the point on one side of the line from first to second; how many are left."""
        remaining = c_uint32()
        self._call(
            C.CalcTrilaterationpPoint,
            1 if right else 0,
            self._text.to_c(first),
            self._text.to_c(second),
            self._text.encode(name),
            byref(remaining),
        )
        # It wraps when a point is placed twice.
        return remaining.value if remaining.value <= self.get_point_count() else 0

    # ---- Help ----

    def _call(self, function: Callable[..., Any], *arguments: object) -> Any:
        """Raises what the findings give as cause: they know better than the results of some
        functions what has failed."""
        result = function(self._context, *arguments)
        raise_cause(self._context, self._text)
        return result

    def _compute(self, function: Callable[..., Any], **test: float) -> None:
        options = layouts.brenu_options(self.rules, levelSigma=self.level_sigma, **test)
        self._call(function, byref(options))

    def _observation(self, raw: layouts.brenu_observation) -> Observation:
        station, target = self._text.decode(raw.station), self._text.decode(raw.target)
        return Observation(station, target, ObservationKind(raw.kind))

    def _pair(self, station: int, target: str) -> tuple[int, bytes]:
        return station, self._text.encode(target)

    def _point(self, getter: Callable[..., int], index: int) -> PointData | None:
        out = layouts.PointData()
        if index < 0 or getter(self._context, index, byref(out)) != index:
            return None
        point = self._text.from_c(out, PointData)
        point.index = index
        return point

    def _record(
        self, getter: Callable[..., bool], layout: type, kind: type[Result], number: int
    ) -> Result | None:
        out = layout()
        return self._text.from_c(out, kind) if getter(self._context, number, byref(out)) else None

    def _observed(
        self, getter: Any, kind: type[Result], station: int, target: str
    ) -> Result | None:
        return self._outputs(getter, kind, *self._pair(station, target))

    def _outputs(self, getter: Any, kind: type[Result], *arguments: object) -> Result | None:
        # Every output of the getter behind these arguments, of the type it points to.
        values = [pointer._type_() for pointer in getter.argtypes[1 + len(arguments) :]]
        found = getter(self._context, *arguments, *map(byref, values))
        return kind(*[v.value for v in values]) if found else None
