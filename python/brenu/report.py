"""The report of an adjustment as dataclasses.

Lengths, coordinates and their errors are metres, angles decimal degrees, residuals and errors of angles
arc-seconds; None stands for what there is not.  docs/json.md describes every value."""

from __future__ import annotations

import dataclasses
import json
from dataclasses import dataclass, field
from typing import Any, Callable, TypeVar


@dataclass
class ReportFinding:
    code: str
    severity: str
    line: int | None
    names: list[str]
    values: list[float]
    text: str


@dataclass
class Verdict:
    passed: bool
    reasons: list[ReportFinding]
    remarks: list[ReportFinding]
    next: str


@dataclass
class ReportTest:
    statistic: float
    lower: float
    upper: float
    passed: bool


@dataclass
class PlanePoint:
    name: str
    control: bool
    x: float
    y: float
    mx: float | None
    my: float | None
    mp: float | None
    e: float | None
    f: float | None
    t: float | None
    e95: float | None
    f95: float | None


@dataclass
class HeightPoint:
    name: str
    control: bool
    h: float
    mh: float | None
    h95: float | None


@dataclass
class ReportObservation:
    kind: str
    #: The names `from` and `to` of the JSON.
    station: str
    target: str
    observed: float
    sigma: float
    residual: float
    adjusted: float
    sigma_adjusted: float
    redundancy: float | None
    w: float | None
    tau: float | None
    error: float | None
    mde: float | None
    effect: float | None
    checked: str
    exceeds: bool
    removed: bool


@dataclass
class ReportNetwork:
    """Heights or plane; tables without a class of their own are lists of dicts."""

    m0: float | None
    m0_apriori: float
    redundancy: int
    chi2_test: ReportTest | None
    points: list[Any]
    observations: list[ReportObservation]
    #: Everything else by its key: groups, control, taken_out, relative_ellipses, critical_w...
    more: dict[str, Any] = field(default_factory=dict)


T = TypeVar("T")


def _row(cls: type[T], row: dict[str, Any]) -> T:
    names = {f.name for f in dataclasses.fields(cls)}  # type: ignore[arg-type]
    renamed = {"from": "station", "to": "target"}
    values = {renamed.get(key, key): value for key, value in row.items()}
    return cls(**{key: value for key, value in values.items() if key in names})


def _rows(cls: type[T], rows: list[dict[str, Any]]) -> list[T]:
    return [_row(cls, row) for row in rows]


def _network(data: dict[str, Any] | None, point: type) -> ReportNetwork | None:
    if data is None:
        return None
    taken = {"m0", "m0_apriori", "redundancy", "chi2_test", "points", "observations"}
    test = data["chi2_test"]
    return ReportNetwork(
        data["m0"],
        data["m0_apriori"],
        data["redundancy"],
        _row(ReportTest, test) if test else None,
        _rows(point, data["points"]),
        _rows(ReportObservation, data["observations"]),
        {key: value for key, value in data.items() if key not in taken},
    )


class Report:
    """What the last adjustment found: made by Job.report()."""

    def __init__(self, render: Callable[[str], str]):
        self._render = render
        self._json = render("json")
        data = json.loads(self._json)
        self._data = data
        self.rules: str = data["rules"]
        verdict = data["verdict"]
        self.verdict = Verdict(
            verdict["passed"],
            _rows(ReportFinding, verdict["reasons"]),
            _rows(ReportFinding, verdict["remarks"]),
            verdict["next"],
        )
        self.findings = _rows(ReportFinding, data["findings"])
        self.heights = _network(data.get("heights"), HeightPoint)
        self.plane = _network(data.get("plane"), PlanePoint)
        self.closures: list[dict[str, Any]] = data["closures"]

    def to_json(self) -> str:
        return self._json

    def to_html(self) -> str:
        """A page that needs nothing else.  Like the next ones of the job as it is now."""
        return self._render("html")

    def to_svg(self) -> str:
        return self._render("svg")

    def to_dxf(self) -> str:
        return self._render("dxf")

    def to_text(self) -> str:
        return self._render("text")

    def to_rows(self, network: str, table: str) -> list[dict[str, Any]]:
        """A table as a list of dicts, as pandas.DataFrame takes it: network "heights" or "plane",
        table "points", "observations", "groups"...; empty for what there is not."""
        rows = (self._data.get(network) or {}).get(table)
        return rows if isinstance(rows, list) else []
