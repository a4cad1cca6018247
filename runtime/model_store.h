#pragma once

/// The one model store: the model record, the continuous states, the outputs and the tunable parameters. There is one
/// of each in the process. Tessera_initialize builds it anew, but for Tessera_P, which holds its start values at load
/// and keeps what is written.
///
/// The block signals (Tessera_B) and the discrete work (Tessera_DW) belong to the plant: see model/signals.h.

#include <array>
#include <cstdint>

#include "model/tables/catalogue.h"

using StateVector = std::array<double, kStateCount>;

struct ModelRecord;

/// Work of the integrator: the state at the start of the step and the derivatives of its three stages.
struct SolverData {
  StateVector y, f0, f1, f2;
};

/// What the integrator knows of the model.
struct SolverInfo {
  ModelRecord* model;  ///< null until Tessera_initialize has built the store
  std::int32_t* step_mode;
  SolverData* data;
  const char* name;
  double stop_time;  ///< end of the present major step, s
  double* step_size;
  double fixed_step_size;
  double** derivatives;  ///< where Tessera_derivatives writes
  double* time;          ///< entry 0 is the model time
  double* states;
  const char** error_status;
};

/// Counts ticks in 64 bits, as two words.
struct TickCounter {
  std::uint32_t low, high;
};

inline constexpr double kBaseStep = 0.001;  ///< the model step, s

inline constexpr std::int32_t kMinorStep = 0;
inline constexpr std::int32_t kMajorStep = 1;
inline constexpr int kTaskCount = 5;

/// The model record. Task 0 is continuous; tasks 1 to 4 tick every 0.001, 0.01, 0.1 and 1 s.
struct ModelRecord {
  const char* errorStatus;  ///< text of the latest failure of a block, or null
  SolverInfo solver;
  SolverData solver_data;
  double* derivatives;
  std::int32_t step_mode;
  unsigned char stopRequested;
  double stop_time;  ///< -1.0: none
  double step_size, base_step_size;
  std::array<TickCounter, 3> ticks;  ///< of tasks 0, 1 and 2
  unsigned char first_initialization;
  std::array<std::uint16_t, kTaskCount> task_counter;  ///< a task hits while its counter is 0; 0 and 1 never move
  std::array<std::int32_t, kTaskCount> sample_hit;
  std::array<double, kTaskCount> sample_time, offset;
  std::array<std::int32_t, kTaskCount> task_id;
  std::array<double, kTaskCount> time;  ///< entry 0 is the model time, s
};

/// The tunable parameters: the real inputs, then their gates.
struct TunableParameters {
  std::array<double, kInputCount> real;
  std::array<unsigned char, kInputCount> boolean;
};

extern ModelRecord Tessera_M_;
extern ModelRecord* const Tessera_M;
extern StateVector Tessera_X;
extern std::array<double, kOutputCount> Tessera_Y;
extern TunableParameters Tessera_P;

/// Builds the store anew and starts the model at time 0. A failure shows in Tessera_M->errorStatus only.
void Tessera_initialize();

/// One evaluation of the model. In major mode it also writes the memories, integrates to the end of the model step and
/// advances the clock. On a store that was never built it does nothing.
void Tessera_step();

/// Writes the derivatives of all states, from the signals of the last evaluation, to where the solver information
/// points, which is neither among the states nor among the signals.
void Tessera_derivatives();

/// Ends every child block.
void Tessera_terminate();

/// Keeps the outputs of a major step (owned by the FMI shell).
void fmu_LogOutput();
