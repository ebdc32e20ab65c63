/* Brenu: adjustment of survey control networks.  This header is the whole contract of the library.
 *
 * Conventions
 * - A host creates a context with StartAdjustment, hands it to every network function and frees it
 *   with EndAdjustment.  Contexts are independent; one context is used by one thread at a time.
 * - Points are addressed by an index >= 0 that the host chooses, observations by the index of the
 *   station and the name of the target.  Names are byte strings of at most 127 bytes, compared
 *   case-sensitively; the library copies them and keeps no pointer of the host's.
 * - Lengths, heights and coordinates are metres, X is north, Y is east.  Angles in records and
 *   results are packed sexagesimal degrees: 30.15205 is 30 degrees 15' 20.5" ("dd.mmss").
 * - Absent values: -1.0 for a direction or azimuth, 0.0 for a distance, a height difference or a
 *   coordinate.  A measured height difference of exactly 0.0 therefore cannot be used.
 * - Failure: functions returning an index give -1, those returning bool false, those returning a
 *   count or a 1/0 status 0.  A null context, name, path or output is such a failure.  No function
 *   throws, prints or ends the process.  Outputs are written only on success.
 * - Results stay readable until the next computation on the context. */
#ifndef BRENU_BRENU_H_
#define BRENU_BRENU_H_

#include <stdbool.h>
#include <stdint.h>

#if defined(BRENU_STATIC)
#define BRENU_API
#elif defined(_WIN32) && defined(BRENU_BUILD)
#define BRENU_API __declspec(dllexport)
#elif defined(_WIN32)
#define BRENU_API __declspec(dllimport)
#else
#define BRENU_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Records: their layout is fixed, they are passed and returned byte for byte ---- */

typedef struct AdjustmentContext AdjustmentContext; /* one job; opaque */

typedef struct AdjParam { /* 48 bytes: the parameters */
  double MO;              /* a-priori standard error of a direction or azimuth, arc-seconds; 2.5 */
  double MS;         /* constant part of that of a distance, in the unit of the distances; 5.0 */
  double MR;         /* part of it proportional to the length; 5 mm + 5 ppm is MS 0.005, MR 5e-6 */
  int32_t Lvl1;      /* levelling grade; 4 */
  int32_t Lvl1Limit; /* limit of a levelling misclosure, mm per square root of kilometres; 20 */
  int32_t Lvl2;      /* traverse grade; 4 */
  int32_t Lvl2Limit; /* limit of an angular misclosure, " per square root of the angles; 5 */
  int32_t Limit;     /* tolerance factor of the traverse check, times MO; 3 */
  int32_t format;    /* 0 ordinary, 1 traverse without orientation, 3 distances only; 0 */
} AdjParam;

typedef struct PointData { /* 160 bytes: a point */
  char name[128];          /* NUL-terminated; the point's identity */
  int32_t type;            /* tens digit 1: plane coordinates known; units digit 1: height known */
  int32_t reserved;        /* not used */
  double x, y, h;          /* metres; 0.0 is "not given" */
} PointData;

typedef struct ObsData { /* 32 bytes: what was observed at one station towards one target */
  double distance;   /* horizontal distance, or length of the levelling line, metres; 0.0 absent */
  double direction;  /* direction reading, dd.mmss; -1.0 absent */
  double heightDiff; /* target minus station, metres; 0.0 absent; needs a distance beside it */
  double azimuth;    /* observed grid azimuth, dd.mmss; -1.0 absent */
} ObsData;

typedef struct CloseError {  /* 344 bytes: the closure error of a line, a loop or a traverse */
  char route[256];           /* the point names joined by " - ", cut to the field */
  double heightMisclosure;   /* mm; levelling only, like the next */
  double heightLimit;        /* mm */
  double angleMisclosure;    /* arc-seconds; traverses only, like the next two */
  double angleLimit;         /* arc-seconds */
  double lengthMisclosure;   /* metres */
  double routeLength;        /* sum of the lines or sides, metres */
  int32_t relativePrecision; /* N of 1:N; traverses only */
  int32_t reserved1;         /* not used */
  double lengthLimit;        /* metres; traverses only */
  bool angleWithinLimit;     /* true for levelling records */
  bool heightWithinLimit;    /* traverses: both misclosures within the tolerance */
  bool mark;                 /* the record passes */
  char reserved2[21];        /* not used */
} CloseError;

typedef struct PlaneResult { /* 64 bytes: a point of the plane network, adjusted */
  double x, y;               /* adjusted coordinates, metres */
  double mx, my, mp;         /* their standard errors and that of the position, metres */
  double e, f;               /* semi-axes of the error ellipse, metres; 0 for control points */
  double t;                  /* azimuth of the major semi-axis, dd.mmss */
} PlaneResult;

typedef struct VerticalResult { /* 24 bytes: a point of the levelling network, adjusted */
  double correction;            /* to the approximate height, metres */
  double height;                /* adjusted height, metres */
  double sigma;                 /* its standard error, metres */
} VerticalResult;

typedef struct CircleRecord { /* 32 bytes: what is measured from one placed point */
  const char* name;           /* the centre */
  double x, y, radius;        /* metres */
} CircleRecord;

/* ---- Life of a context, parameters ---- */

/* A new context with the default parameters named at AdjParam; null when memory is exhausted. */
BRENU_API AdjustmentContext* StartAdjustment(void);
/* Frees the context and everything in it. */
BRENU_API void EndAdjustment(AdjustmentContext* context);
/* Copies the record as it stands: nothing is checked, no grade table applied. */
BRENU_API void SetAdjParam(AdjustmentContext* context, AdjParam param);
/* All fields zero for a null context. */
BRENU_API AdjParam GetAdjParam(AdjustmentContext* context);

/* ---- Files ---- */

/* Reads a project file into the context, which should be fresh: points get the indices 0, 1, 2...
 * False when the file cannot be read or at the first line that does not fit; what was read before
 * that line stays in the context. */
BRENU_API bool OpenBrenuAdjustFile(AdjustmentContext* context, const char* path);
/* Writes parameters, points and observations, coordinates with 6 decimals.  1 once the file could
 * be opened, 0 otherwise.  An old file is replaced when the new contents are complete on the disk:
 * whatever fails, it holds all of the old or all of the new. */
BRENU_API int32_t SaveBrenuAdjustFile(AdjustmentContext* context, const char* path);
/* Reads a station and observation file like OpenBrenuAdjustFile; a project file is refused.  Every
 * observation of this format carries a direction (0 where the field is empty) and no azimuth. */
BRENU_API bool LoadKorvelAdjustFile(AdjustmentContext* context, const char* path);

/* ---- Points ---- */

/* The number of points, 0 for a null context. */
BRENU_API uint32_t GetPointCount(AdjustmentContext* context);
/* Adds a point.  Returns index; -1 when it is negative or taken, or the name is taken. */
BRENU_API int32_t AddPoint(AdjustmentContext* context, int32_t index, PointData point);
/* Removes the point and every observation from and to it; the points of higher index each move down
 * to the next lower index in use.  Returns index, -1 when there is no such point. */
BRENU_API int32_t DeletePoint(AdjustmentContext* context, int32_t index);
/* The point as it is stored.  Returns index, -1 when there is no such point. */
BRENU_API int32_t GetPoint(AdjustmentContext* context, int32_t index, PointData* out);
/* Another name of GetPoint. */
BRENU_API int32_t GetOriginalPoint(AdjustmentContext* context, int32_t index, PointData* out);
/* Overwrites the point; a new name is carried through all observations.  Returns index; -1 when
 * there is no such point, or when the new name already has observations as a station: then the
 * record is overwritten all the same, and the observations keep the old name. */
BRENU_API int32_t SetPoint(AdjustmentContext* context, int32_t index, PointData point);
/* The lowest index of a point of this name, -1 when there is none. */
BRENU_API int32_t GetPointNum(AdjustmentContext* context, const char* name);

/* ---- Observations ---- */

/* The number of targets stored for the station, 0 when there is no such point. */
BRENU_API int32_t GetObsDataCount(AdjustmentContext* context, int32_t station);
/* Adds an observation.  Returns station; -1 when station or target is no point, both are the same
 * or the pair is stored. */
BRENU_API int32_t AddObsData(AdjustmentContext* context, int32_t station, const char* target,
                             ObsData observation);
/* Adds two targets at once and registers them as a pair; 1 or -1.  With reconcile set and one of
 * the targets stored already, the other one is added, its reading turned by stored minus new
 * reading of the former.  Take care: the result is then -1 when there is no stored direction to
 * turn by (nothing is added) and for the station of index 0 (the target is added), and 1 also when
 * the other target is refused. */
BRENU_API int32_t AddObsData2(AdjustmentContext* context, int32_t station, const char* target1,
                              const char* target2, ObsData observation1, ObsData observation2,
                              uint8_t reconcile);
/* Removes the observation.  Returns station, -1 when the pair is not stored. */
BRENU_API int32_t DeleteObsData(AdjustmentContext* context, int32_t station, const char* target);
/* The observation as it is stored.  Returns station, -1 when the pair is not stored. */
BRENU_API int32_t GetObsData(AdjustmentContext* context, int32_t station, const char* target,
                             ObsData* out);
/* Overwrites the observation.  Returns station, -1 when the pair is not stored. */
BRENU_API int32_t SetObsData(AdjustmentContext* context, int32_t station, const char* target,
                             ObsData observation);

/* ---- Computations: each begins by rebuilding the networks from points and observations, but
 * GetNetType only classifies and GetApproxResult only reads ---- */

/* 0 no control point, 1 levelling network, 2 plane network, 3 both. */
BRENU_API int32_t GetNetType(AdjustmentContext* context);
/* Approximate heights and coordinates of all new points.  False without control, or when a point
 * cannot be reached. */
BRENU_API bool ApproxCalc(AdjustmentContext* context);
/* The point with its approximate values.  Take care: for network types 2 and 3 `number` is the
 * number in the plane network, which counts the plane control points first (each in the order of
 * the indices); for type 3 the height put into the record is that of the point stored under the
 * index of the same value; for type 1 `number` is the point's index. */
BRENU_API bool GetApproxResult(AdjustmentContext* context, int32_t number, PointData* out);
/* Least-squares adjustment of heights (weights 1 km / L) and of coordinates (Gauss-Newton passes
 * until the largest correction is at most 0.01 m, 99 at most).  With format 3 the plane network is
 * adjusted as it stands, from distances only: a computation that places all points comes first.
 * False without control, when a point cannot be reached, or for a singular network.  The standard
 * error of unit weight of the heights divides by the number of new heights, that of the coordinates
 * by the redundancy, which is not checked. */
BRENU_API bool LeastSquareAdj(AdjustmentContext* context);
/* Connecting traverses from angles and sides alone, without back sights: each is turned onto the
 * azimuth between its two control points.  Coordinates have no standard errors (0).  False unless
 * format is 1, without such a traverse, or when it leaves a point with measured sides out. */
BRENU_API bool NonDirectionAdj(AdjustmentContext* context);
/* Adjusts, takes out the observation with the largest standardised residual above the two-sided
 * critical value and repeats until none is left above it.  levelAlpha and planeAlpha are levels of
 * significance between 0 and 1, such as 0.001; one whose network is not there is not used.  1; 0
 * unless kind equals the network type, and when the network cannot be adjusted. */
BRENU_API int32_t DataSnooping(AdjustmentContext* context, uint32_t kind, double levelAlpha,
                               double planeAlpha);

/* ---- Results: station and index are those of the store; false when there is no such result ----
 */

/* Adjusted coordinates with their standard errors and the error ellipse; false when the point has
 * none. */
BRENU_API bool GetPlaneResult(AdjustmentContext* context, int32_t index, PlaneResult* out);
/* Residual in arc-seconds, adjusted direction in dd.mmss, a-priori standard error MO in
 * arc-seconds; false when no direction was adjusted there. */
BRENU_API bool GetDirAngleResult(AdjustmentContext* context, int32_t station, const char* target,
                                 double* residual, double* adjusted, double* apriori);
/* Residual, adjusted length and a-priori standard error MS + MR * length, metres; false when no
 * distance was adjusted there. */
BRENU_API bool GetLengthResult(AdjustmentContext* context, int32_t station, const char* target,
                               double* residual, double* adjusted, double* apriori);
/* As GetDirAngleResult, for an observed azimuth. */
BRENU_API bool GetAzimuthResult(AdjustmentContext* context, int32_t station, const char* target,
                                double* residual, double* adjusted, double* apriori);
/* Azimuth (dd.mmss) and length (metres) from adjusted coordinates, their standard errors
 * (arc-seconds, metres) and N of the relative precision 1:N.  False for two plane control points.
 */
BRENU_API bool GetAzAndLenPrecision(AdjustmentContext* context, int32_t station, const char* target,
                                    double* azimuth, double* azimuthError, double* length,
                                    double* lengthError, int32_t* relativePrecision);
/* Adjusted height with its standard error; false when the point has none.  Asking for an index
 * without a point adds an empty point under it when the network has heights. */
BRENU_API bool GetVerticalResult(AdjustmentContext* context, int32_t index, VerticalResult* out);
/* Residual, adjusted difference and its standard error in metres, weight 1000 / length; false when
 * no height difference was adjusted there.  An unknown station is added as an empty point, as in
 * GetVerticalResult. */
BRENU_API bool GetHeightObsResult(AdjustmentContext* context, int32_t station, const char* target,
                                  double* residual, double* adjusted, double* sigma,
                                  double* weight);

/* ---- Closure errors and reports ---- */

/* Levelling lines between bench marks, levelling loops and traverses, from freshly computed
 * approximate values; false when those cannot be computed, or when a network of type 3 has none
 * of these closures. */
BRENU_API bool CalculateCloseError(AdjustmentContext* context);
/* The number of closure records, 0 before they are computed. */
BRENU_API int32_t GetCloseErrorCount(AdjustmentContext* context);
/* The record of this index, counted from 0; false when there is none. */
BRENU_API bool GetCloseError(AdjustmentContext* context, int32_t index, CloseError* out);
/* 1 when every record passes (also when there is none), otherwise 0. */
BRENU_API int32_t GetCloseErrorMark(AdjustmentContext* context);
/* Writes the report of all results as text, labels in code page 936.  False when the file cannot be
 * opened; when not all could be written, which leaves an old file as it was; and when the result
 * of a row cannot be had: then the report ends before that row. */
BRENU_API bool ExportResultFile(AdjustmentContext* context, const char* path);
/* Writes the report of the closure records as text, labels in code page 936.  False when there are
 * none (no file is made then), or when the file cannot be opened. */
BRENU_API bool ExportCloseErrorFile(AdjustmentContext* context, const char* path);

/* ---- Trilateration: new points of a distance-only network, placed one by one ---- */

/* Builds the networks and puts every new point back to (0, 0), "not placed"; false unless format
 * is 3. */
BRENU_API bool JudgeTrilateration(AdjustmentContext* context);
/* Prepares the plane network; false for network types other than 2 and 3. */
BRENU_API bool InitializeDataTrilateration(AdjustmentContext* context);
/* When all points are placed, sets the plane network up with their coordinates and derives the
 * directions of the measured lines; false otherwise. */
BRENU_API bool TrilaterationDirection(AdjustmentContext* context);
/* The next point that can be placed (or the one named in `direction` on entry) and the two circles
 * that meet in it; the names in them are valid until the next call on the context.  `direction`
 * holds 255 bytes, empty on entry for the library's choice, and receives a text such as
 * "P3: A -> B, left or right" (point, first and second centre), cut to 254 bytes.  1 or 0. */
BRENU_API int32_t GetTrilaterationDirection(AdjustmentContext* context, CircleRecord* first,
                                            CircleRecord* second, char direction[255]);
/* Places the point on the left (side 0) or on the right (side not 0) of the line from the first to
 * the second centre, in the sense of the axes X north and Y east, and gives the number of points
 * left to place: one less, or the same when the circles do not meet on that side or a centre is no
 * point.  Take care: true also without a plane network, where `remaining` stays as it is, and an
 * unknown name, or that of a point placed before, is counted as one more placed. */
BRENU_API bool CalcTrilaterationpPoint(AdjustmentContext* context, uint8_t side, CircleRecord first,
                                       CircleRecord second, const char* name, uint32_t* remaining);

/* ---- Traverses ---- */

/* The row of a point in the traverse table of the last CalculateCloseError or NonDirectionAdj; of
 * several traverses through the point, the first.  1, or 0 for a point on none.  Absent are the
 * angle of an end without back sight (-1), the azimuth of a last point without fore sight (-1), its
 * side and increments (0), and all angular corrections of a connecting traverse not oriented at
 * both ends. */
BRENU_API int32_t
GetTraverseResult(AdjustmentContext* context, int32_t index,
                  double* angle, /* observed, from back sight to fore sight, clockwise, dd.mmss */
                  double* angleCorrection, /* arc-seconds */
                  double* azimuth,         /* adjusted azimuth to the next point, dd.mmss */
                  double* length,          /* side to the next point, metres */
                  double* dx, double* dy,  /* its coordinate increments as computed, metres */
                  double* dxCorrection, double* dyCorrection, /* metres */
                  double* x, double* y, /* the point after distribution of the misclosure, metres */
                  double* angleMisclosure,  /* of the whole traverse, arc-seconds */
                  double* lengthMisclosure, /* of the whole traverse, metres */
                  int32_t* relativePrecision /* N of 1:N */);

/* ---- Reductions of single observations: closed formulas, no context, nothing is checked ----
 *
 * Metres and radians unless said otherwise; corrections are to be added.  Azimuths run clockwise
 * from north, a and b are the semi-axes of the ellipsoid, e and e' its first and second
 * eccentricity, M and N its radii of curvature in the meridian and in the prime vertical.  Grid
 * coordinates are those of the Gauss projection with y from the central meridian (no false easting)
 * and scale 1 there; ym is the mean of y1 and y2.  Input outside the domain of a formula gives NaN
 * or infinity; a null output makes the call do nothing.  docs/reductions.md has worked examples.
 * Sources: Torge, "Geodesy"; Jordan, Eggert, Kneissl, "Handbuch der Vermessungskunde"; Grossmann,
 * "Geodaetische Rechnungen und Abbildungen in der Landesvermessung"; Rueeger, "Electronic Distance
 * Measurement".  Where a formula departs from its source, the comment says so. */

/* Centring (Jordan): reduces the distance S and the direction r from instrument and signal to their
 * marks.  An eccentricity is the length from mark to instrument (signal); its angle plus r is the
 * clockwise angle there from the mark to the other end of the line.
 * S' = S - (e1 cos t1 + e2 cos t2) + (e1 sin t1 + e2 sin t2) / (2 S)
 * r' = r + e1 sin(r + t1) / S' + e2 sin(r + t2) / S'
 * Take care: S' uses t1 and t2 without r, so the two agree for r = 0 only, and in its last term the
 * bracket is not squared as in the source (an error of the order of e / (2 S)). */
BRENU_API void CentreCorrect(double stationEccentricity, double stationAngle,
                             double targetEccentricity, double targetAngle, double* distance,
                             double* direction);
/* Correction of a direction for the deflection of the vertical (Torge), in the unit of xi (north)
 * and eta (east): (eta cos A - xi sin A) tan(elevation). */
BRENU_API double DovCorrect(double xi, double eta, double azimuth, double elevation);
/* Correction of a direction for the height of the target above the ellipsoid (Torge), arc-seconds:
 * rho e^2 H cos^2 B sin 2A / (2 M), with the latitude of the target. */
BRENU_API double HeightMarkCorrect(double semiMajor, double semiMinor, double targetHeight,
                                   double latitude, double azimuth);
/* Correction of a direction from the normal section to the geodesic, arc-seconds:
 * -rho e'^2 (S / 1000)^2 cos^2 B sin 2A / (12 N).  Take care: the source (Torge) divides S^2, not
 * (S / 1000)^2, by N^2; with all lengths in metres this is N / 10^6, about 6.4 times, as much. */
BRENU_API double SectionCorrect(double semiMajor, double semiMinor, double distance,
                                double latitude, double azimuth);
/* Slope distance S to the ellipsoid, metres.  The heights are those of the points, and of the
 * instrument and the target above them; dH is the difference with both, Hm the mean with both, R
 * 6371 km:  sqrt(S^2 - dH^2) R / (R + (stationHeight + targetPointHeight) / 2) + S^3 / (24 R^2)
 * + 1.25e-15 Hm S^2 sin 2B cos A.  The first two terms as in Rueeger; the last, below a millimetre
 * for 10 km and Hm = 2000 m, has no source named here. */
BRENU_API double DistanceReduction(double stationHeight, double instrumentHeight,
                                   double targetPointHeight, double targetHeight,
                                   double slopeDistance, double latitude, double azimuth);
/* Geodetic azimuth from an astronomical one, Laplace's equation (Torge), longitudes positive east:
 * astronomicalAzimuth - (astronomicalLongitude - geodeticLongitude) sin B. */
BRENU_API double AstronomicalAzimuthReduction(double astronomicalAzimuth,
                                              double astronomicalLongitude, double latitude,
                                              double geodeticLongitude);
/* Arc-to-chord (t-T) reduction of a direction from point 1 to point 2 (Grossmann), arc-seconds:
 * rho ym (x2 - x1) / (2 R^2).  Take care: this is T - t, direction of the projected geodesic minus
 * that of the chord, so it is to be subtracted from the direction at point 1. */
BRENU_API double DirectionCorrect(double x1, double y1, double x2, double y2, double radius);
/* Correction of a distance on the ellipsoid to the grid (Grossmann), metres; R is the mean radius
 * of curvature: S (ym^2 / (2 R^2) + (y1 - y2)^2 / (24 R^2) + ym^4 / (24 R^4)). */
BRENU_API double DistanceCorrect(double y1, double y2, double distance, double radius);
/* Grid azimuth of the line from point 1 to point 2 from its geodetic azimuth at point 1
 * (Grossmann): A - gamma + delta.  The latitude is that of the foot point, with the meridian arc
 * x1; t = tan B, h = e' cos B, R the mean radius of curvature:
 * gamma = t / N (y1 - y1^3 (1 + t^2 - h^2 - 2 h^4) / (3 N^2) + y1^5 (2 + 5 t^2 + 3 t^4) / (15 N^4))
 * delta = -(x2 - x1) (2 y1 + y2 - ym^3 / R^2) / (6 R^2) - h^2 t (y2 - y1) ym^2 / R^3 */
BRENU_API double PlaneAzimuthCorrect(double azimuth, double latitude, double x1, double y1,
                                     double x2, double y2, double semiMajor, double semiMinor,
                                     double radius);
/* (Q2 - Q1) times the distance, from pressure (hPa), dry and wet temperature (Celsius) at both ends
 * and the wavelength (micrometres).  Take care: Q has the form of an index of refraction (see
 * MeteorologicalCorrect2), but is formed with G = (2876.04 + 48.8664 / l^2 + 0.68 / l^4) 1e10 - 7
 * where the index has 1e-7, so that the result is no correction in metres and the vapour pressure
 * is lost in its rounding at ordinary pressures.  The vapour pressure (hPa) is that of the
 * psychrometer for dry temperatures between -10 and 50, a polynomial in the dry temperature and the
 * pressure when dry1 (for both ends) is between -15 and 10, and otherwise the number of the
 * wavelength. */
BRENU_API void MeteorologicalCorrect(double pressure1, double dry1, double wet1, double unused1,
                                     double wavelength, double pressure2, double dry2, double wet2,
                                     double unused2, double distance, double* correction);
/* (n2 - n1) times the distance, metres: the first velocity correction (Rueeger) when 1 is the air
 * along the line and 2 the reference air of the instrument.  Pressure in hPa, temperature in
 * Celsius, absolute humidity a (density of the vapour) in g/m^3, wavelength l in micrometres.
 * n = 1 + G p / (760 k) - 5.5e-8 e / k, with p and e = (t + 273.15) a / 289 in torr,
 * k = 1 + t / 273.16 and G = (2876.04 + 48.8664 / l^2 + 0.68 / l^4) 1e-7 (Barrell and Sears). */
BRENU_API void MeteorologicalCorrect2(double pressure1, double temperature1, double humidity1,
                                      double wavelength, double pressure2, double temperature2,
                                      double humidity2, double distance, double* correction);
/* The distance plus additive constant (mm) and scale correction (mm/km), metres (Rueeger). */
BRENU_API void ConstAddMultiplyCorrect(double constant, double scale, double distance,
                                       double* corrected);
/* Horizontal distance S moved to another height, metres (Rueeger).  R is the radius of curvature
 * along the line.  Mode 0, to the ellipsoid: S (1 - h / R + h^2 / R^2), with h the height of the
 * line plus the undulation of the geoid.  Mode 1, from lineHeight to a reference surface at height:
 * S - S (lineHeight - height) / R.  Any other mode leaves the output as it is.  Take care: height
 * is the line's in mode 0 and the surface's in mode 1. */
BRENU_API void ProjectionCorrect(double height, double undulation, double radius, double lineHeight,
                                 double mode, double distance, double* projected);
/* As ProjectionCorrect, then to the grid (Grossmann): gridDistance is (1 + ym^2 / (2 R^2)
 * + (y1 - y2)^2 / (24 R^2)) times what projected holds, also where the mode left that alone. */
BRENU_API void GaussCorrect(double height, double undulation, double radius, double lineHeight,
                            double mode, double distance, double y1, double y2, double meanRadius,
                            double* projected, double* gridDistance);
/* Mean radius of curvature c / V^2 with V = sqrt(1 + e'^2 cos^2 u) (Torge), metres; polarRadius is
 * c = a^2 / b.  Take care: the latitude (degrees) only picks the equator, where equatorRadius is
 * returned, and the north pole, where c is (both within 1e-7).  Everywhere else u is the number c
 * taken as radians, and the result lies between c / (1 + e'^2) and c. */
BRENU_API double GetRm(double latitude, double equatorRadius, double polarRadius,
                       double secondEccentricity);
/* Radius of curvature of the normal section of this azimuth, Euler's formula (Torge), metres:
 * M N / (M sin^2 A + N cos^2 A) with M = c / V^3, N = c / V and V as in GetRm, u included.
 * Latitude and equatorRadius are not used. */
BRENU_API double GetRn(double latitude, double equatorRadius, double polarRadius,
                       double secondEccentricity, double azimuth);

#ifdef __cplusplus
}
#endif

#endif /* BRENU_BRENU_H_ */
