#pragma once

/// The gas network as rows: who holds gas, what joins them, and who feeds whom.

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "model/tables/catalogue.h"

/// What a gas's first species is; the second is nitrogen, the third water vapour.
enum class GasKind { hydrogen, air };

// ---- Names ---------------------------------------------------------------------------------------------------------

namespace gas_node {
/// The places where there is gas: the volumes, then the two whose state is given.
enum Index : std::size_t {
#define VOLUME(id, ...) id,
#include "model/tables/gas_network.def"
  ambient,       ///< the air outside
  bleed_outlet,  ///< the fixed outside of the bleed valve
};
}  // namespace gas_node
inline constexpr std::size_t kVolumeCount = gas_node::ambient;
inline constexpr std::size_t kGasNodeCount = kVolumeCount + 2;

namespace restriction {
enum Index : std::size_t {
#define ORIFICE(id, ...) id,
#define BERNOULLI(id, ...) id,
#include "model/tables/gas_network.def"
};
}  // namespace restriction

namespace gas_flow {
/// The flows into gas nodes.
enum Index : std::size_t {
#define ORIFICE(id, ...) id##_A, id##_B,
#define BERNOULLI(id, ...) id##_A, id##_B,
#define FLOW(id, text) id,
#include "model/tables/gas_network.def"
  count
};
}  // namespace gas_flow
inline constexpr std::size_t kGasFlowCount = gas_flow::count;

// ---- Volumes -------------------------------------------------------------------------------------------------------

struct VolumePorts {
  std::size_t count = 0;
  std::array<gas_flow::Index, 4> flows{};

  constexpr std::span<const gas_flow::Index> list() const { return {flows.data(), count}; }
};

/// A volume as its laws see it.
struct GasVolume {
  GasKind gas;
  double V;   ///< m3
  double P0;  ///< Pa, held under FixedPressure
  bool FixedComposition, FixedPressure;
};

struct VolumeRow : GasVolume {
  const char* path;
  bool WithPurge;
  state::Index m1, T, purge;  ///< its states; the masses of slots 2 and 3 follow m1
  VolumePorts ports;          ///< what feeds it, in the order of the sum
};

inline constexpr auto kVolumes = [] {
  using enum GasKind;
  using namespace gas_flow;
  constexpr auto ports = [](auto... flows) { return VolumePorts{sizeof...(flows), {flows...}}; };
  return std::to_array<VolumeRow>({
#define PORTS(...) ports(__VA_ARGS__)
#define VOLUME(id, path, gas, V, P0, FixedComposition, FixedPressure, WithPurge, ...)                          \
  {{gas, V, P0, FixedComposition, FixedPressure}, path, WithPurge, state::id##_m1, state::id##_T, state::id##_purge, \
   __VA_ARGS__},
#include "model/tables/gas_network.def"
#undef PORTS
  });
}();
static_assert(kVolumes.size() == kVolumeCount && kVolumeCount == 14);

/// Mass fractions at the start, by gas; also those held under FixedComposition.
constexpr std::array<double, 3> start_fractions(GasKind gas) {
  return gas == GasKind::hydrogen ? std::array{1.0, 0.0, 0.0} : std::array{0.23, 0.77, 0.0};
}

// ---- Restrictions --------------------------------------------------------------------------------------------------

enum class RestrictionLaw { orifice, bernoulli };

struct RestrictionRow {
  const char* path;
  RestrictionLaw law;
  GasKind gas;
  gas_node::Index A, B;
  double coefficient;           ///< m2: area of an orifice, flow coefficient of the Bernoulli law
  state::Index opening;         ///< of an orifice: the state that holds it
  gas_flow::Index FlowA, FlowB;  ///< into the node at A, into the node at B
};

inline constexpr auto kRestrictions = [] {
  using enum GasKind;
  using enum RestrictionLaw;
  return std::to_array<RestrictionRow>({
#define ORIFICE(id, path, gas, A, B, area, opening)                                                          \
  {path, orifice, gas, gas_node::A, gas_node::B, area, state::opening, gas_flow::id##_A, gas_flow::id##_B},
#define BERNOULLI(id, path, gas, A, B, C)                                                                 \
  {path, bernoulli, gas, gas_node::A, gas_node::B, C, state::Index{}, gas_flow::id##_A, gas_flow::id##_B},
#include "model/tables/gas_network.def"
  });
}();
static_assert(kRestrictions.size() == 12);

/// True if the volume's ports take in the flow.
constexpr bool is_fed_by(gas_node::Index volume, gas_flow::Index flow) {
  return volume >= kVolumeCount || std::ranges::count(kVolumes[volume].ports.list(), flow) == 1;
}
static_assert(std::ranges::all_of(kRestrictions, [](const RestrictionRow& row) {
  return is_fed_by(row.A, row.FlowA) && is_fed_by(row.B, row.FlowB);
}), "a restriction's flows enter the volumes at its ports");

// ---- Valve actuators -----------------------------------------------------------------------------------------------

struct ActuatorRow {
  state::Index position;
  double closing_time, opening_time;  ///< time constants [s]
};

inline constexpr ActuatorRow kH2_Valve1Actuator = {state::H2_Valve1_position, 0.03333333333333333, 0.03333333333333333};
inline constexpr ActuatorRow kH2_Valve2Actuator = {state::H2_Valve2_position, 0.43333333333333335, 0.019999999999999997};
inline constexpr ActuatorRow kMoistGasValveActuator = {state::MoistGasValve_position, 0.016666666666666666,
                                                       0.016666666666666666};
