#pragma once

/// Host of the child blocks through which the model reaches the property, pressure drop and heat exchange libraries.
///
/// A child block is one of three adaptors (Vk_fl_prop_sfun, Vk_fl_SingPDrop_sfun, Vk_hexch_NTU_Method_sfun) with
/// parameters of its own. Its inputs are pointers to the cells that it reads, one an element, so that they can lie
/// scattered; each of its output ports is a row of cells that it writes. Wiring is resolved once, at set-up.

#include <array>
#include <cstdint>
#include <span>

#include "Vk_lib/Vk_fl_prop_lib/fl_prop_calc.h"

struct ChildBlock;

/// A constant parameter: number of rows, number of columns, then the values in column order. A scalar is 1, 1, value;
/// a text has one character a value.
using ParameterArray = const double*;
inline constexpr std::size_t kParameterHead = 2;  ///< elements ahead of a parameter's values

/// First value of a parameter as a whole number, cut towards zero; INT32_MIN if it does not fit.
std::int32_t parameter_code(ParameterArray parameter);

/// The way from a child to its model.
struct BlockInformation {
  const char** error_status;      ///< a child that fails points it at its reason
  unsigned char* stop_requested;  ///< a child may set it
  const double* time;             ///< model time [s]
};

/// The entries of an adaptor. An entry that an adaptor does not have is null.
struct BlockMethods {
  void (*mdlInitializeSizes)(ChildBlock* child);
  void (*mdlInitializeSampleTimes)(ChildBlock* child);
  void (*mdlStart)(ChildBlock* child);
  void (*mdlOutputs)(ChildBlock* child, int task);
  void (*mdlTerminate)(ChildBlock* child);
};

/// What a property block holds from mdlStart on.
struct PropertyRecord {
  Vk_fl_prop_lib::Fl_data fluid;
  std::int32_t code;          ///< property code
  bool live;                  ///< between mdlStart and mdlTerminate
  std::array<char, 32> name;  ///< the fluid's, as a text with an end
};

inline constexpr std::size_t kMaxInputs = 13, kMaxPorts = 5;
inline constexpr std::int32_t kBlockVersion = 8480229;

struct ChildBlock {
  PropertyRecord* work;                          ///< null until mdlStart; stays after mdlTerminate
  std::array<const double*, kMaxInputs> inputs;  ///< of all input ports, in port order
  std::array<double*, kMaxPorts> outputs;        ///< first cell of each output port
  BlockMethods methods;
  PropertyRecord record;
  std::int32_t input_ports, output_ports;
  std::array<std::int32_t, kMaxPorts> input_width, output_width;
  std::span<const ParameterArray> parameters;
  std::int32_t expected_parameters;
  double sample_time, offset;  ///< s; -1.0 inherits
  const BlockInformation* information;
  ChildBlock *parent, *root;
  const char *name, *path;
  std::int32_t version;
};

/// What the model gives to a child.
struct ChildDescription {
  void (*registration)(ChildBlock* child) = nullptr;
  const char* name = nullptr;
  const char* path = nullptr;
  std::span<const ParameterArray> parameters{};
  std::span<const double* const> inputs{};  ///< cells of the elements of all input ports, in port order
  std::span<double* const> outputs{};       ///< first cell of each output port
};

/// Builds a child: its wiring, then the registration function, mdlInitializeSizes and mdlInitializeSampleTimes. The
/// description's arrays of parameters must last; the other arrays are copied. A child with another number of parameters
/// than its adaptor takes gets no ports and is neither started nor evaluated.
void set_up(ChildBlock& child, const ChildDescription& description, const BlockInformation& information);

/// Calls mdlStart of each child that has one, until one sets the model's error status.
void start(std::span<ChildBlock> children, const BlockInformation& information);

/// Calls mdlTerminate of each child; does nothing for children that were never set up.
void terminate(std::span<ChildBlock> children);

/// Evaluates the child. On a failure its outputs stay as they were and the model's error status tells the reason. Does
/// nothing for a child that was never set up.
inline void run(ChildBlock& child) {
  if (child.methods.mdlOutputs != nullptr) child.methods.mdlOutputs(&child, 0);
}

// The adaptors: each fills the method table.

/// Fluid properties. Parameters: fluid type code, fluid name, coefficient vector, property code (0: all), concentration
/// of a brine [percent]. One input port T [K], P [Pa] and, for moist air, humidity ratio [kg/kg]; one output port.
void Vk_fl_prop_sfun(ChildBlock* child);

/// Singular pressure drop. Parameter: method, 1 SingPDrop_ksi_beta, 2 SingPDrop_BSV, any other: outputs 0.0. Input
/// ports: A [m2], D [m], ksi, beta, Re_crit, Cq; v [m3/kg], mu [Pa s], Cp, Cv [J/(kg K)], T [K]; P1, P2 [Pa]. Output
/// ports: mass flow [kg/s], volume flow [m3/s], Reynolds number.
void Vk_fl_SingPDrop_sfun(ChildBlock* child);

/// Heat exchanger by effectiveness and NTU. Parameters: flow type, shells, mixing of fluid 1, mixing of fluid 2. Input
/// ports: flow [kg/s], Cp [J/(kg K)], T [K] of fluid 1; UA [W/K]; the same of fluid 2. Output ports: heat flow [W],
/// largest heat flow [W], effectiveness, NTU, and (T1 - T2) times each capacity flow [W].
void Vk_hexch_NTU_Method_sfun(ChildBlock* child);

/// The one sample time of all adaptors: inherited, without offset.
void initialize_sample_times(ChildBlock* child);
