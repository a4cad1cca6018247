#include "Vk_lib/Vk_fl_prop_lib/fl_class/Brine.h"

#include <bit>
#include <cmath>

#include "fluids/liquid_identities.h"

namespace Vk_fl_prop_lib {
namespace {

struct Named {
  const char* name;
  const BrineVector& vector;
};
void PrintTo(const Named& brine, std::ostream* os) { *os << brine.name; }

class EveryBrine : public QuietTest, public ::testing::WithParamInterface<Named> {
 protected:
  const BrineVector& vector = GetParam().vector;
  CBrine brine{vector};
};
INSTANTIATE_TEST_SUITE_P(Brines, EveryBrine,
                         ::testing::Values(Named{"glycerol", kGlycerol_Water},
                                           Named{"ethylene_glycol", kEthylene_Glycol_Water}),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(EveryBrine, HasItsConstantTermsAtTheReference) {
  const double T = vector.tRef, P = vector.pRef;
  EXPECT_EQ(brine.hTP(T, P), 0);
  EXPECT_EQ(brine.sTP(T, P), 0);
  EXPECT_NEAR(1 / brine.vTP(T, P), vector.c[1][0], 1e-12 * vector.c[1][0]);
  EXPECT_EQ(brine.CpTP(T, P, 0), vector.c[2][0]);
  EXPECT_EQ(brine.lambdaTP(T, P, 0), vector.c[3][0]);
  EXPECT_EQ(brine.muTP(T, P, 0), std::exp(vector.c[4][0]) * 0.001);
  // The temperature terms of the freezing polynomial are summed with a distance of 1.
  const double(&f)[18] = vector.c[0];
  EXPECT_NEAR(brine.tFreeze(), f[0] + f[1] + f[2] + f[3] + 273.15, 1e-12);
  EXPECT_EQ(brine.poly(0, 250), brine.poly(0, 350));
  EXPECT_NE(brine.poly(1, 250), brine.poly(1, 350));
}

TEST_P(EveryBrine, ObeysThermodynamics) {
  for (const double concentration : {25.0, vector.concRef, 50.0}) {
    brine.SetConc(concentration);
    const double c4 = std::pow(concentration - vector.concRef, 4) * vector.c[2][15];
    for (const double T : {265.0, 300.0, 340.0}) {
      for (const double P : {vector.pRef, 3e5, 2e7}) expect_liquid_identities(brine, T, P, vector.kappa);
      const double P = vector.pRef, Cp = brine.CpTP(T, P, 0);
      EXPECT_NEAR(brine.vTP(T, P) * brine.poly(1, T), 1, 1e-14);
      EXPECT_NEAR(slope([&](double t) { return brine.hTP(t, P); }, T, 0.01), Cp, 1e-8 * Cp);
      EXPECT_NEAR(slope([&](double t) { return brine.sTP(t, P); }, T, 0.01), (Cp - c4 + 1) / T, 1e-8 * Cp / T)
          << "not Cp / T: the entropy law has ln(T) beside the term of the fourth power, not as its factor";
    }
  }
}

TEST_P(EveryBrine, InversionsReturnToTheState) {
  brine.SetConc(50);
  for (const double T : {265.0, 300.0, 340.0}) {
    for (const double P : {1e5, 3e5, 2e7}) {
      expect_liquid_round_trips(brine, T, P);
      EXPECT_NEAR(brine.CpPH(vector.pRef, brine.hTP(T, vector.pRef)), brine.CpTP(T, P, 0), 1e-6 * brine.CpTP(T, P, 0));
    }
  }
}

// Without glycol the vector describes water. Published values at 20 degC and 1 atm: CRC Handbook of Chemistry and
// Physics, properties of water in the range 0 to 100 degC.
TEST_F(QuietTest, EthyleneGlycolWithoutGlycolIsWater) {
  CBrine brine(kEthylene_Glycol_Water);
  brine.SetConc(0);
  EXPECT_NEAR(brine.tFreeze(), 273.15, 0.7);
  EXPECT_NEAR(1 / brine.vTP(293.15, 101325), 998.21, 1.5);
  EXPECT_NEAR(brine.CpTP(293.15, 101325, 0), 4184.1, 30);
  EXPECT_NEAR(brine.lambdaTP(293.15, 101325, 0), 0.5984, 0.01);
  EXPECT_NEAR(brine.muTP(293.15, 101325, 0), 1.0016e-3, 0.05e-3);
}

TEST_F(QuietTest, BrineOfTheShortVectorIsTheSameWithoutLimits) {
  const auto full = std::bit_cast<std::array<double, 97>>(kGlycerol_Water);
  const CBrine brine(full.data() + 2);  // the limits come first
  EXPECT_EQ(brine.hTP(310, 3e5), CBrine(kGlycerol_Water).hTP(310, 3e5));
  EXPECT_EQ(brine.coefficients().pRef, 101325);
  EXPECT_EQ(brine.coefficients().cMax, 0);
}

TEST(BrineDeathTest, HeatCapacityOfZeroEndsTheInversion) {
  BrineVector vector = kGlycerol_Water;
  vector.c[2][0] = 0;
  EXPECT_DEATH(CBrine(vector).tHP(1e4, 1e5), "Cp!=0.*Vk_lib/Vk_fl_prop_lib/fl_class/Brine.*442");
}

}  // namespace
}  // namespace Vk_fl_prop_lib
