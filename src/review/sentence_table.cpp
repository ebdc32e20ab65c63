#include "review/sentence_table.h"

#include <algorithm>
#include <iterator>

namespace brenu {

namespace {

// In ascending codes.
constexpr SentenceEntry kSentences[] = {
    {BRENU_OUT_OF_MEMORY, "out-of-memory", "there is not enough memory for this network; split it"},

    {BRENU_NULL_ARGUMENT, "null-argument", "an argument is a null pointer; give a valid one"},
    {BRENU_INDEX_NEGATIVE, "index-negative",
     "the index {v1} is negative; give an index of 0 or more"},
    {BRENU_INDEX_TAKEN, "index-taken",
     "the index {v1} has a point already; take another one, and read files into a fresh job"},
    {BRENU_INDEX_UNKNOWN, "index-unknown", "there is no point with the index {v1}"},
    {BRENU_NAME_TAKEN, "name-taken", "a point named {1} exists already; give each its own name"},
    {BRENU_STATION_UNKNOWN, "station-unknown",
     "the station {1} is not among the points above; add it, or correct the name"},
    {BRENU_TARGET_UNKNOWN, "target-unknown",
     "the target {1} is not among the points; add it before its observations, or correct the name"},
    {BRENU_TARGET_IS_STATION, "target-is-station",
     "station and target are the same point {1}; correct one of them"},
    {BRENU_PAIR_TAKEN, "pair-taken",
     "the line {1} - {2} has observations already; put all that was observed from one to the "
     "other into one place"},
    {BRENU_PAIR_UNKNOWN, "pair-unknown", "nothing is stored from that station to {1}"},
    {BRENU_NAME_IS_STATION, "name-is-station",
     "the new name {1} has observations as a station already; the point bears it now, but its "
     "observations keep the old name"},
    {BRENU_NO_REFERENCE_DIRECTION, "no-reference-direction",
     "neither {1} nor {2} has a stored direction to turn the new readings onto; nothing was added"},
    {BRENU_KIND_IS_NOT_NETWORK_TYPE, "kind-is-not-network-type",
     "the kind {v1} is not that of the network, {v2}; give the type of the network"},
    {BRENU_OPTION_REFUSED, "option-refused",
     "the option {1} cannot be {v1.g} here; survey.h says what it may be"},

    {BRENU_FILE_MISSING, "file-missing", "there is no such file; check its name"},
    {BRENU_FILE_IS_FOLDER, "file-is-folder", "this is a directory; name a file in it"},
    {BRENU_FILE_NOT_OPENED, "file-not-opened",
     "the file cannot be opened; check that you may read it"},
    {BRENU_FILE_NOT_READ, "file-not-read",
     "the file cannot be read to its end; check that you may read the file"},
    {BRENU_FILE_EMPTY, "file-empty", "the file is empty; check that it was saved"},
    {BRENU_FILE_BINARY, "file-binary",
     "this is no text file; save the data as text, a project file or a station and observation "
     "file"},
    {BRENU_FILE_UTF16, "file-utf16",
     "the file is text of 16-bit characters (UTF-16); save it as UTF-8 or in a single-byte "
     "encoding"},
    {BRENU_FILE_OF_OTHER_KIND, "file-of-other-kind",
     "this is neither a project file (sections [PARAM], [PT], [OBS]) nor a station and "
     "observation file (sections [PARA], [STATION], [OBSER]); give a file of these kinds"},
    {BRENU_FILE_IS_PROJECT, "file-is-project",
     "this is a project file where a station and observation file is wanted; read it as one"},
    {BRENU_FILE_IS_STATION, "file-is-station",
     "this is a station and observation file where a project file is wanted; read it as one"},
    {BRENU_FILE_NOT_WRITTEN, "file-not-written",
     "{1} cannot be written; name a file that you may write, in a folder that exists"},
    {BRENU_REPORT_STOPS_SHORT, "report-stops-short",
     "the result report stops short at an observation or a point that took no part in the "
     "computation; take out what this format does not use"},

    {BRENU_LINE_TOO_LONG, "line-too-long", "the line is longer than any valid one"},
    {BRENU_POINT_FIELDS, "point-fields", "a point line has the five fields name,type,X,Y,H"},
    {BRENU_STATION_FIELDS, "station-fields", "a station line has at least a name and a type"},
    {BRENU_OBSERVATION_FIELDS, "observation-fields",
     "an observation line has the six fields "
     "station,target,direction,distance,height difference,azimuth"},
    {BRENU_SHORT_OBSERVATION_FIELDS, "short-observation-fields",
     "an observation line has the five fields "
     "station,target,direction,distance,height difference, the last one not empty"},
    {BRENU_PARAMETER_FORM, "parameter-form", "a parameter line has the form key:value"},
    {BRENU_DECIMAL_COMMAS, "decimal-commas",
     "the line has more fields than there are, as decimal commas make them; write a point for "
     "the decimals"},
    {BRENU_NAME_TOO_LONG, "name-too-long", "the point name is longer than 127 bytes"},

    {BRENU_HEADER_UNKNOWN, "header-unknown",
     "{x} is no section header, so that the lines below it are not read; the headers are {1}, "
     "in capitals and without blanks"},
    {BRENU_LINES_SKIPPED, "lines-skipped",
     "this line{+1} outside the sections will not be read; an empty line ends a section, take out "
     "the one before it"},
    {BRENU_PARAMETER_UNKNOWN, "parameter-unknown",
     "{x} gives no known parameter and is skipped; the keys are {1}, each with a colon and a "
     "value"},
    {BRENU_PARAMETER_WITHOUT_VALUE, "parameter-without-value",
     "the parameter {1} has no value; give it one after a colon"},
    {BRENU_NOT_A_NUMBER, "not-a-number",
     "{x} is no number and is read as {v1.g}; correct it, with a point for the decimals"},
    {BRENU_NOT_AN_ANGLE, "not-an-angle",
     "{x} is no angle dd.mmss between 0 and 360 degrees; correct it"},
    {BRENU_POINT_TYPE_UNKNOWN, "point-type-unknown",
     "the point type {x} is none of 00, 01, 10 and 11 and counts as that of a new point; correct "
     "it"},
    {BRENU_KNOWN_VALUE_MISSING, "known-value-missing",
     "the type {x} of the point {1} says that a value is known which the line does not give, so "
     "that it is taken for 0; give it, in the order name,type,X,Y,H"},
    {BRENU_HEIGHT_DIFFERENCE_ZERO, "height-difference-zero",
     "the height difference {1} - {2} is given as 0{+1}, which stands for none, so that it takes "
     "no part; give 0.00001 for a difference of zero"},
    {BRENU_DISTANCE_ZERO, "distance-zero",
     "the distance {1} - {2} is given as 0{+1}, which stands for none; leave the field empty, or "
     "give the distance"},
    {BRENU_MORE_DOUBTS, "more-doubts",
     "{v1} more fields are in doubt like these; correct the lines named and read the file again"},

    {BRENU_NO_POINTS, "no-points", "there are no points; add them and their observations"},
    {BRENU_NO_CONTROL, "no-control",
     "no control point is among the points; give one or more the type 01 (height known), 10 (X "
     "and Y known) or 11 (both)"},
    {BRENU_NO_OBSERVATIONS, "no-observations",
     "there are points but no observations; add observations"},
    {BRENU_COORDINATE_NOT_FINITE, "coordinate-not-finite",
     "a coordinate of the point {1} is no finite number; correct it"},
    {BRENU_OBSERVATION_NOT_FINITE, "observation-not-finite",
     "an observation of the line {1} - {2} is no finite number; correct it"},
    {BRENU_DISTANCE_NEGATIVE, "distance-negative",
     "the distance {1} - {2} is negative; correct it"},
    {BRENU_DISTANCE_ERROR_NOT_POSITIVE, "distance-error-not-positive",
     "the a-priori error MS + MR * S of the distance {1} - {2} is not positive; correct MS and MR"},
    {BRENU_DIRECTION_ERROR_NOT_POSITIVE, "direction-error-not-positive",
     "the a-priori error of the directions is not positive; correct MO"},
    {BRENU_DISTANCE_ERRORS_LARGE, "distance-errors-large",
     "MS and MR give a distance of {v1} m a standard error of {v2} m, so that distances hardly "
     "count; they are in metres, 5 mm + 5 ppm is MS:0.005 and MR:0.000005"},
    {BRENU_LINE_LENGTH_MISSING, "line-length-missing",
     "the height difference {1} - {2}{+1} has no line length and takes no part; give the length "
     "in the field of the distance"},
    {BRENU_AZIMUTH_WITHOUT_PLANE, "azimuth-without-plane",
     "the line {1} - {2} has an azimuth, which takes no part in a levelling network; perhaps a "
     "comma was written for the decimal point of its height difference"},
    {BRENU_FORMAT_UNKNOWN, "format-unknown",
     "there is no format {v1}, so that the network is computed as one of format 0; give 0, 1 or "
     "3"},
    {BRENU_FORMAT_LEAVES_HEIGHTS, "format-leaves-heights",
     "formats 1 and 3 compute the plane only; adjust the heights as a job of their own"},
    {BRENU_FORMAT_COUNTS_DIRECTIONS, "format-counts-directions",
     "directions and azimuths take no part with format 3; by the classic rules they count in the "
     "redundancy all the same, so that m0 and the standard errors come out too small; every line "
     "of a station file has a direction"},
    {BRENU_FORMAT_NEEDS_PLANE, "format-needs-plane",
     "formats 1 (traverses without orientation) and 3 (distances only) need points with known X "
     "and Y; correct the format or the types of the points"},
    {BRENU_LINE_LENGTHS_IN_KILOMETRES, "line-lengths-in-kilometres",
     "the levelling lines are {v1.3} m long in the middle, as if their lengths were in "
     "kilometres; give them in metres"},
    {BRENU_DISTANCE_OUT_OF_PROPORTION, "distance-out-of-proportion",
     "the distance {1} - {2} is {v1.3} m, but from the coordinates in the file {v2.3} m{+3}; "
     "check the unit of the distances and the coordinates of the control points"},
    {BRENU_CONTROL_FAR_AWAY, "control-far-away",
     "the {2} of the control point {1} lies {v1} m from all others, which spread over {v2} m; "
     "check it for a slip, and X and Y for an exchange"},

    {BRENU_NOTHING_LEVELLED, "nothing-levelled",
     "bench marks are there but no levelled height difference; give each height difference the "
     "length of its line"},
    {BRENU_HEIGHTS_UNREACHED, "heights-unreached",
     "heights cannot be computed for {points}; connect them with a bench mark by height "
     "differences that have a line length{?1 , or adjust heights and plane as two jobs: with "
     "control points of both kinds every point needs both}"},
    {BRENU_DISTANCES_WITHOUT_DIRECTIONS, "distances-without-directions",
     "there are distances but no directions to place points by; add directions, or adjust the "
     "distances alone with format 3"},
    {BRENU_COORDINATES_UNREACHED, "coordinates-unreached",
     "approximate coordinates cannot be computed for {points}; observe each with direction and "
     "distance, or by intersection, from oriented known stations{?1 , or adjust heights and plane "
     "as two jobs: with control points of both kinds every point needs both}"},
    {BRENU_NAME_WITHOUT_POINT, "name-without-point",
     "an end of the line {1} - {2} is no point; rename the observation or add the point"},
    {BRENU_HEIGHTS_SINGULAR, "heights-singular",
     "the normal equations of the levelling network are singular; look for points that its "
     "observations do not determine, and for a-priori errors that leave them no weight"},
    {BRENU_PLANE_SINGULAR, "plane-singular",
     "the normal equations of the plane network are singular; look for points that its "
     "observations do not determine, and for a-priori errors that leave them no weight"},
    {BRENU_HEIGHTS_NOT_FINITE, "heights-not-finite",
     "the adjusted values of the levelling network are no finite numbers; look for gross errors "
     "in coordinates and observations"},
    {BRENU_COORDINATES_NOT_FINITE, "coordinates-not-finite",
     "the adjusted values of the plane network are no finite numbers; look for gross errors in "
     "coordinates and observations"},
    {BRENU_LINE_WITHOUT_LENGTH, "line-without-length",
     "the points of the observed line {1} - {2} lie at the same place; correct their coordinates "
     "or the observation"},
    {BRENU_HEIGHT_RESIDUALS_TOO_LARGE, "height-residuals-too-large",
     "the residuals of the levelling network are too large to compute with; look for gross "
     "errors in coordinates and observations"},
    {BRENU_PLANE_RESIDUALS_TOO_LARGE, "plane-residuals-too-large",
     "the residuals of the plane network are too large to compute with; look for gross errors in "
     "coordinates and observations"},
    {BRENU_DIRECTION_TURNED, "direction-turned",
     "the zero of the directions at {1} lies too close to north, which puts the direction {1} - "
     "{2} a full circle off; add the same angle, 90 degrees say, to all its directions"},
    {BRENU_SNOOPING_UNDETERMINED, "snooping-undetermined",
     "data snooping took out observations that the network cannot do without; take out lines to "
     "points that hang on a single one, which it cannot judge, or give a smaller ALPHA"},
    {BRENU_NOT_PREPARED, "not-prepared",
     "the points of the network of distances have no coordinates yet; place them first"},
    {BRENU_NO_TRAVERSE, "no-traverse",
     "no traverse joins two control points; between its points each needs a distance, and every "
     "point on the way directions to the one before and the one after"},
    {BRENU_POINTS_OFF_TRAVERSES, "points-off-traverses",
     "coordinates cannot be computed for {points}; lead a traverse between two control points "
     "over each, with all its distances and directions"},
    {BRENU_POINT_NOT_PLACED, "point-not-placed",
     "the point {1} is not placed yet; place all new points before the adjustment"},
    {BRENU_POINT_AT_ZERO, "point-at-zero",
     "the point {1} lies at X = 0, which stands for not placed; add a constant to all X"},
    {BRENU_SIDE_UNDETERMINED, "side-undetermined",
     "the side of the point {1} on the line {2} - {3} is undetermined; give approximate X and Y "
     "of it in the file, or a distance to a third point that is known or placed before it"},
    {BRENU_NO_PLACE, "no-place",
     "no place can be found for {points}; measure each from two points that are known or placed "
     "before it, and check distances that do not meet"},
    {BRENU_FORMAT_IS_NOT, "format-is-not",
     "this computation needs a job of format {v1}; set the parameter first"},
    {BRENU_NO_CLOSURES, "no-closures",
     "there are no closure errors: no line or traverse joins two control points and no loop "
     "closes"},
    {BRENU_CLOSURES_NOT_OF_FORMAT, "closures-not-of-format",
     "jobs of format {v1} have no closure errors with limits"},
    {BRENU_CLOSURES_FAILED, "closures-failed",
     "{v1} of {v2} closure errors are beyond their limits; look for gross errors along the routes "
     "that failed"},
    {BRENU_POINT_LEFT_OUT, "point-left-out",
     "the point {1} is left out: it has {&direction|distance}; observe it from another known "
     "point, or measure one more distance"},
    {BRENU_POINTS_UNDETERMINED, "points-undetermined",
     "left out: {points}; what hangs together there can still move against the control points; tie "
     "it by a further direction or distance"},
    {BRENU_NOTHING_PLACED, "nothing-placed",
     "no new point can be placed from the control points; observe from a known station, or two "
     "known points from a new one"},
    {BRENU_PLANE_NOT_CONVERGED, "plane-not-converged",
     "the adjustment of the plane network does not converge; look for gross errors by data "
     "snooping, and for points placed with too little"},
    {BRENU_CONTROL_DOES_NOT_FIT, "control-does-not-fit",
     "the control point {1} does not fit the others: they agree on {2} {=1.2 m} (test value "
     "{v2.1}); check its coordinates, and that it was the point sighted"},
    {BRENU_HEIGHTS_LEFT_OUT, "heights-left-out",
     "the heights of {points} are left out: no chain of height differences with line lengths leads "
     "there from a bench mark; level it from a known point"},
    {BRENU_RULES_DIFFER, "rules-differ",
     "the classic rules put {1} elsewhere, by {v1.4} m, {v2.1} standard errors; compute by them to "
     "see all"},
    {BRENU_CLASSIC_RULES_REFUSE, "classic-rules-refuse",
     "the classic rules cannot compute this network; compute by them to see why"},
    {BRENU_LEVEL_SIGMA_CONTRADICTED, "level-sigma-contradicted",
     "the residuals of the heights speak of {v1.2} mm for 1 km of levelling, not of the {v2.2} mm "
     "assumed; set the a-priori error of levelling if that is what it is worth"},
    {BRENU_GROUP_LEFT_OUT, "group-left-out",
     "{points} are left out: they hang together, with {&direction|distance} to points that have a "
     "place; observe two of them from known points, or known points from two of them"},

    {BRENU_M0_TOO_LARGE, "m0-too-large",
     "the standard error of unit weight of the {n1} is {v4.2} times the a-priori one, beyond chance "
     "([pvv] {v2.1} exceeds {v3.1}, chi-square 95 %); look for gross errors, or correct the "
     "a-priori errors"},
    {BRENU_M0_SMALL, "m0-small",
     "the standard error of unit weight of the {n1} is {v4.2} times the a-priori one, less than "
     "chance explains ([pvv] {v2.1} is below {v3.1}); the a-priori errors may be too large"},
    {BRENU_NOTHING_REDUNDANT, "nothing-redundant",
     "nothing is redundant in the {n1}, so no error would show; observe more than is needed"},
    {BRENU_OBSERVATION_SUSPECT, "observation-suspect",
     "the {k1} {1} - {2} does not fit: its test value is {v2.1}, the critical one {v3.2}; it would "
     "fit if it were {u14}; check it"},
    {BRENU_MORE_SUSPECTS, "more-suspects",
     "further observations beyond the critical value: {v1}, some of them because of the first; look "
     "at these when the first is settled"},
    {BRENU_POINTS_NOT_CHECKED, "points-not-checked",
     "nothing checks {points}: an error in its observations would not show; observe it once more "
     "from elsewhere"},
    {BRENU_POINTS_WEAK, "points-weak",
     "hardly anything checks {points}; observe it once more from elsewhere"},
    {BRENU_CLOSURE_OF_HEIGHTS, "closure-of-heights",
     "the closure {1} is off by {v1.1} mm, more than the {v2.1} mm of grade {v3}{?4 ; it meets "
     "grade {v4}}{?5 ; the statistics of the network are in order, so it is the grade, not a gross "
     "error}"},
    {BRENU_CLOSURE_OF_ANGLES, "closure-of-angles",
     "the angles of {1} are off by {v1.1}\", more than the {v2.1}\" of grade {v3}{?4 ; they meet "
     "grade {v4}}{?5 ; the statistics of the network are in order, so it is the grade, not a gross "
     "error}"},
    {BRENU_CLOSURE_OF_SIDES, "closure-of-sides",
     "the traverse {1} is off by {v1.1} mm, more than the {v2.1} mm of grade {v3}{?4 ; it meets "
     "grade {v4}}{?5 ; the statistics of the network are in order, so it is the grade, not a gross "
     "error}"},
    {BRENU_MORE_CLOSURES, "more-closures", "further closures beyond their limits: {v1}"},
    {BRENU_LARGE_BY_CHANCE, "large-by-chance",
     "the {k1} {1} - {2} has the test value {v2.1}{?3  and {v3} more exceed 3.29}, which chance "
     "explains in a network of this size"},
    {BRENU_GROUP_VARIANCE, "group-variance",
     "the residuals of the {p1} are {v2.2} times as large as their a-priori errors say; correct "
     "these if that is what the instrument is worth"},
    {BRENU_OBSERVATIONS_OUT, "observations-out",
     "observations taken out by data snooping: {v1}; see the table"},
    {BRENU_LIKE_OTHER_FACE, "like-other-face", "half a circle: read on the other face"},
    {BRENU_LIKE_DEGREES, "like-degrees", "a misreading of {v1} degrees"},
    {BRENU_LIKE_MINUTES, "like-minutes", "a misreading of {v1} minutes"},
    {BRENU_LIKE_METRES, "like-metres", "a misreading of {v1.g} m"},
    {BRENU_LIKE_FEET, "like-feet", "feet taken for metres"},
    {BRENU_CLOSURES_EXPLAINED, "closures-explained",
     "closures beyond their limits that run over observations taken out: {v1}"}};

constexpr bool AreAscending() {
  for (std::size_t i = 1; i < std::size(kSentences); ++i) {
    if (kSentences[i - 1].code >= kSentences[i].code) return false;
  }
  return true;
}
static_assert(AreAscending());

}  // namespace

const SentenceEntry* FindSentence(std::int32_t code) {
  const auto found = std::lower_bound(
      std::begin(kSentences), std::end(kSentences), code,
      [](const SentenceEntry& entry, std::int32_t wanted) { return entry.code < wanted; });
  return found != std::end(kSentences) && found->code == code ? &*found : nullptr;
}

}  // namespace brenu
