#include "model/gas_restriction.h"

#include "runtime/lookup.h"

const OutflowPowers kChokedPowers = [] {
  volatile double ratio = kCriticalRatio;
  return outflow_powers(ratio);
}();

double actuator_speed(const ActuatorRow& actuator, double command, double position) {
  const double speeds[] = {-1.0 / actuator.closing_time, 0.0, 1.0 / actuator.opening_time};
  double speed = 0.0;
  LookUpEven_real_T_real_T(&speed, speeds, command - position, -1.0, 2, 1.0);
  return speed;
}
