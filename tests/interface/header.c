/* The headers alone, as C99: they need nothing before them, and their records have their sizes. */
#include "brenu/brenu.h"
#include "brenu/survey.h"

#define SIZE(record, bytes) typedef char record##Size[sizeof(record) == (bytes) ? 1 : -1]

SIZE(AdjParam, 48);
SIZE(PointData, 160);
SIZE(ObsData, 32);
SIZE(CloseError, 344);
SIZE(PlaneResult, 64);
SIZE(VerticalResult, 24);
SIZE(CircleRecord, 32);
SIZE(brenu_finding, 24);
SIZE(brenu_figures, 24);
SIZE(brenu_pair, 288);
