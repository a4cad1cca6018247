#include "model/thermal_supervision.h"

#include "model/law_rows.h"

namespace {

TEST(CoolantCondition, TimersFaultsAndResets) {
  constexpr double kNever = 20;
  const auto time = [](CoolantCondition::Watch watch) {
    return [watch](double mode, double enable, double T_in, double T_out) {
      CoolantCondition condition{};
      start(condition);
      EXPECT_TRUE(condition.fault[watch]);
      for (int i = 0; i < 200; ++i) {
        tick(condition, T_in, T_out, mode, enable);
        if (condition.fault[watch]) return 0.5 * (i / 5);  // s; the timer's sum may round to a tick more
      }
      return kNever;
    };
  };
  const auto inlet = time(CoolantCondition::inlet), outlet = time(CoolantCondition::outlet);
  const auto difference = time(CoolantCondition::difference);
  expect_law<4>(inlet, {{1, 1, 84, 60, 10}, {1, 1, 83, 60, kNever}, {1, 1, -20, 60, kNever}, {1, 1, -20.1, 60, 10}});
  expect_law<4>(outlet, {{2, 3, 60, 84, 10}, {2, 3, 60, 83, kNever}, {1, 1, 60, -20, kNever}, {1, 1, 60, -20.1, 10}});
  expect_law<4>(difference, {{1, 1, 60, 75.1, 5}, {1, 1, 60, 75, kNever}, {1, 1, 65, 60, kNever}, {1, 1, 65.1, 60, 5}});
  expect_law<4>(difference, {{1, 1, 80, 84, 5}, {1, 1, 84, 83, kNever}, {1, 1, kNaN, 60, 5}, {1, 1, 60, kNaN, 5}});
  for (const auto& range : {inlet, outlet}) {  // the range timers run by the enable output, the other one by the mode
    expect_law<4>(range, {{1, 1, kNaN, kNaN, 10}, {1, 0, 90, 90, kNever}, {0, 1, 90, 90, 10}});
  }
  expect_law<4>(difference, {{1, 0, 90, 90, 5}, {0, 1, 90, 90, kNever}});
  expect_law<4>(time(CoolantCondition::fixed), {{1, 1, kNaN, kNaN, kNever}});
  ConditionTimer timer{0.5, 0};
  const auto step = [&timer](double rate, double reset) { return tick(timer, rate, reset); };
  expect_law<2>(step, {{1, 0, 0.5}, {1, 1, 0}, {1, 0, 0}, {1, 0, 0.1}, {1, kNaN, 0}, {1, 0, 0}, {1, 0, 0.1}});
  expect_law<2>(step, {{1, -1, 0}, {1, 0, 0}, {11, 0, 0.1}, {-4, 0, 1}, {-7, 0, 0.6}, {0, 0, 0}});  // within 0 and 1
  const auto latch = [](double value, double before) { return timer_latch(value, before != 0); };
  expect_law<2>(latch, {{0.6, 0, 1}, {0.599, 0, 0}, {0.4, 1, 1}, {0.4, 0, 0}, {0.399, 1, 0}});
  CoolantCondition condition{};
  condition.timer.fill({0.6, 0});
  int ticks = 0;
  do tick(condition, 60, 60, 1, 1);
  while (condition.fault[CoolantCondition::outlet] && ++ticks < 5000);
  EXPECT_NEAR(ticks, 3334, 1);  // from 0.6 to 0.4 in 333 s
  const auto fault = [](double a, double b, double c, double d, double mode) {
    return coolant_fault({{}, {a != 0, b != 0, c != 0, d != 0}}, mode);
  };
  expect_law<5>(fault, {{1, 0, 0, 0, 1, 1}, {0, 1, 0, 0, kNaN, 1}, {0, 0, 1, 0, 2, 1}, {1, 1, 1, 0, 0, 0}});
  EXPECT_TRUE(fault(0, 0, 0, 1, 0));
}

TEST(ThermalSupervisor, FollowsItsChart) {
  ThermalSupervisor chart{};
  const auto state = [&chart](double run, double fault, double hot) {
    tick(chart, run, fault != 0, hot != 0);
    EXPECT_EQ(chart.mode, chart.state == ThermalSupervisor::Off ? 0 : chart.state);
    EXPECT_EQ(chart.enable, chart.state == ThermalSupervisor::Fault ? 3 : chart.mode);
    EXPECT_EQ(chart.auxiliary, chart.substate == ThermalSupervisor::Afterrun ? 1 : 0);
    return 10 * chart.state + chart.substate;
  };
  constexpr double kRun = 11, kAfter = 12, kFault = 20, kOff = 30;  // state and substate
  // The first tick only enters. A fault goes before a stop, and stays until one.
  expect_law<3>(state, {{1, 0, 0, kOff}, {1, 1, 0, kOff}, {3, 0, 0, kOff}, {1, 0, 1, kRun}, {0, 1, 0, kFault}});
  expect_law<3>(state, {{1, 0, 0, kFault}, {0, 1, 0, kOff}, {1, 0, 0, kRun}, {kNaN, 0, 0, kRun}, {0, 0, 1, kOff}});
  expect_law<3>(state, {{1, 0, 0, kRun}, {3, 0, 0, kAfter}, {3, 0, 0, kAfter}, {0, 0, 1, kAfter}, {1, 0, 0, kRun}});
  expect_law<3>(state, {{3, 0, 1, kAfter}, {0, 0, 0, kOff}, {1, 0, 1, kRun}, {3, 0, 1, kAfter}, {1, 1, 1, kFault}});
  expect_law<3>(state, {{0, 0, 1, kOff}, {1, 0, 1, kRun}, {3, 0, 1, kAfter}});
  int ticks = 0;
  while (state(0, 0, 1) == kAfter && ticks < 7000) ++ticks;
  EXPECT_NEAR(ticks, 5999, 1);  // 60 s
}

TEST(ThermalLaw, AsksTheFanFirstAndThenTheValve) {
  const auto expect = [](ThermalLaw law, const Rows<6>& rows) {
    for (const auto& [T_set, T_out, T_amb, share, fan, closure] : rows) {
      ThermalLaw next = law;
      const ThermalDemand demand = thermal_demand(next, T_set, T_out, T_amb);
      EXPECT_NEAR(next.filtered, law.filtered + 0.01 * (law.estimate - law.filtered), 1e-13);
      EXPECT_NEAR(next.share, share, 1e-13) << T_out;
      EXPECT_NEAR(demand.fan, fan, 1e-12) << T_out;
      EXPECT_NEAR(demand.closure, closure, 1e-11) << T_out;
    }
  };
  const auto closure = [](double share, double reach) { return 1 - std::pow(share / reach, 2); };
  expect({0, 0, 0, false}, {{65, 70, 20, 1, 1, closure(1, 0.2565)}});
  // Filtered to 60.1 degC: in the dead zone, beyond it; cold; hardly warmer than the air; the share with its 10 s.
  expect({60, 70, 0, false}, {{65, 65.5, 15.5, 0.108, 0.0085 / 0.157, 0}});
  expect({60, 70, 0, false}, {{68, 65, 15, 0.086, 0, closure(0.086, 0.0995)}, {62, 65, 15, 0.11, 0.0105 / 0.157, 0}});
  expect({60, 70, 0, false}, {{65, 50, 20, 0, 0, 1}, {60.5, 60.5, 60, 0.4, 1, closure(0.4, 0.2565)}});
  const double filtered = 0.05 + 0.02 * std::exp(-0.1 / 10.0);
  expect({60, 70, 0.07, true}, {{62.6, 62.6, 12.6, filtered, 0, closure(filtered, 0.0995)}});
  const auto estimate = [](double fan, double fraction) {
    ThermalLaw law{};
    estimate_coolant(law, fan, fraction, 70, 20);
    return law.estimate;
  };
  expect_law<2>(estimate, {{0, 1, 65.025}, {1, 0.25, 63.5875}, {1, 0, 70}, {2, 1, 57.175}, {0, -0.5, 70}});
}

}  // namespace
