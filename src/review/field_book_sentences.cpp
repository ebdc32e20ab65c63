#include <algorithm>
#include <iterator>

#include "review/sentence_table.h"

namespace brenu {

namespace {

// In ascending codes.
constexpr SentenceEntry kSentences[] = {
    {BRENU_FIELD_BOOK_UNKNOWN, "field-book-unknown",
     "this is no field book of a known format (GSI, SDR, M5, JobXML, gama-local XML); export the "
     "measurements from the instrument as one of these"},
    {BRENU_FIELD_BOOK_COMMA_LIST, "field-book-comma-list",
     "this is a raw data file of another kind, with commas between its fields; export the "
     "measurements as GSI, SDR, M5 or JobXML"},
    {BRENU_FIELD_BOOK_DAMAGED, "field-book-damaged",
     "the XML is damaged from here on ({1}); what stands before was read, export the file anew for "
     "the rest"},
    {BRENU_FIELD_BOOK_WITHOUT_XML, "field-book-without-xml",
     "this build reads no XML; use one that was made with pugixml, or export another format"},
    {BRENU_FIELD_BOOK_READ, "field-book-read", "{1} is {2}; what follows is about it"},
    {BRENU_FIELD_BOOK_SATELLITES, "field-book-satellites",
     "the job has no readings of a circle, it was measured with satellites; import a job of a "
     "total station"},
    {BRENU_NOTHING_IMPORTED, "nothing-imported",
     "the field books hold neither sights nor level readings nor points; check that the right file "
     "was exported"},
    {BRENU_LINE_NOT_OF_FORMAT, "line-not-of-format",
     "{x} is no line of {1} and is left out; if it was one, correct it"},
    {BRENU_LINE_MARKED_FAULTY, "line-marked-faulty",
     "the instrument marked this line as faulty; it is left out"},
    {BRENU_RECORD_NOT_USED, "record-not-used", "{1} is not used"},
    {BRENU_WORD_NOT_READ, "word-not-read",
     "{x} cannot be cut into words; what stands before it is used"},
    {BRENU_WORD_NOT_USED, "word-not-used", "the word {1} is not used"},
    {BRENU_VALUE_NOT_READ, "value-not-read",
     "{x} is no value for {1}, or has a unit of another kind; it counts as not measured"},
    {BRENU_HEADER_WITHOUT_UNITS, "header-without-units",
     "the header does not say its units; degrees and metres are assumed"},
    {BRENU_BLOCKS_MISSING, "blocks-missing",
     "{v1} running numbers are missing from here on; these blocks were deleted on the instrument"},
    {BRENU_RECORD_IS_RESULT, "record-is-result", "{1} is computed from other records and not used"},
    {BRENU_CANNOT_BE_KEPT, "cannot-be-kept", "{1} cannot be kept and is left out"},
    {BRENU_SIGHT_WITHOUT_SETUP, "sight-without-setup",
     "the sight to {1} stands under no station and is left out; add the station"},
    {BRENU_SIGHT_OF_STATION, "sight-of-station",
     "the station {1} is sighted as its own target; left out, check the name"},
    {BRENU_SIGHT_WITHOUT_TARGET, "sight-without-target",
     "the sight has no target and is left out; give the point a name"},
    {BRENU_SIGHT_WITHOUT_VALUES, "sight-without-values",
     "nothing that can be used was measured to {1}; left out"},
    {BRENU_SIGHT_IS_MEAN, "sight-is-mean",
     "the mean of sights to {1} is not used beside the sights themselves"},
    {BRENU_SIGHT_OF_BAD_SET, "sight-of-bad-set",
     "the sight to {1} belongs to a set that the observer marked as bad; left out"},
    {BRENU_SIGHT_DELETED, "sight-deleted", "{1} was deleted on the instrument; left out"},
    {BRENU_NOTE_LIKE_SIGHT, "note-like-sight", "{x} is a note that looks like a sight; left out"},
    {BRENU_FREE_STATION_BEHIND_SIGHTS, "free-station-behind-sights",
     "the coordinates of {1} were computed from sights before this line, which stand under {2}; "
     "check under which station they belong"},
    {BRENU_STATION_AT_ORIGIN, "station-at-origin",
     "the station {1} has the coordinates 0, 0, which stand for nothing entered; no control"},
    {BRENU_STATION_COORDINATES_FROM_MEMORY, "station-coordinates-from-memory",
     "the coordinates of {1} stand under other stations, too: left in the instrument's memory, no "
     "control"},
    {BRENU_CONSTRAINT_NOT_KEPT, "constraint-not-kept",
     "the point {1} constrains the datum, which a job cannot keep; it is a new point"},
    {BRENU_LENGTH_ASSUMED, "length-assumed",
     "the height difference {1} - {2} has neither length nor standard error; 1 km is assumed"},
    {BRENU_LEVEL_METHOD_NOT_READ, "level-method-not-read",
     "lines of the method {1} are no levelling between points; left out"},
    {BRENU_READING_STRUCK_OUT, "reading-struck-out",
     "the reading was struck out on the instrument; left out"},
    {BRENU_READING_WITHOUT_LINE, "reading-without-line",
     "the reading stands before the start of a line; one by single back and fore sights is "
     "assumed"},
    {BRENU_LEVEL_SETUP_INCOMPLETE, "level-setup-incomplete",
     "the setup that begins with {1} lacks readings and is left out"},
    {BRENU_LEVEL_SETUP_REPEATED, "level-setup-repeated",
     "the way from {1} on was levelled again; the later readings count"},
    {BRENU_LEVEL_LINE_BROKEN, "level-line-broken",
     "the line from {1} breaks off at the turning point {2} and is left out; name the point, or "
     "add what is missing"},
    {BRENU_LEVEL_LINE_TO_ITSELF, "level-line-to-itself",
     "the line from {1} ends at the same point; left out, name a point between"},
    {BRENU_READING_WITHOUT_BACK_SIGHT, "reading-without-back-sight",
     "the intermediate sight to {1} has no back sight; left out"},
    {BRENU_LEVEL_DISTANCES_MISSING, "level-distances-missing",
     "readings between {1} and {2} lack the distance to the staff; enter the length of the line"},
    {BRENU_SETUP_WITHOUT_COMMON_TARGET, "setup-without-common-target",
     "this setup on {1} has no target in common with the earlier ones; its directions are left "
     "out, name one of the two stations differently to keep them"},
    {BRENU_SET_OUT_OF_SPREAD, "set-out-of-spread",
     "the direction {1} - {2} of set {v1} is {v2.1}\" off the mean of the sets, too much for their "
     "spread; look at the sight"},
    {BRENU_FACES_DIFFER, "faces-differ",
     "the two faces of {1} - {2} in set {v1} speak of an instrument error of {v2.0}\"; check that "
     "both are of the same target"},
    {BRENU_ECCENTRIC_WITHOUT_DISTANCE, "eccentric-without-distance",
     "the direction {1} - {2} to an eccentric prism cannot be centred without a distance; left "
     "out"},
    {BRENU_HEIGHTS_OF_INSTRUMENT_MISSING, "heights-of-instrument-missing",
     "the height difference {1} - {2}{+1} cannot be computed without the heights of instrument and "
     "target; left out"},
    {BRENU_DISTANCE_OUT_OF_SPREAD, "distance-out-of-spread",
     "the distance {1} - {2} of set {v1} is {v2.4} m off the mean of the sets, too much for their "
     "spread; look at the sight"},
    {BRENU_LEVEL_BALANCE, "level-balance",
     "the back sights of the line {1} - {2} are {=1.1 m} than the fore sights in sum"},
    {BRENU_CONTROL_CONFLICT, "control-conflict",
     "the point {1} has known coordinates already, {v1.3} m away; the first ones are kept, which "
     "are right?"},
    {BRENU_IMPORT_WITHOUT_CONTROL, "import-without-control",
     "there are no control points{?1  with heights}; give some with --control"},
    {BRENU_CONTROL_FIELDS, "control-fields",
     "a line of control points is name,X,Y,H or name,type,X,Y,H"},
    {BRENU_NAME_CHANGED, "name-changed", "the name {1} does not fit into a job; it became {2}"},
    {BRENU_HEIGHTS_APART, "heights-apart",
     "height differences have a job of their own, for the lengths of their lines are no distances "
     "of the plane"}};

constexpr bool AreAscending() {
  for (std::size_t i = 1; i < std::size(kSentences); ++i) {
    if (kSentences[i - 1].code >= kSentences[i].code) return false;
  }
  return true;
}
static_assert(AreAscending());

}  // namespace

const SentenceEntry* FindFieldBookSentence(std::int32_t code) {
  const auto found = std::lower_bound(
      std::begin(kSentences), std::end(kSentences), code,
      [](const SentenceEntry& entry, std::int32_t wanted) { return entry.code < wanted; });
  return found != std::end(kSentences) && found->code == code ? &*found : nullptr;
}

}  // namespace brenu
