/* The header alone, as C99: it needs nothing before it, and its records have their sizes there. */
#include "brenu/brenu.h"

#define SIZE(record, bytes) typedef char record##Size[sizeof(record) == (bytes) ? 1 : -1]

SIZE(AdjParam, 48);
SIZE(PointData, 160);
SIZE(ObsData, 32);
SIZE(CloseError, 344);
SIZE(PlaneResult, 64);
SIZE(VerticalResult, 24);
SIZE(CircleRecord, 32);
