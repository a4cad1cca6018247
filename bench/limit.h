#pragma once

/// The arithmetic that an evaluation of the plant cannot do without when all of the plant moves, and nothing else, with
/// this compiler, these flags and this mathematics library. What an evaluation may take from the one before (ambient
/// air that stands still) or from load (the powers of choked orifices) is done here each time.
///
/// One evaluation needs 25 exp, 9 log, 10 real powers, 21 square roots, 2 tanh, 8 atan, 570 divisions, 62 polynomials
/// and 28 table searches, when calls on equal arguments are shared and values that nothing reads are left out. They are
/// done here on the quantities that the plant has them on and wait for each other as they do there: volumes before
/// restrictions, restrictions before balances, balances before the next evaluation.

#include <array>

/// What is carried from one evaluation to the next.
struct LimitState {
  std::array<std::array<double, 14>, 4> volume;  ///< masses of three species [kg] and temperature [K] of each
  std::array<double, 6> coolant;                 ///< temperatures [K]
  std::array<double, 8> electrical;
};

LimitState limit_start();

/// One evaluation of the mix; moves the state a little. Three of them stand for one model step.
void limit_evaluation(LimitState& state);

/// Sum over the state, which depends on every operation done.
double checksum(const LimitState& state);
