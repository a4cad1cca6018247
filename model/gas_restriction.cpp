#include "model/gas_restriction.h"

const OutflowPowers kChokedPowers = [] {
  volatile double ratio = kCriticalRatio;
  return outflow_powers(ratio);
}();
