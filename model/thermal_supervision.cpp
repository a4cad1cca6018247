#include "model/thermal_supervision.h"

#include <cmath>

#include "kernels/math_kernels.h"
#include "model/scalar_laws.h"

namespace {

constexpr double kFanBase = 0.0995, kFanSpan = 0.157;  // effectiveness without fan, and what the fan adds

double sign_of(double x) { return x > 0.0 ? 1.0 : x < 0.0 ? -1.0 : x == 0.0 ? 0.0 : 2.0; }

bool within(double x, double lowest, double highest) { return highest >= x && x >= lowest; }

void enter(ThermalSupervisor& chart, ThermalSupervisor::State state, ThermalSupervisor::Substate substate) {
  struct Outputs {
    double mode, enable;
  };
  constexpr Outputs kOutputs[] = {{0.0, 0.0}, {1.0, 1.0}, {2.0, 3.0}, {0.0, 0.0}};  // by state
  chart.state = state;
  chart.substate = substate;
  chart.mode = kOutputs[state].mode;
  chart.enable = kOutputs[state].enable;
  chart.auxiliary = substate == ThermalSupervisor::Afterrun ? 1.0 : 0.0;
}

}  // namespace

double tick(ConditionTimer& timer, double rate, double reset) {
  if (reset != 0.0 || timer.sign_before != 0.0) timer.value = 0.0;
  const double value = timer.value;
  timer.value = saturated(timer.value + 0.1 * rate, 0.0, 1.0);
  timer.sign_before = sign_of(reset);
  return value;
}

bool timer_latch(double value, bool before) { return value >= 0.6 || (value >= 0.4 && before); }

void start(CoolantCondition& condition) {
  condition.timer.fill({0.0, 2.0});
  condition.fault.fill(true);
}

void tick(CoolantCondition& condition, double T_in, double T_out, double mode, double enable) {
  constexpr double kLowest = -20.0, kHighest = 83.0;                     // degC
  constexpr double kLowestDifference = -5.0, kHighestDifference = 15.0;  // K
  constexpr double kRangeRate = 0.06, kFixedRate = 0.19999999999999998, kDifferenceRate = 0.12, kFall = -0.0006;  // 1/s

  const bool outlet_holds = within(T_out, kLowest, kHighest);
  const bool holds[] = {within(T_in, kLowest, kHighest), outlet_holds, true,
                        outlet_holds && within(T_out - T_in, kLowestDifference, kHighestDifference)};
  constexpr double kRates[] = {kRangeRate, kRangeRate, kFixedRate, kDifferenceRate};
  const double range_reset = enable == 0.0 ? 1.0 : 0.0, difference_reset = mode == 0.0 ? 1.0 : 0.0;
  for (std::size_t i = 0; i < condition.timer.size(); ++i) {
    const double reset = i == CoolantCondition::difference ? difference_reset : range_reset;
    const double value = tick(condition.timer[i], holds[i] ? kFall : kRates[i], reset);
    condition.fault[i] = timer_latch(value, condition.fault[i]);
  }
}

bool coolant_fault(const CoolantCondition& condition, double mode) {
  const auto holds = [&](CoolantCondition::Watch watch) { return condition.fault[watch] ? 0.0 : 1.0; };
  const double product =
      holds(CoolantCondition::inlet) * holds(CoolantCondition::outlet) * holds(CoolantCondition::fixed) * 1.0;
  const bool block_fault = mode != 0.0 && product == 0.0;
  return block_fault || condition.fault[CoolantCondition::difference];
}

void tick(ThermalSupervisor& chart, double run, bool fault, bool hot) {
  using enum ThermalSupervisor::State;
  using enum ThermalSupervisor::Substate;
  constexpr double kWaitingTime = 60.0;  // s
  chart.ticks += 1.0;
  const double time = 0.01 * chart.ticks;
  switch (chart.state) {
    case none:
      enter(chart, Off, no_substate);
      break;
    case Running:
      if (fault) {
        enter(chart, Fault, no_substate);
      } else if (chart.substate == Afterrun) {
        if (run == 1.0) {
          enter(chart, Running, Active);
        } else if ((!hot || time - chart.afterrun_start >= kWaitingTime) && run == 0.0) {
          enter(chart, Off, no_substate);
        }
      } else if (run == 3.0) {
        enter(chart, Running, Afterrun);
        chart.afterrun_start = time;
      } else if (run == 0.0) {
        enter(chart, Off, no_substate);
      }
      break;
    case Fault:
      if (run == 0.0) enter(chart, Off, no_substate);
      break;
    case Off:
      if (run == 1.0 && !fault) enter(chart, Running, Active);
      break;
  }
}

ThermalDemand thermal_demand(ThermalLaw& law, double T_set, double T_out, double T_amb) {
  constexpr double kDeadZone = 1.0;  // K
  constexpr double kGain = 0.3;
  constexpr double kShareOfOneTick = (1.0 / 10.0) * 0.1;  // 10 s filter
  constexpr double kKept = 0.9900498337491681;            // exp(-0.1 / 10.0)

  const double error = T_set - T_out;
  const double beyond = error > kDeadZone ? error - kDeadZone : error < -kDeadZone ? error + kDeadZone : 0.0;
  law.filtered = law.filtered + kShareOfOneTick * (law.estimate - law.filtered);
  const double target = law.filtered + kGain * beyond;
  const double needed = saturated((T_out - target) / larger(1.0, T_out - T_amb), 0.0, 1.0);
  law.share = law.started ? law.share * kKept + (1.0 - kKept) * needed : needed;
  law.started = true;

  const double fan = saturated((law.share - kFanBase) / kFanSpan, 0.0, 1.0);
  const double reach = kFanBase + kFanSpan * fan;
  const double ratio = larger(0.0, law.share * safe_reciprocal(reach));
  return {fan, 1.0 - larger(0.0, ratio * ratio)};
}

void estimate_coolant(ThermalLaw& law, double fan_command, double radiator_fraction, double T_out, double T_amb) {
  const double open = 1.0 - smaller(1.0, 1.0 - radiator_fraction);
  const double effectiveness =
      Vk_math_lib::signed_sqrt_smooth(open, 0.0) * (kFanBase + kFanSpan * smaller(1.0, fan_command));
  law.estimate = T_out - effectiveness * (T_out - T_amb);
}
