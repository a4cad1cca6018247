#include "runtime/block_host.h"

#include <algorithm>
#include <iterator>
#include <limits>

std::int32_t parameter_code(ParameterArray parameter) {
  const double value = parameter[kParameterHead];
  const bool fits = value > -2147483649.0 && value < 2147483648.0;
  return fits ? static_cast<std::int32_t>(value) : std::numeric_limits<std::int32_t>::min();
}

void set_up(ChildBlock& child, const ChildDescription& description, const BlockInformation& information) {
  child = ChildBlock{};
  child.information = &information;
  std::ranges::copy(description.inputs, child.inputs.begin());
  std::ranges::copy(description.outputs, child.outputs.begin());
  child.name = description.name;
  child.path = description.path;
  child.root = &child;
  child.version = kBlockVersion;
  child.parameters = description.parameters;
  description.registration(&child);
  child.methods.mdlInitializeSizes(&child);
  child.methods.mdlInitializeSampleTimes(&child);
  child.sample_time = child.offset = 0.0;  // inherited from the model: continuous
  if (std::ssize(child.parameters) != child.expected_parameters) child.methods = {};
}

void start(std::span<ChildBlock> children, const BlockInformation& information) {
  for (ChildBlock& child : children) {
    if (child.methods.mdlStart == nullptr) continue;
    child.methods.mdlStart(&child);
    if (*information.error_status != nullptr) return;
  }
}

void terminate(std::span<ChildBlock> children) {
  for (ChildBlock& child : children) {
    if (child.methods.mdlTerminate != nullptr) child.methods.mdlTerminate(&child);
  }
}

void initialize_sample_times(ChildBlock* child) {
  child->sample_time = -1.0;
  child->offset = 0.0;
}
