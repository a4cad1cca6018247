#include "model/supervisory_logic.h"

#include "model/inputs.h"
#include "model/scalar_laws.h"
#include "model/signals.h"
#include "runtime/clock.h"

void actuator_commands() {
  CommandSignals& command = Tessera_B.command;
  if (hits(Rate::tick_10ms)) {
    // The controller's values at rest.
    constexpr double kCompressorSpeed = 0.0, kBackPressureValve = 0.0, kSupplyValve = 0.0, kBleedValve = 1.0;
    command.compressor_speed = gated(input::compressor_speed, kCompressorSpeed);
    command.back_pressure_valve = gated(input::back_pressure_valve_command, kBackPressureValve);
    command.supply_valve_own = saturated(kSupplyValve, 0.0, 1.0);
    command.bleed_valve_own = saturated(kBleedValve, 0.0, 1.0);
  }
  if (is_major_step()) {
    command.supply_valve = gated(input::supply_valve_command, command.supply_valve_own);
    command.bleed_valve = gated(input::bleed_valve_command, command.bleed_valve_own);
  }
}
