#include <array>
#include <cstddef>

#include "runtime/block_host.h"

namespace {

enum Parameter { type, name, coefficients, code, concentration, parameter_count };

// The latest reason of a failure of any property block.
std::array<char, 256> message;

/// Number of values that the code 0 gives; 1 for a type that the library does not know.
std::int32_t vector_width(std::int32_t fluid_type) {
  const auto codes = static_cast<std::int32_t>(Vk_fl_prop_lib::property_codes(fluid_type).size());
  return codes > 0 ? codes : 1;
}

std::int32_t inputs(std::int32_t fluid_type) {
  if (fluid_type == 6) return 3;
  return fluid_type >= 1 && fluid_type <= 3 ? 2 : 1;
}

void initialize_sizes(ChildBlock* child) {
  child->expected_parameters = parameter_count;
  if (child->parameters.size() != parameter_count) return;
  const std::int32_t fluid_type = parameter_code(child->parameters[type]);
  child->input_ports = child->output_ports = 1;
  child->input_width[0] = inputs(fluid_type);
  child->output_width[0] = parameter_code(child->parameters[code]) == 0 ? vector_width(fluid_type) : 1;
}

void copy_text(ParameterArray parameter, std::array<char, 32>& text) {
  const double elements = parameter[0] * parameter[1];
  std::size_t n = 0;
  for (; n + 1 < text.size() && static_cast<double>(n) < elements; ++n) {
    const double character = parameter[kParameterHead + n];
    text[n] = character >= 32.0 && character < 127.0 ? static_cast<char>(character) : '?';
  }
  text[n] = '\0';
}

void start(ChildBlock* child) {
  const auto& parameters = child->parameters;
  PropertyRecord& record = child->record;
  copy_text(parameters[name], record.name);
  record.fluid = {.name = record.name.data(),
                  .type = parameter_code(parameters[type]),
                  .coeffs = parameters[coefficients] + kParameterHead,
                  .concentration = parameters[concentration][kParameterHead]};
  record.code = parameter_code(parameters[code]);
  record.live = true;
  child->work = &record;
}

void outputs(ChildBlock* child, int /*task*/) {
  if (child->work == nullptr) return;
  std::array<double, 3> in{};  // a type that takes fewer reads zeros
  for (std::size_t i = 0; i < static_cast<std::size_t>(child->input_width[0]); ++i) in[i] = *child->inputs[i];
  const PropertyRecord& record = *child->work;
  if (Vk_fl_prop_lib::fl_prop_calc(&record.fluid, in.data(), record.code, child->outputs[0], message.data())) {
    *child->information->error_status = message.data();
  }
}

void terminate(ChildBlock* child) {
  if (child->work != nullptr) child->work->live = false;
}

}  // namespace

void Vk_fl_prop_sfun(ChildBlock* child) {
  child->methods = {initialize_sizes, initialize_sample_times, start, outputs, terminate};
}
