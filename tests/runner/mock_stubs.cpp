// The functions that the mock unit does not define itself: each answers a zero, which is fmi2OK.

#include "fmi/fmi2.h"

#pragma GCC diagnostic ignored "-Wunused-parameter"

extern "C" {
#define FMI2_FUNCTION(name, result, parameters) \
  __attribute__((weak)) result name parameters { return static_cast<result>(0); }
#include "fmi/fmi2_functions.def"
}
