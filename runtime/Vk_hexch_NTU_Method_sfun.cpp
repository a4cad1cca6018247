#include "kernels/ntu_method.h"
#include "runtime/block_host.h"

namespace {

void initialize_sizes(ChildBlock* child) {
  child->expected_parameters = 4;
  if (child->parameters.size() != 4) return;
  child->input_ports = 3;
  child->output_ports = 5;
  child->input_width = {3, 1, 3};
  child->output_width = {1, 1, 1, 1, 2};
}

void outputs(ChildBlock* child, int /*task*/) {
  enum Input { flow1, Cp1, T1, UA, flow2, Cp2, T2 };
  enum Output { Q, Qmax, effectiveness, NTU, capacity_heat };
  const auto in = [&](Input i) { return *child->inputs[i]; };
  const auto code = [&](std::size_t i) { return parameter_code(child->parameters[i]); };
  const auto& out = child->outputs;
  double Q1max = 0.0, Q2max = 0.0;
  Vk_hexch_lib::phiNTU(in(flow1), in(Cp1), in(T1), in(flow2), in(Cp2), in(T2), in(UA), out[Q], out[Qmax], &Q1max,
                       &Q2max, out[NTU], out[effectiveness], code(0), code(1), code(2), code(3));
  out[capacity_heat][0] = Q1max;
  out[capacity_heat][1] = Q2max;
}

void terminate(ChildBlock* /*child*/) {}

}  // namespace

void Vk_hexch_NTU_Method_sfun(ChildBlock* child) {
  child->methods = {initialize_sizes, initialize_sample_times, nullptr, outputs, terminate};
}
