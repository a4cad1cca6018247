#include "kernels/ntu_method.h"

#include <gtest/gtest.h>

#include <climits>

namespace Vk_hexch_lib {
namespace {

struct Result {
  double Q, Qmax, Q1max, Q2max, NTU, e;
};

Result run(int type, double C1, double T1, double C2, double T2, double UA, int shells = 1, int mix1 = 1,
           int mix2 = 1) {
  Result r;
  phiNTU(C1 / 2, 2, T1, C2 / 4, 4, T2, UA, &r.Q, &r.Qmax, &r.Q1max, &r.Q2max, &r.NTU, &r.e, type, shells, mix1, mix2);
  return r;
}

// Effectiveness at NTU = 2 and Cr = 0.5 or 1 from a numerical integration of each arrangement's balance equations; but
// type 10 is the correlation by hand (integrated: 0.7324, 0.6142) and type 7 at Cr = 1 the constant it is meant to be.
const struct {
  int type, shells, mix1, mix2;
  double half, one;
} kRows[] = {
    // clang-format off
    {5, 1, 1, 1, 0.8647, 0.8647}, {6, 1, 1, 1, 0.6335, 0.4908},  {7, 1, 1, 1, 0.7746, 1.0},
    {2, 1, 1, 1, 0.6931, 0.5568}, {8, 1, 1, 1, 0.6931, 0.5568},  {9, 1, 1, 1, 0.6931, 0.5568},
    {2, 2, 1, 1, 0.8760, 0.7153}, {9, 2, 1, 1, 0.8760, 0.7153},  {99, 1, 1, 1, 0, 0},
    {3, 1, 1, 1, 0.7388, 0.6154}, {10, 1, 1, 1, 0.7388, 0.6154}, {3, 1, 1, 2, 0.7020, 0.5788},
    {3, 1, 2, 1, 0.7175, 0.5788}, {11, 1, 1, 1, 0.7020, 0.5788}, {12, 1, 1, 1, 0.7175, 0.5788},
    {3, 1, 2, 2, 0.6908, 0.5516}, {13, 1, 1, 1, 0.6908, 0.5516},
    // clang-format on
};

TEST(PhiNTU, GivesTheHeatOfEveryArrangementFromEitherSide) {
  for (const auto& [type, shells, mix1, mix2, half, one] : kRows) {
    SCOPED_TRACE(testing::Message() << "type " << type << " mixing " << mix1 << mix2);
    EXPECT_NEAR(run(type, 100, 350, 100, 300, 200, shells, mix1, mix2).e, one, 6e-5);
    const Result r = run(type, -50, 350, -100, 300, 100, shells, mix1, mix2);
    EXPECT_NEAR(r.e, half, 6e-5);
    EXPECT_EQ(r.NTU, 2.0);
    EXPECT_EQ(r.Qmax, 2500.0);
    EXPECT_EQ(r.Q1max, 2500.0);
    EXPECT_EQ(r.Q2max, 5000.0);
    EXPECT_EQ(r.Q, 2500 * r.e);
    EXPECT_EQ(run(type, 100, 300, 50, 350, 100, shells, mix2, mix1).Q, -r.Q);
  }
}

TEST(PhiNTU, ReadsSignsForType1AndTheEffectivenessForType4) {
  for (const double s : {1.0, -1.0}) {
    EXPECT_EQ(run(1, s * 80, 9, s * 100, 1, 90).e, run(6, 80, 9, 100, 1, 90).e);
    EXPECT_EQ(run(1, s * 80, 9, -s * 100, 1, 90).e, run(7, 80, 9, 100, 1, 90).e);
  }
  for (const double UA : {1.5, 0.25, -1.0}) {
    EXPECT_EQ(run(4, 50, 9, 100, 1, UA).Q, UA > 1 ? 400 : UA < 0 ? 0 : 400 * UA);
    EXPECT_EQ(run(4, 50, 9, 100, 1, UA).NTU, 0.0);
  }
  EXPECT_EQ(run(7, 0, 9, 0, 1, 10).Q, 0.0);  // both fluids at rest
}

TEST(Correlations, HaveTheirLimits) {
  for (const auto e : {NTUparallel, NTUcounterflow, NTUoneshell, NTUunmixed, NTUmixed, NTUcmaxmixed, NTUcmaxunmixed}) {
    EXPECT_NEAR(e(0.5, 0), 0, 1e-15);
    EXPECT_NEAR(e(1e-7, 1), NTUconst(1), 2e-7);
  }
  for (const int n : {1, 2, 5}) {  // counterflow shells in series are one counterflow
    EXPECT_NEAR(NTUnshell(0.4, 0.7, n, NTUcounterflow(0.4, 0.7)), NTUcounterflow(0.4, n * 0.7), 1e-12);
  }
  EXPECT_NEAR(NTUnshell(1, 0.7, INT_MIN, 0.5), 1, 1e-9);
}

}  // namespace
}  // namespace Vk_hexch_lib
