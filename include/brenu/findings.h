/* What Brenu has to say about a file, a network or a computation: the codes of findings and what
 * goes with each.  Codes keep their numbers from version to version; new ones may join them.
 *
 * A finding holds a code, a severity, the line of the file (0 for none), an excerpt of what stands
 * there (the line or, where so said, the field), names and values.  The comment at a code lists its
 * names and values in order.  Names and excerpts are bytes as they were entered. */
#ifndef BRENU_FINDINGS_H_
#define BRENU_FINDINGS_H_

typedef enum brenu_severity {
  BRENU_NOTE = 0,    /* worth knowing */
  BRENU_WARNING = 1, /* a doubt: it was computed, but look at it */
  BRENU_ERROR = 2    /* not read, not computed, or the result means nothing */
} brenu_severity;

typedef enum brenu_code {
  BRENU_NOTHING = 0,
  BRENU_OUT_OF_MEMORY = 1,

  /* ---- The call ---- */
  BRENU_NULL_ARGUMENT = 10,
  BRENU_INDEX_NEGATIVE = 11,    /* values: index */
  BRENU_INDEX_TAKEN = 12,       /* values: index */
  BRENU_INDEX_UNKNOWN = 13,     /* values: index */
  BRENU_NAME_TAKEN = 14,        /* names: point */
  BRENU_STATION_UNKNOWN = 15,   /* names: station */
  BRENU_TARGET_UNKNOWN = 16,    /* names: target */
  BRENU_TARGET_IS_STATION = 17, /* names: point */
  BRENU_PAIR_TAKEN = 18,        /* names: station, target */
  BRENU_PAIR_UNKNOWN = 19,      /* names: target */
  BRENU_NAME_IS_STATION = 20,   /* names: new name; the point has it, its observations do not */
  BRENU_NO_REFERENCE_DIRECTION = 21,   /* names: the two targets */
  BRENU_KIND_IS_NOT_NETWORK_TYPE = 22, /* values: kind, network type */
  BRENU_OPTION_REFUSED = 23,           /* names: field of brenu_options; values: what it holds */
  BRENU_POINT_UNKNOWN = 24,            /* names: point */

  /* ---- Files ---- */
  BRENU_FILE_MISSING = 100,
  BRENU_FILE_IS_FOLDER = 101,
  BRENU_FILE_NOT_OPENED = 102,
  BRENU_FILE_NOT_READ = 103, /* not to its end */
  BRENU_FILE_EMPTY = 104,
  BRENU_FILE_BINARY = 105,
  BRENU_FILE_UTF16 = 106,
  BRENU_FILE_OF_OTHER_KIND = 107,
  BRENU_FILE_IS_PROJECT = 108,      /* where a station and observation file is wanted */
  BRENU_FILE_IS_STATION = 109,      /* where a project file is wanted */
  BRENU_FILE_NOT_WRITTEN = 110,     /* names: path */
  BRENU_REPORT_STOPS_SHORT = 111,   /* names: path */
  BRENU_FILE_WOULD_OVERWRITE = 112, /* the data or another report; names: path */

  /* ---- Lines that cannot be read; refusals of the calls above come with a line, too ---- */
  BRENU_LINE_TOO_LONG = 120,
  BRENU_POINT_FIELDS = 121,             /* not name,type,X,Y,H */
  BRENU_STATION_FIELDS = 122,           /* not even name,type */
  BRENU_OBSERVATION_FIELDS = 123,       /* not the six of a project file */
  BRENU_SHORT_OBSERVATION_FIELDS = 124, /* not the five of a station and observation file */
  BRENU_PARAMETER_FORM = 125,           /* not key:value */
  BRENU_DECIMAL_COMMAS = 126,           /* too many fields, as decimal commas make them */
  BRENU_NAME_TOO_LONG = 127,

  /* ---- Doubts of reading ---- */
  BRENU_HEADER_UNKNOWN = 200,          /* names: the headers of this kind of file */
  BRENU_LINES_SKIPPED = 201,           /* outside the sections; values: how many more */
  BRENU_PARAMETER_UNKNOWN = 204,       /* names: the keys of this kind of file */
  BRENU_PARAMETER_WITHOUT_VALUE = 205, /* names: key */
  /* Excerpt: the field. */
  BRENU_NOT_A_NUMBER = 206,        /* names: what the field is; values: what it was read as */
  BRENU_NOT_AN_ANGLE = 207,        /* names: what the field is; values: what it was read as */
  BRENU_POINT_TYPE_UNKNOWN = 208,  /* values: the type */
  BRENU_KNOWN_VALUE_MISSING = 209, /* excerpt: the type; names: point */
  /* Among others that are not 0; values: how many more. */
  BRENU_HEIGHT_DIFFERENCE_ZERO = 210, /* names: station, target */
  BRENU_DISTANCE_ZERO = 211,          /* names: station, target */
  BRENU_MORE_DOUBTS = 212,            /* values: how many more of these kinds */

  /* ---- Data ---- */
  BRENU_NO_POINTS = 300,
  BRENU_NO_CONTROL = 301,
  BRENU_NO_OBSERVATIONS = 302,
  BRENU_COORDINATE_NOT_FINITE = 303,       /* names: point */
  BRENU_OBSERVATION_NOT_FINITE = 304,      /* names: station, target */
  BRENU_DISTANCE_NEGATIVE = 305,           /* names: station, target */
  BRENU_DISTANCE_ERROR_NOT_POSITIVE = 306, /* names: station, target */
  BRENU_DIRECTION_ERROR_NOT_POSITIVE = 307,
  BRENU_DISTANCE_ERRORS_LARGE = 308, /* values: mean distance, its standard error, metres */
  BRENU_LINE_LENGTH_MISSING = 309,   /* names: station, target; values: how many more */
  BRENU_AZIMUTH_WITHOUT_PLANE = 310, /* names: station, target */
  BRENU_FORMAT_UNKNOWN = 311,        /* values: format */
  BRENU_FORMAT_LEAVES_HEIGHTS = 312, /* values: format */
  BRENU_FORMAT_COUNTS_DIRECTIONS = 313,
  BRENU_FORMAT_NEEDS_PLANE = 314,
  BRENU_LINE_LENGTHS_IN_KILOMETRES = 315, /* values: their mean, metres as read */
  BRENU_DISTANCE_OUT_OF_PROPORTION = 316, /* names: station, target; values: distance, that from
                                             coordinates (metres), how many more */
  BRENU_CONTROL_FAR_AWAY = 317, /* names: point, coordinate; values: how far, spread of the
                                   others, metres */
  BRENU_AXES_EXCHANGED = 318,   /* names: station, target; values: how many angles and azimuths
                                   between control points fit with X and Y exchanged, while none
                                   does as they are */

  /* ---- Computations ---- */
  BRENU_NOTHING_LEVELLED = 400,
  BRENU_HEIGHTS_UNREACHED = 401, /* names: points; values: 1 when the job has both networks */
  BRENU_DISTANCES_WITHOUT_DIRECTIONS = 402,
  BRENU_COORDINATES_UNREACHED = 403, /* as the heights */
  BRENU_NAME_WITHOUT_POINT = 404,    /* names: station, target */
  BRENU_HEIGHTS_SINGULAR = 405,
  BRENU_PLANE_SINGULAR = 406,
  BRENU_HEIGHTS_NOT_FINITE = 407,
  BRENU_COORDINATES_NOT_FINITE = 408,
  BRENU_LINE_WITHOUT_LENGTH = 409, /* names: station, target */
  BRENU_HEIGHT_RESIDUALS_TOO_LARGE = 410,
  BRENU_PLANE_RESIDUALS_TOO_LARGE = 411,
  BRENU_DIRECTION_TURNED = 412, /* names: station, target */
  BRENU_SNOOPING_UNDETERMINED = 413,
  BRENU_NOT_PREPARED = 414, /* distances only: no computation has placed the points */
  BRENU_NO_TRAVERSE = 415,
  BRENU_POINTS_OFF_TRAVERSES = 416, /* names: points */
  BRENU_POINT_NOT_PLACED = 417,     /* names: point */
  BRENU_POINT_AT_ZERO = 418,        /* names: point, which trilateration takes as not placed */
  BRENU_SIDE_UNDETERMINED = 419,    /* names: point, first and second centre */
  BRENU_NO_PLACE = 420,             /* names: points */
  BRENU_FORMAT_IS_NOT = 421,        /* values: the format that the function needs */
  BRENU_NO_CLOSURES = 422,
  BRENU_CLOSURES_NOT_OF_FORMAT = 423, /* values: format */
  BRENU_CLOSURES_FAILED = 424,        /* values: how many, of how many */
  BRENU_POINT_LEFT_OUT = 425,         /* names: point; values: how many directions and azimuths, and
                                         how many distances, tie it to points that have a place */
  BRENU_POINTS_UNDETERMINED = 426,    /* names: points */
  BRENU_NOTHING_PLACED = 427,
  BRENU_PLANE_NOT_CONVERGED = 428,
  BRENU_CONTROL_DOES_NOT_FIT = 429, /* names: point, coordinate; values: by how much the others want
                                         it greater, metres, and its test value */
  BRENU_HEIGHTS_LEFT_OUT = 430,     /* names: points */
  BRENU_RULES_DIFFER = 431,         /* names: point; values: distance, metres, and in standard
                                       errors */
  BRENU_CLASSIC_RULES_REFUSE = 432,
  BRENU_LEVEL_SIGMA_CONTRADICTED = 433, /* values: a-posteriori, a-priori, mm for 1 km */
  BRENU_GROUP_LEFT_OUT = 434,           /* names: points that hang together; values: as for one */
  BRENU_NO_RELATIVE_ELLIPSE = 435,      /* names: the two points that it was asked for */

  /* ---- Field books: the file ---- */
  BRENU_FIELD_BOOK_UNKNOWN = 500,
  BRENU_FIELD_BOOK_COMMA_LIST = 501,  /* records of fields between commas */
  BRENU_FIELD_BOOK_DAMAGED = 502,     /* XML that breaks off or is none; names: what is wrong */
  BRENU_FIELD_BOOK_WITHOUT_XML = 503, /* this library was built without a reader of XML */
  BRENU_FIELD_BOOK_READ = 504,        /* names: file, format; the findings about it follow */
  BRENU_FIELD_BOOK_SATELLITES = 505,
  BRENU_NOTHING_IMPORTED = 506,
  /* Lines; the excerpt is the line or the value. */
  BRENU_LINE_NOT_OF_FORMAT = 510, /* names: the format */
  BRENU_LINE_MARKED_FAULTY = 511,
  BRENU_RECORD_NOT_USED = 512, /* names: its kind */
  BRENU_WORD_NOT_READ = 513,   /* excerpt: the line from there on */
  BRENU_WORD_NOT_USED = 514,   /* names: the index of the word */
  BRENU_VALUE_NOT_READ = 515,  /* names: what it is */
  BRENU_HEADER_WITHOUT_UNITS = 516,
  BRENU_BLOCKS_MISSING = 517,   /* values: how many */
  BRENU_RECORD_IS_RESULT = 518, /* names: its kind */
  BRENU_CANNOT_BE_KEPT = 519,   /* names: what it is */
  /* Sights; names: target. */
  BRENU_SIGHT_WITHOUT_SETUP = 520,
  BRENU_SIGHT_OF_STATION = 521,
  BRENU_SIGHT_WITHOUT_TARGET = 522,
  BRENU_SIGHT_WITHOUT_VALUES = 523,
  BRENU_SIGHT_IS_MEAN = 524,
  BRENU_SIGHT_OF_BAD_SET = 525,
  BRENU_SIGHT_DELETED = 526,
  BRENU_NOTE_LIKE_SIGHT = 527,
  BRENU_FREE_STATION_BEHIND_SIGHTS = 528,      /* names: station, the one before */
  BRENU_STATION_AT_ORIGIN = 529,               /* names: station */
  BRENU_STATION_COORDINATES_FROM_MEMORY = 530, /* names: station */
  BRENU_CONSTRAINT_NOT_KEPT = 531,             /* names: point */
  BRENU_LENGTH_ASSUMED = 532,                  /* names: from, to */
  /* Levelling. */
  BRENU_LEVEL_METHOD_NOT_READ = 540, /* names: the method */
  BRENU_READING_STRUCK_OUT = 541,
  BRENU_READING_WITHOUT_LINE = 542,
  BRENU_LEVEL_SETUP_INCOMPLETE = 543,     /* names: back point */
  BRENU_LEVEL_SETUP_REPEATED = 544,       /* names: back point */
  BRENU_LEVEL_LINE_BROKEN = 545,          /* names: first point, point where it breaks off */
  BRENU_LEVEL_LINE_TO_ITSELF = 546,       /* names: point */
  BRENU_READING_WITHOUT_BACK_SIGHT = 548, /* names: point */
  BRENU_LEVEL_DISTANCES_MISSING = 549,    /* names: from, to; values: readings without distance */
  /* Reduction. */
  BRENU_SETUP_WITHOUT_COMMON_TARGET = 550, /* names: station */
  BRENU_SET_OUT_OF_SPREAD = 551,    /* names: station, target; values: set, seconds from the mean */
  BRENU_FACES_DIFFER = 552,         /* names: station, target; values: set, collimation, seconds */
  BRENU_SLOPE_WITHOUT_ZENITH = 553, /* names: station, target */
  BRENU_ECCENTRIC_WITHOUT_DISTANCE = 554,    /* names: station, target */
  BRENU_HEIGHTS_OF_INSTRUMENT_MISSING = 555, /* names: station, target; values: how many more */
  BRENU_DISTANCE_OUT_OF_SPREAD = 556,        /* names: station, target; values: set, metres off */
  BRENU_LEVEL_BALANCE = 557, /* names: from, to; values: back minus fore distances, metres */
  BRENU_DIRECTION_ALONE_IN_SET = 558, /* names: station */
  /* Into a project. */
  BRENU_CONTROL_CONFLICT = 560, /* names: point; values: metres between the two places */
  BRENU_IMPORT_WITHOUT_CONTROL = 561,
  BRENU_CONTROL_FIELDS = 562, /* not name,X,Y,H or name,type,X,Y,H */
  BRENU_NAME_CHANGED = 563,   /* names: as it stands, as it was entered */
  BRENU_HEIGHTS_APART = 565,

  /* The verdict on an adjustment.  Networks by number: 0 heights, 1 plane.  Kinds of observations:
   * 0 directions, 1 distances, 2 azimuths, 3 height differences; their errors are arc-seconds or
   * metres. */
  BRENU_M0_TOO_LARGE = 600,        /* values: network, [pvv] a priori, its upper bound, m0 by its
                                      a-priori value */
  BRENU_M0_SMALL = 601,            /* the same with the lower bound */
  BRENU_NOTHING_REDUNDANT = 602,   /* values: network */
  BRENU_OBSERVATION_SUSPECT = 603, /* names: station, target; values: kind, test value w, its
                                      critical value, estimated error */
  BRENU_MORE_SUSPECTS = 604,       /* values: how many */
  BRENU_POINTS_NOT_CHECKED = 605,  /* names: points */
  BRENU_POINTS_WEAK = 606,         /* names: points */
  BRENU_CLOSURE_OF_HEIGHTS = 607,  /* names: route; values: misclosure, limit, mm; grade of the
                                      limit, grade that it meets or 0, 1 when the statistics of the
                                      network are in order */
  BRENU_CLOSURE_OF_ANGLES = 608,   /* as heights, arc-seconds */
  BRENU_CLOSURE_OF_SIDES = 609,    /* as heights, mm */
  BRENU_MORE_CLOSURES = 610,       /* values: how many */
  BRENU_LARGE_BY_CHANCE = 611,     /* names: station, target; values: kind, w, how many more */
  BRENU_GROUP_VARIANCE = 612,      /* values: kind, a-posteriori error by the a-priori one */
  BRENU_OBSERVATIONS_OUT = 613,    /* values: how many */
  BRENU_LIKE_OTHER_FACE = 614,     /* what an error looks like */
  BRENU_LIKE_DEGREES = 615,        /* values: how many */
  BRENU_LIKE_MINUTES = 616,        /* values: how many */
  BRENU_LIKE_METRES = 617,         /* values: how many */
  BRENU_LIKE_FEET = 618,
  BRENU_CLOSURES_EXPLAINED = 619, /* values: how many run over observations taken out */
  BRENU_NAME_NOT_GBK = 620        /* names: points, UTF-8 in a report of code page 936 */
} brenu_code;

#endif /* BRENU_FINDINGS_H_ */
