/* Brenu beyond the 61 functions: why something failed, what is doubtful, the figures of an
 * adjustment, walking a job, reading by content.  These functions are in the survey library
 * (libbrenu-survey, brenu-survey.dll), which holds those of brenu.h, too.
 *
 * Conventions are those of brenu.h: metres, dd.mmss, the same context; a null pointer is a failure,
 * no function throws or prints, outputs are written only on success.  Beyond them:
 * - Paths are UTF-8 on Windows; elsewhere they are bytes and passed on unchanged.
 * - Text is copied out: a function with `text` and `room` writes at most `room` bytes, the NUL at
 *   the end included, cutting what does not fit, and returns the length of the whole text without
 *   the NUL; -1 when there is none or the room is negative.  `text` may be null when `room` is 0.
 */
#ifndef BRENU_SURVEY_H_
#define BRENU_SURVEY_H_

#include <stddef.h>

#include "brenu/brenu.h"
#include "brenu/findings.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The version of the library, "1.2.3"; a constant, never null. */
BRENU_API const char* brenu_version(void);

/* How many threads the computations that begin from now on use, in all contexts together; 0: as
 * many as the environment variable BRENU_THREADS says, or else the hardware has.  Results do not
 * depend on it.  No thread is left when a call returns. */
BRENU_API void brenu_set_threads(int32_t count);

/* ---- Findings: of the last call on the context that changes, computes, reads or writes; pure
 * getters and the functions of this section leave them alone.  A failure has its cause among them,
 * as an error.  So has a success that means nothing: AddObsData2, the adjustments and
 * CalcTrilaterationpPoint are known for those ---- */

typedef struct brenu_finding { /* 24 bytes: what there is to say */
  int32_t code;                /* brenu_code */
  int32_t severity;            /* brenu_severity */
  int32_t line;                /* of the file, from 1; 0 for none */
  int32_t nameCount;           /* how many names */
  int32_t valueCount;          /* and values there are */
  int32_t reserved;            /* 0 */
} brenu_finding;

/* How many findings there are; 0 for a null context. */
BRENU_API int32_t brenu_finding_count(AdjustmentContext* context);
/* The finding of this index, counted from 0; false when there is none. */
BRENU_API bool brenu_get_finding(AdjustmentContext* context, int32_t index, brenu_finding* out);
/* The finding as an English sentence: where, what is wrong, what to do. */
BRENU_API int32_t brenu_finding_text(AdjustmentContext* context, int32_t index, char* text,
                                     int32_t room);
/* Its names, by number from 0, as bytes of the job. */
BRENU_API int32_t brenu_finding_name(AdjustmentContext* context, int32_t index, int32_t number,
                                     char* text, int32_t room);
/* What stands in the file: the line or the field; -1 when the finding is not about text. */
BRENU_API int32_t brenu_finding_excerpt(AdjustmentContext* context, int32_t index, char* text,
                                        int32_t room);
/* Its values, by number from 0; false when there is none. */
BRENU_API bool brenu_finding_value(AdjustmentContext* context, int32_t index, int32_t number,
                                   double* out);
/* The code as a word, such as "heights-unreached"; a constant, "nothing" for an unknown code. */
BRENU_API const char* brenu_code_id(int32_t code);

/* ---- Files ---- */

/* What was read. */
typedef enum brenu_file_kind {
  BRENU_NO_FILE = 0,
  BRENU_PROJECT_FILE = 1,
  BRENU_STATION_FILE = 2
} brenu_file_kind;

/* Reads a project file or a station and observation file, told apart by content, into a fresh
 * context.  Unlike the two readers of brenu.h these forgive a byte order mark, carriage returns
 * behind headers and headers without an empty line before them, and refuse what is no such file.
 * Returns the kind of file, BRENU_NO_FILE on failure; what was read before a line at fault stays.
 * Doubts about what was read are findings of a success, too. */
BRENU_API int32_t brenu_read_file(AdjustmentContext* context, const char* path);
/* The same from memory; data may be null when size is 0. */
BRENU_API int32_t brenu_read_memory(AdjustmentContext* context, const char* data, size_t size);
/* Doubts and errors about the data as a whole, as findings: values that are no finite numbers,
 * units that look wrong, control far from all others...  True when no error is among them. */
BRENU_API bool brenu_check_data(AdjustmentContext* context);

/* ---- Field books: what instruments write, docs/import.md ---- */

/* Steps from sights to observations, to be added up. */
typedef enum brenu_import_steps {
  BRENU_FACE_ONE_ONLY = 1,    /* faces are not averaged: face 1 alone where there is one */
  BRENU_FIRST_SET_ONLY = 2,   /* nor sets */
  BRENU_FIRST_SETUP_ONLY = 4, /* nor setups on one station */
  BRENU_NO_CENTRING = 8,      /* eccentric prisms count as the points themselves */
  BRENU_TRIG_HEIGHTS = 16,    /* trigonometric height differences, too */
  BRENU_REFRACTION = 32,      /* curvature of the Earth and refraction */
  BRENU_ELLIPSOID = 64        /* distances down to the ellipsoid */
} brenu_import_steps;

typedef struct brenu_import_options { /* 48 bytes: 0 everywhere but in projectionScale is usual */
  int32_t steps;                      /* sum of brenu_import_steps */
  int32_t reserved;                   /* 0 */
  double refraction;                  /* coefficient, usually 0.13 */
  double constant;                    /* of distances, mm */
  double scale;                       /* of distances, mm/km */
  double height;                      /* mean, above the ellipsoid, metres */
  double projectionScale;             /* into the plane; 1 for none, 0 counts as 1 */
} brenu_import_options;

/* Reads the field books of a survey into a fresh context: GSI, SDR, M5, JobXML or gama-local XML,
 * told apart by content; faces and sets are averaged.  Heights beside a plane survey go to the
 * second context, for the lengths of their lines are no distances of the plane; they are dropped
 * when it is null.
 *
 * paths: of the field books, separated by line feeds.  control: path of known points (lines
 * name,X,Y,H or name,type,X,Y,H, a file that brenu_read_file reads, or a field book), null for
 * none.  options: null for the usual ones.  log: path for a text with what each line became and
 * each step of the reduction, null for none.
 *
 * False when a file cannot be read, is no field book, or the log cannot be written; then nothing is
 * entered.  What is left out or doubtful are findings of a success; those after a finding
 * BRENU_FIELD_BOOK_READ are about that file. */
BRENU_API bool brenu_import(AdjustmentContext* context, AdjustmentContext* heights,
                            const char* paths, const char* control,
                            const brenu_import_options* options, const char* log);
/* ---- Computations by either set of rules.  Results are read as those of brenu.h, whose own
 * computations always follow the classic rules ---- */

/* The sets of rules; docs/computations.md lists the differences. */
typedef enum brenu_rules {
  BRENU_TEXTBOOK = 0, /* those of textbooks */
  BRENU_CLASSIC = 1   /* those of brenu.h */
} brenu_rules;

/* How data snooping decides; two-sided. */
typedef enum brenu_test {
  BRENU_NO_TEST = 0, /* no data snooping */
  BRENU_W_TEST = 1,  /* w = v / (sigma0 sqrt(q_vv)) with the a-priori sigma0 (Baarda) */
  BRENU_TAU_TEST = 2 /* tau: with the a-posteriori sigma0 (Pope); textbook rules only */
} brenu_test;

/* All zero: an adjustment by the rules of textbooks, without data snooping. */
typedef struct brenu_options { /* 32 bytes: how to compute */
  int32_t rules;               /* brenu_rules */
  int32_t test;                /* brenu_test */
  double alpha;                /* level of significance of the test, below 1; 0 stands for 0.001 */
  double critical;   /* what a test value has to exceed, in the place of alpha; 0 for that of alpha;
                        textbook rules only */
  double levelSigma; /* a-priori standard error of 1 km of levelling, metres; 0 stands for 0.001;
                        textbook rules only */
} brenu_options;

/* Adjusts what the job has, by its format: 0 heights and plane, 1 traverses without orientation, 3
 * distances alone, the points being placed first.  Data snooping needs format 0, with the rules of
 * textbooks 0 or 3.
 *
 * By the rules of textbooks what the observations do not determine is left out, each point with a
 * warning that says what ties it so far, and everything else is adjusted: true when a network was.
 * A failure of the other one is among the findings then, as an error. */
BRENU_API bool brenu_adjust(AdjustmentContext* context, const brenu_options* options);
/* Approximate heights and coordinates; of the options only the rules matter. */
BRENU_API bool brenu_approximate(AdjustmentContext* context, const brenu_options* options);
/* The closure errors, from approximate values by these rules, to be read as those of brenu.h.  That
 * there are none is a warning. */
BRENU_API bool brenu_compute_closures(AdjustmentContext* context, const brenu_options* options);

/* ---- What data snooping by the rules of textbooks took out ---- */

/* What an observation is. */
typedef enum brenu_observation_kind {
  BRENU_DIRECTION = 1,
  BRENU_DISTANCE = 2,
  BRENU_AZIMUTH = 3,
  BRENU_HEIGHT_DIFFERENCE = 4
} brenu_observation_kind;

typedef struct brenu_observation { /* 264 bytes: one observation */
  char station[128];               /* NUL-terminated */
  char target[128];                /* NUL-terminated */
  int32_t kind;                    /* brenu_observation_kind */
  int32_t reserved;                /* 0 */
} brenu_observation;

typedef struct brenu_taken_out { /* 288 bytes: one that was taken out */
  brenu_observation observation; /* which one */
  int32_t alternatives; /* others whose test values cannot be told apart from its own: the error may
                           be in one of them */
  int32_t reserved;     /* 0 */
  double testValue;     /* when it was taken out */
  double error;         /* estimated: observed minus adjusted without it, metres or arc-seconds */
} brenu_taken_out;

/* How many there are; 0 after any other computation. */
BRENU_API int32_t brenu_taken_out_count(AdjustmentContext* context);
/* Those of the heights, then of the plane, each in the order in which they were taken out; counted
 * from 0. */
BRENU_API bool brenu_get_taken_out(AdjustmentContext* context, int32_t index, brenu_taken_out* out);
/* The alternatives of one, by number from 0. */
BRENU_API bool brenu_get_alternative(AdjustmentContext* context, int32_t index, int32_t number,
                                     brenu_observation* out);
/* How many observations of this network were not tested, since the others hardly check them: their
 * redundancy numbers do not exceed 0.05. */
BRENU_API int32_t brenu_untested_count(AdjustmentContext* context, int32_t network);

/* ---- Control against observations, after an adjustment by the rules of textbooks ---- */

/* Of each known value by itself, all others being held: by how much the observations want it
 * greater, and the test value of that with a-priori errors.  Not numbers where nothing checks the
 * value. */
typedef struct brenu_control_fit { /* 48 bytes */
  double x, y, h;                  /* by how much greater, metres */
  double wx, wy, wh;               /* test values */
} brenu_control_fit;

/* Of the point of this index; false when it is no control point that anything checks. */
BRENU_API bool brenu_get_control_fit(AdjustmentContext* context, int32_t index,
                                     brenu_control_fit* out);

/* ---- Figures of the last adjustment ---- */

/* The two of a job. */
typedef enum brenu_network { BRENU_HEIGHTS = 1, BRENU_PLANE = 2 } brenu_network;

typedef struct brenu_figures { /* 24 bytes: of an adjusted network */
  int32_t controlPoints;       /* as this network counts them */
  int32_t newPoints;           /* all others */
  int32_t redundancy; /* observations minus unknowns; by the classic rules what data snooping took
                         out is subtracted twice in the plane, and with format 3 directions and
                         azimuths count, too */
  int32_t leftOut;    /* new points without results, by the rules of textbooks: what is not
                         determined, and points of the other network alone */
  double m0;          /* standard error of unit weight: metres for 1 km of levelling; in the plane
                         a multiple of the a-priori errors; means nothing without redundancy */
} brenu_figures;

/* False when the last computation did not adjust that network. */
BRENU_API bool brenu_get_figures(AdjustmentContext* context, int32_t network, brenu_figures* out);

/* ---- The report of the last adjustment ---- */

/* Forms of the report. */
typedef enum brenu_report_form {
  BRENU_REPORT_JSON = 1, /* for programs: docs/json.md */
  BRENU_REPORT_HTML = 2, /* a page that needs nothing else */
  BRENU_REPORT_SVG = 3,  /* the sketch as a picture */
  BRENU_REPORT_DXF = 4,  /* the sketch for CAD */
  BRENU_REPORT_TEXT = 5
} brenu_report_form;

/* Of what people read. */
typedef enum brenu_language { BRENU_ENGLISH = 0, BRENU_CHINESE = 1 } brenu_language;

/* The report of the last adjustment in that form and language (JSON and DXF have one language):
 * verdict, tests, tables, closures if they were computed before.  `title` names the job, such as
 * its file; null for none.  Text in UTF-8 that ends in a NUL and stays until the next call of this
 * function with the context or its end.  Null for an unknown form, and when memory is exhausted. */
BRENU_API const char* brenu_report(AdjustmentContext* context, int32_t form, int32_t language,
                                   const char* title);

/* ---- Walking a job.  Each call finds the next one in a time that hardly grows with the job;
 * adding and deleting in between is allowed.  DeletePoint moves the points behind it down: go on
 * from the index below the deleted one ---- */

/* The next index in use above *index, which is -1 at the start; false at the end. */
BRENU_API bool brenu_next_point(AdjustmentContext* context, int32_t* index);

typedef struct brenu_pair { /* 288 bytes: what is stored from one point to another */
  char station[128];        /* NUL-terminated */
  char target[128];         /* NUL-terminated */
  ObsData observation;      /* as it is stored */
} brenu_pair;

/* The stored pair after this one in the order of the names of stations, then of targets; all zero
 * at the start.  False at the end. */
BRENU_API bool brenu_next_observation(AdjustmentContext* context, brenu_pair* pair);

#ifdef __cplusplus
}
#endif

#endif /* BRENU_SURVEY_H_ */
