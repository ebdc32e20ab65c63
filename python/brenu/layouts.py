"""The records of the C headers as they lie in memory, with the names they have there."""

from ctypes import Structure, c_bool, c_char, c_char_p, c_double, c_int32


class AdjParam(Structure):
    _fields_ = [
        *[(name, c_double) for name in ("MO", "MS", "MR")],
        *[
            (name, c_int32)
            for name in ("Lvl1", "Lvl1Limit", "Lvl2", "Lvl2Limit", "Limit", "format")
        ],
    ]


class PointData(Structure):
    _fields_ = [
        ("name", c_char * 128),
        ("type", c_int32),
        ("reserved", c_int32),
        ("x", c_double),
        ("y", c_double),
        ("h", c_double),
    ]


class ObsData(Structure):
    _fields_ = [(name, c_double) for name in ("distance", "direction", "heightDiff", "azimuth")]


class CloseError(Structure):
    _fields_ = [
        ("route", c_char * 256),
        ("heightMisclosure", c_double),
        ("heightLimit", c_double),
        ("angleMisclosure", c_double),
        ("angleLimit", c_double),
        ("lengthMisclosure", c_double),
        ("routeLength", c_double),
        ("relativePrecision", c_int32),
        ("reserved1", c_int32),
        ("lengthLimit", c_double),
        ("angleWithinLimit", c_bool),
        ("heightWithinLimit", c_bool),
        ("mark", c_bool),
        ("reserved2", c_char * 21),
    ]


class PlaneResult(Structure):
    _fields_ = [(name, c_double) for name in ("x", "y", "mx", "my", "mp", "e", "f", "t")]


class VerticalResult(Structure):
    _fields_ = [(name, c_double) for name in ("correction", "height", "sigma")]


class CircleRecord(Structure):
    _fields_ = [("name", c_char_p), ("x", c_double), ("y", c_double), ("radius", c_double)]


class brenu_finding(Structure):
    _fields_ = [
        (name, c_int32)
        for name in ("code", "severity", "line", "nameCount", "valueCount", "reserved")
    ]


class brenu_import_options(Structure):
    _fields_ = [
        *[(name, c_int32) for name in ("steps", "reserved")],
        *[
            (name, c_double)
            for name in ("refraction", "constant", "scale", "height", "projectionScale")
        ],
    ]


class brenu_figures(Structure):
    _fields_ = [
        *[(name, c_int32) for name in ("controlPoints", "newPoints", "redundancy", "leftOut")],
        ("m0", c_double),
    ]


class brenu_options(Structure):
    _fields_ = [
        *[(name, c_int32) for name in ("rules", "test")],
        *[(name, c_double) for name in ("alpha", "critical", "levelSigma")],
    ]


class brenu_observation(Structure):
    _fields_ = [
        *[(name, c_char * 128) for name in ("station", "target")],
        *[(name, c_int32) for name in ("kind", "reserved")],
    ]


class brenu_taken_out(Structure):
    _fields_ = [
        ("observation", brenu_observation),
        *[(name, c_int32) for name in ("alternatives", "reserved")],
        *[(name, c_double) for name in ("testValue", "error")],
    ]


class brenu_control_fit(Structure):
    _fields_ = [(name, c_double) for name in ("x", "y", "h", "wx", "wy", "wh")]


class brenu_pair(Structure):
    _fields_ = [("station", c_char * 128), ("target", c_char * 128), ("observation", ObsData)]
