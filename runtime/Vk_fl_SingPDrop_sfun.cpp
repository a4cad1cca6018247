#include "kernels/pressure_drop.h"
#include "runtime/block_host.h"

namespace {

void initialize_sizes(ChildBlock* child) {
  child->expected_parameters = 1;
  if (child->parameters.size() != 1) return;
  child->input_ports = child->output_ports = 3;
  child->input_width = {6, 5, 2};
  child->output_width = {1, 1, 1};
}

void outputs(ChildBlock* child, int /*task*/) {
  enum Input { A, D, ksi, beta, Re_crit, Cq, v, mu, Cp, Cv, T, P1, P2 };
  const auto in = [&](Input i) { return *child->inputs[i]; };
  double &Qm = *child->outputs[0], &Qv = *child->outputs[1], &Re = *child->outputs[2];
  const double rho = 1.0 / in(v);
  switch (parameter_code(child->parameters[0])) {
    case 1:
      Vk_pdrop_lib::SingPDrop_ksi_beta(in(P1)-in(P2), in(A), in(D), rho, in(mu), in(ksi), in(beta), in(Re_crit), &Qm,
                                       &Re);
      break;
    case 2:
      Vk_pdrop_lib::SingPDrop_BSV(in(P1), in(P2), in(A), in(D), in(T), in(Cp), in(Cv), in(mu), in(Cq), in(Re_crit), &Qm,
                                  &Re);
      break;
    default:
      Qm = Re = 0.0;
  }
  Qv = Qm / rho;
}

void terminate(ChildBlock* /*child*/) {}

}  // namespace

void Vk_fl_SingPDrop_sfun(ChildBlock* child) {
  child->methods = {initialize_sizes, initialize_sample_times, nullptr, outputs, terminate};
}
