#include "kernels/pressure_drop.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Vk_pdrop_lib {
namespace {

struct Flow {
  double Qm, Re, f;
};

double f_of_Lambda(double s, double k) { return FrictionFactor_f_Lambda(s * std::sqrt(3 / 0.02), k, 3, 0.02); }

TEST(FrictionFactor, FollowsTheLawOfEachRegime) {
  for (const double Re : {0.0, 1e-4, 0.00011, 0.1, 200.0}) {
    const double f = Re > 1e-4 ? 64 / Re : 640000;
    EXPECT_NEAR(FrictionFactor_f_Re(Re, 1e-4), f, 1e-12 * f);
    EXPECT_NEAR(f_of_Lambda(8 * std::sqrt(Re), 1e-4), f, 1e-12 * f);
  }
  const double transition = 8 * 2400.0 * 2400.0 / (37530.0 * 37530.0);  // least disturbed by its neighbours at 2400
  EXPECT_NEAR(FrictionFactor_f_Re(2400, 0), transition, 0.01 * transition);
  EXPECT_NEAR(f_of_Lambda(2400 * std::sqrt(transition), 0), transition, 0.01 * transition);
  for (const double k : {0.0, 1e-5, 1e-3}) {
    for (const double Re : {1e4, 1e5, 1e7}) {
      double f = 0.02;  // Colebrook
      for (int i = 0; i < 100; ++i) f = 1 / std::pow(2 * std::log10(2.51 / (Re * std::sqrt(f)) + k / 3.7), 2);
      EXPECT_NEAR(FrictionFactor_f_Re(Re, k), f, 0.01 * f) << Re << ' ' << k;
      EXPECT_NEAR(f_of_Lambda(Re * std::sqrt(f), k), f, 1e-5 * f) << Re << ' ' << k;
    }
  }
}

Flow ksi_beta(double dP, double beta, double ksi = 3, double Re_crit = 2000, double A = 1e-4, double D = 0.01) {
  Flow q;
  SingPDrop_ksi_beta(dP, A, D, 1000, 1e-3, ksi, beta, Re_crit, &q.Qm, &q.Re);
  return q;
}

TEST(SingPDropKsiBeta, TakesTheLowerOfALineAndAPowerThatMeetAtTheCriticalReynoldsNumber) {
  for (const double beta : {0.5, 1.0, 1.75, 2.0}) {
    for (const double x : {0.01, 0.5, 1.0, 2.0, 100.0}) {
      const double dP = x * 3 * 1000 * std::pow(0.2, beta) / 2;  // x = 1: Re = 2000, 0.2 m/s
      const double Re = 2000 * std::fmin(x, std::pow(x, 1 / beta));
      EXPECT_NEAR(ksi_beta(dP, beta).Re, Re, 1e-12 * Re) << beta << ' ' << x;
      EXPECT_NEAR(ksi_beta(dP, beta).Qm, 1e-5 * Re, 1e-17 * Re);  // rho A V
      EXPECT_EQ(ksi_beta(-dP, beta).Qm, -ksi_beta(dP, beta).Qm);
    }
  }
  EXPECT_EQ(ksi_beta(5, 2, -1).Qm, ksi_beta(5, 2, 1e-10).Qm);
  EXPECT_EQ(ksi_beta(5, -1).Qm, ksi_beta(5, 0.1).Qm);
  EXPECT_EQ(ksi_beta(1e-4, 2, 3, 0).Qm, ksi_beta(1e-4, 2, 3, 10).Qm);
}

Flow air(double P1, double P2, double Re_crit = 0, double A = 1e-4, double D = 0.01) {
  Flow q;
  SingPDrop_BSV(P1, P2, A, D, 300, 1004.5, 717.5, 1.8e-5, 0.7, Re_crit, &q.Qm, &q.Re);
  return q;
}

TEST(SingPDropBSV, PassesTheIsentropicFlowOfAir) {
  const double choked = 0.7 * 0.0404184 * 1e5 / std::sqrt(300) * 1e-4;  // sqrt(1.4 / 287) (5 / 6)^3 P0 / sqrt(T0)
  for (const double P2 : {1.0, 52828.0}) EXPECT_NEAR(air(1e5, P2, 1000).Qm, choked, 1e-5 * choked);
  for (const double pr : {0.53, 0.8, 0.99}) {
    const double flux = std::sqrt(7 / (287.0 * 300) * (std::pow(pr, 2 / 1.4) - std::pow(pr, 2.4 / 1.4)));
    EXPECT_NEAR(air(1e5, pr * 1e5).Qm, 7.0 * flux, 1e-12);
    EXPECT_NEAR(air(1e5, pr * 1e5).Re, 0.01 * flux * 1e5 / 1.8e-5, 1e-6);  // without Cq
    EXPECT_EQ(air(pr * 1e5, 1e5).Qm, -air(1e5, pr * 1e5).Qm);
  }
  const double dP = std::pow(1500 * 1.8e-5 / 0.01, 2) * 287 * 300 / 2e5;  // gives Re = 1500 at 1 bar
  EXPECT_NEAR(air(1e5 + dP / 10, 1e5, 1500).Re, 150, 0.01);
  EXPECT_EQ(air(1e5 + 2 * dP, 1e5, 1500).Qm, air(1e5 + 2 * dP, 1e5).Qm);
  const double line = 1e5 * (1 - std::pow(1 - std::pow(5.0 / 6, 5) / 6, 3.5));  // Pa, to the Reynolds number of choking
  EXPECT_NEAR(air(1e5, 99999, 1e9).Re / air(1e5, 1e4).Re, 1 / line, 1e-9);
}

TEST(OrificeDiameter, PassesTheFlowItWasAskedFor) {
  for (const double Q : {0.0, 1e-9, 1e-6, 1e-3}) {  // far below, near and far above the full discharge coefficient
    const double D = D_CircOrif_RefPt_tanhCq(-Q, -2e4, 1000, 1e-6, 0.7, 1e3);
    EXPECT_NEAR(0.7 * std::tanh(std::sqrt(40) * D / 5e-4) * std::acos(-1) / 4 * D * D * std::sqrt(40), Q,
                1.0001e-4 * Q);
  }
}

Flow pipe(double dP, double dz = 0, double eps = 0, double D = 0.02) {
  Flow q;
  RegPDrop_QfDP(dP, 3e-4, D, 5, 1e-5, 1000, 1e-3, dz, eps, &q.Qm, &q.Re, &q.f);
  return q;
}

double drop(double Qm) {
  double dP, Re, f;
  RegPDrop_DPfQ(Qm, 3e-4, 0.02, 5, 1e-5, 1000, 1e-3, &dP, &Re, &f);
  return dP;
}

TEST(RegPDrop, DropAndFlowOfAPipeInvertEachOther) {
  for (const double dP : {0.0, 1e-9, 1e-3, 1.0}) {  // Hagen-Poiseuille, at 1e-9 Pa below the least friction factor
    EXPECT_NEAR(pipe(dP).Qm, 3e-4 * 1000 * 0.02 * 0.02 * dP / (32 * 1e-3 * 5), 1e-12 * dP);
    EXPECT_NEAR(drop(-pipe(dP).Qm), -dP, 1e-12 * dP);
  }
  EXPECT_EQ(pipe(19620, 2).Qm, 0);  // the weight of 2 m
  for (const double dP : {1e3, 1e6}) {
    EXPECT_NEAR(drop(pipe(dP).Qm), dP, 0.02 * dP);  // Churchill against Colebrook
    EXPECT_NEAR(pipe(dP).Re, pipe(dP).Qm / 3e-4 * 0.02 / 1e-3, 1e-6);
    EXPECT_EQ(pipe(-dP).Qm, -pipe(dP).Qm);
    EXPECT_NEAR(pipe(dP + 19620, 2).Qm, pipe(dP).Qm, 1e-10);
    EXPECT_NEAR(pipe(dP, 0, 2 * dP).Qm, pipe(dP).Qm / std::sqrt(2), 1e-7);  // on the line of the smoothed root
  }
}

TEST(PressureDrop, NothingFlowsAtEqualPressuresOrWithoutACrossSection) {
  for (const Flow& q : {ksi_beta(0, 2), ksi_beta(5, 2, 3, 10, 0), ksi_beta(5, 2, 3, 10, 1, 0), air(1e5, 1e5, 1500),
                        air(2e5, 1e5, 0, 0), air(2e5, 1e5, 0, 1, -1), pipe(1e5, 0, 0, 0)}) {
    EXPECT_TRUE(q.Qm == 0 && q.Re == 0) << q.Qm << ' ' << q.Re;
  }
}

}  // namespace
}  // namespace Vk_pdrop_lib
