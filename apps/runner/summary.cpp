#include "apps/runner/summary.h"

#include <cstdio>

namespace runner {
namespace {

constexpr double kLowerHeatingValue = 119.96e6;  // J/kg of hydrogen, at 25 degC

template <class... Values>
std::string format(const char* pattern, Values... values) {
  char text[200];
  std::snprintf(text, sizeof text, pattern, values...);
  return text;
}

}  // namespace

void Summary::Extremes::add(Milliseconds time, std::span<const double> values) {
  for (const std::size_t column : columns) {
    const double value = values[column];
    if (least.column == kNone || value < least.value) least = {value, column, time};
    if (largest.column == kNone || value > largest.value) largest = {value, column, time};
  }
}

Summary::Summary(const std::vector<const Variable*>& outputs)
    : outputs_(outputs),
      distance_(column("vehicle.distance", "km")),
      hydrogen_(column("hydrogen_account.mass", "kg")),
      power_(column("stack.power", "W")),
      hv_battery_(column("hv_battery.state_of_charge", "%")),
      lv_battery_(column("lv_battery.state_of_charge", "%")),
      tank_(column("tank.pressure", "bar")) {
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    const Variable& output = *outputs[i];
    if (output.name.find("setpoint") != std::string::npos || output.name.find("difference") != std::string::npos) {
      continue;
    }
    if (output.unit == "degC") temperatures_.columns.push_back(i);
    if (output.unit == "bar" && i != tank_) pressures_.columns.push_back(i);
  }
}

std::size_t Summary::column(std::string_view name, std::string_view unit) const {
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    if (outputs_[i]->name == name && outputs_[i]->unit == unit) return i;
  }
  return kNone;
}

void Summary::add(Milliseconds time, std::span<const double> values) {
  if (rows_ == 0) {
    first_.assign(values.begin(), values.end());
  } else if (power_ != kNone) {
    stack_energy_ += 0.5 * (last_[power_] + values[power_]) * seconds(time - last_time_);
  }
  last_.assign(values.begin(), values.end());
  last_time_ = time;
  ++rows_;
  temperatures_.add(time, values);
  pressures_.add(time, values);
}

std::string Summary::extremes_text(const Extremes& extremes, const char* unit) const {
  const auto text = [&](const Extremes::Value& value) {
    return format("%.4g %s (%s at %s s)", value.value, unit, outputs_[value.column]->name.c_str(),
                  seconds_text(value.time).c_str());
  };
  return text(extremes.least) + " to " + text(extremes.largest);
}

std::vector<Summary::Figure> Summary::figures() const {
  std::vector<Figure> figures;
  if (rows_ < 2) return figures;

  const double distance = distance_ != kNone ? last(distance_) - first(distance_) : 0.0;  // km
  const double hydrogen = hydrogen_ != kNone ? first(hydrogen_) - last(hydrogen_) : 0.0;  // kg
  if (distance_ != kNone) figures.push_back({"distance", format("%.2f km", distance)});
  if (hydrogen_ != kNone) {
    std::string text = format("%.4f kg", hydrogen);
    if (distance > 0.1) text += format(" (%.3g kg/100 km)", 100.0 * hydrogen / distance);
    figures.push_back({"hydrogen used", text});
  }
  if (power_ != kNone) {
    std::string text = format("%.3f kWh", stack_energy_ / 3.6e6);
    if (hydrogen > 0.0) {
      text += format(", mean efficiency %.1f %% (lower heating value)",
                     100.0 * stack_energy_ / (hydrogen * kLowerHeatingValue));
    }
    figures.push_back({"stack energy", text});
  }
  const auto from_to = [&](const char* title, std::size_t column, const char* unit) {
    if (column == kNone) return;
    figures.push_back(
        {title, format("%.4g %s at the start, %.4g %s at the end", first(column), unit, last(column), unit)});
  };
  from_to("HV battery", hv_battery_, "%");
  from_to("LV battery", lv_battery_, "%");
  from_to("tank", tank_, "bar");
  if (!temperatures_.columns.empty()) figures.push_back({"temperatures", extremes_text(temperatures_, "degC")});
  if (!pressures_.columns.empty()) figures.push_back({"pressures", extremes_text(pressures_, "bar")});
  return figures;
}

}  // namespace runner
