"""Reductions of single observations: closed formulas, nothing is checked.

Metres and radians unless said otherwise.  brenu.h has the formulas and their sources."""

from __future__ import annotations

from ctypes import byref, c_double

from .library import C


def _one(function, *arguments: float, start: float = float("nan")) -> float:
    out = c_double(start)
    function(*arguments, byref(out))
    return out.value


def centre_correct(
    station_eccentricity: float,
    station_angle: float,
    target_eccentricity: float,
    target_angle: float,
    distance: float,
    direction: float,
) -> tuple[float, float]:
    """Distance and direction reduced from instrument and signal to their marks."""
    s, r = c_double(distance), c_double(direction)
    C.CentreCorrect(
        station_eccentricity,
        station_angle,
        target_eccentricity,
        target_angle,
        byref(s),
        byref(r),
    )
    return s.value, r.value


def dov_correct(xi: float, eta: float, azimuth: float, elevation: float) -> float:
    """Correction of a direction for the deflection of the vertical, in the unit of xi and eta."""
    return C.DovCorrect(xi, eta, azimuth, elevation)


def height_mark_correct(
    semi_major: float, semi_minor: float, target_height: float, latitude: float, azimuth: float
) -> float:
    """Correction of a direction for the height of the target, arc-seconds."""
    return C.HeightMarkCorrect(semi_major, semi_minor, target_height, latitude, azimuth)


def section_correct(
    semi_major: float, semi_minor: float, distance: float, latitude: float, azimuth: float
) -> float:
    """Correction of a direction from the normal section to the geodesic, arc-seconds."""
    return C.SectionCorrect(semi_major, semi_minor, distance, latitude, azimuth)


def distance_reduction(
    station_height: float,
    instrument_height: float,
    target_point_height: float,
    target_height: float,
    slope_distance: float,
    latitude: float,
    azimuth: float,
) -> float:
    """Slope distance reduced to the ellipsoid, metres."""
    return C.DistanceReduction(
        station_height,
        instrument_height,
        target_point_height,
        target_height,
        slope_distance,
        latitude,
        azimuth,
    )


def astronomical_azimuth_reduction(
    astronomical_azimuth: float,
    astronomical_longitude: float,
    latitude: float,
    geodetic_longitude: float,
) -> float:
    """Geodetic azimuth from an astronomical one, radians."""
    return C.AstronomicalAzimuthReduction(
        astronomical_azimuth, astronomical_longitude, latitude, geodetic_longitude
    )


def direction_correct(x1: float, y1: float, x2: float, y2: float, radius: float) -> float:
    """T - t, arc-seconds: to be subtracted from the direction at point 1."""
    return C.DirectionCorrect(x1, y1, x2, y2, radius)


def distance_correct(y1: float, y2: float, distance: float, radius: float) -> float:
    """Correction of a distance on the ellipsoid to the grid, metres."""
    return C.DistanceCorrect(y1, y2, distance, radius)


def plane_azimuth_correct(
    azimuth: float,
    latitude: float,
    x1: float,
    y1: float,
    x2: float,
    y2: float,
    semi_major: float,
    semi_minor: float,
    radius: float,
) -> float:
    """Grid azimuth of a line from its geodetic azimuth, radians."""
    return C.PlaneAzimuthCorrect(
        azimuth, latitude, x1, y1, x2, y2, semi_major, semi_minor, radius
    )


def meteorological_correct(
    pressure1: float,
    dry1: float,
    wet1: float,
    unused1: float,
    wavelength: float,
    pressure2: float,
    dry2: float,
    wet2: float,
    unused2: float,
    distance: float,
) -> float:
    """(Q2 - Q1) times the distance; hPa, Celsius, micrometres.  See the warning in brenu.h."""
    return _one(
        C.MeteorologicalCorrect,
        pressure1,
        dry1,
        wet1,
        unused1,
        wavelength,
        pressure2,
        dry2,
        wet2,
        unused2,
        distance,
    )


def meteorological_correct2(
    pressure1: float,
    temperature1: float,
    humidity1: float,
    wavelength: float,
    pressure2: float,
    temperature2: float,
    humidity2: float,
    distance: float,
) -> float:
    """First velocity correction, metres; hPa, Celsius, g/m^3, micrometres."""
    return _one(
        C.MeteorologicalCorrect2,
        pressure1,
        temperature1,
        humidity1,
        wavelength,
        pressure2,
        temperature2,
        humidity2,
        distance,
    )


def const_add_multiply_correct(constant: float, scale: float, distance: float) -> float:
    """The distance plus additive constant (mm) and scale correction (mm/km), metres."""
    return _one(C.ConstAddMultiplyCorrect, constant, scale, distance)


def projection_correct(
    height: float,
    undulation: float,
    radius: float,
    line_height: float,
    mode: float,
    distance: float,
    projected: float = float("nan"),
) -> float:
    """Horizontal distance moved to another height, metres; `projected` for an unknown mode."""
    return _one(
        C.ProjectionCorrect,
        height,
        undulation,
        radius,
        line_height,
        mode,
        distance,
        start=projected,
    )


def gauss_correct(
    height: float,
    undulation: float,
    radius: float,
    line_height: float,
    mode: float,
    distance: float,
    y1: float,
    y2: float,
    mean_radius: float,
    projected: float = float("nan"),
) -> tuple[float, float]:
    """As projection_correct, and that distance on the grid."""
    at_height, on_grid = c_double(projected), c_double()
    C.GaussCorrect(
        height,
        undulation,
        radius,
        line_height,
        mode,
        distance,
        y1,
        y2,
        mean_radius,
        byref(at_height),
        byref(on_grid),
    )
    return at_height.value, on_grid.value


def get_rm(
    latitude: float, equator_radius: float, polar_radius: float, second_eccentricity: float
) -> float:
    """Mean radius of curvature, metres.  See the warning in brenu.h."""
    return C.GetRm(latitude, equator_radius, polar_radius, second_eccentricity)


def get_rn(
    latitude: float,
    equator_radius: float,
    polar_radius: float,
    second_eccentricity: float,
    azimuth: float,
) -> float:
    """Radius of curvature of the normal section of this azimuth, metres."""
    return C.GetRn(latitude, equator_radius, polar_radius, second_eccentricity, azimuth)
