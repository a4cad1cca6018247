// From a plan to its points, from rows to what is kept, and the journal.

#include <cmath>
#include <set>

#include "apps/runner/errors.h"
#include "apps/sweep/journal.h"
#include "apps/sweep/keeper.h"
#include "apps/sweep/plan.h"
#include "apps/sweep/sampling.h"
#include "apps/sweep/study.h"
#include "runner/test_support.h"

namespace sweep {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class PlanTest : public ProgramTest {
 protected:
  /// All points of a plan for the mock unit.
  std::vector<std::vector<double>> points(const std::string& name, const std::string& content) const {
    write(name, content);
    const runner::ModelDescription mock = runner::parse_model_description(read(MOCK_DESCRIPTION));
    const Study study(read_plan(path(name)), mock);
    std::vector<std::vector<double>> points;
    for (std::uint64_t i = 0; i < study.count(); ++i) points.push_back(study.point(i));
    return points;
  }
};

TEST(Sampling, RangesHoldTheirEndsAndTheDigitsThatOneWouldWrite) {
  EXPECT_THAT(stepped(0, 0.5, 0.1).value(), ElementsAre(0.0, 0.1, 0.2, 0.3, 0.4, 0.5));
  EXPECT_THAT(stepped(0.1, 0.75, 0.2).value(), ElementsAre(0.1, 0.3, 0.5, 0.7));
  EXPECT_THAT(stepped(10, -5, -7.5).value(), ElementsAre(10.0, 2.5, -5.0));
  EXPECT_THAT(stepped(3, 3, 1).value(), ElementsAre(3.0));
  for (const double step : {0.0, -1.0, 1e-12}) EXPECT_FALSE(stepped(0, 1, step)) << step;
}

TEST(Sampling, ALatinHypercubeHasOnePointInEachStratumOfEachAxis) {
  for (const std::uint32_t count : {1U, 7U, 1000U}) {
    const auto points = latin_hypercube(count, 3, 5);
    ASSERT_EQ(points.size(), count);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      std::set<double> strata;
      for (const auto& point : points) strata.insert(std::floor(point.at(axis) * count));
      EXPECT_EQ(strata.size(), count);
      EXPECT_TRUE(*strata.begin() == 0.0 && *strata.rbegin() == count - 1.0);
    }
  }
  // As a program of its own makes them that follows the published algorithm of the generator (Nishimura 2000).
  EXPECT_THAT(latin_hypercube(4, 2, 42), ElementsAre(ElementsAre(0.2840681708767079, 0.7530956927803345),
                                                     ElementsAre(0.22581724158953875, 0.6309263972216286),
                                                     ElementsAre(0.7735170779051259, 0.4213178216596134),
                                                     ElementsAre(0.6436425760039128, 0.15933453559409827)));
}

TEST_F(PlanTest, AGridIsEachCombinationInTheOrderOfTheFileWithUnitsConverted) {
  EXPECT_THAT(points("a.toml",
                     "[grid]\nsignal = [3, 1]\ninlet.temperature_gate = [true, false]\n"
                     "inlet.temperature_set = {from = 32, to = 50, count = 2, unit = 'degF'}\n"),
              ElementsAre(ElementsAre(3, 1, 0), ElementsAre(3, 1, 10), ElementsAre(3, 0, 0), ElementsAre(3, 0, 10),
                          ElementsAre(1, 1, 0), ElementsAre(1, 1, 10), ElementsAre(1, 0, 0), ElementsAre(1, 0, 10)));
}

TEST_F(PlanTest, ASampleIsPlayedAtEachPointOfTheGrid) {
  const auto unit = latin_hypercube(2, 1, 9);
  const double first = 10.0 + 10.0 * unit[0][0], second = 10.0 + 10.0 * unit[1][0];
  EXPECT_THAT(
      points("a.toml", "[grid]\nsignal = [1, 2]\n[sample]\ncount = 2\nseed = 9\nfail_at = {from = 10, to = 20}"),
      ElementsAre(ElementsAre(1, first), ElementsAre(1, second), ElementsAre(2, first), ElementsAre(2, second)));
}

TEST_F(PlanTest, ACsvPlanHasAPointALine) {
  EXPECT_THAT(points("a.csv", "\xEF\xBB\xBFsignal,\"inlet.temperature_set\"\r\n1,300 K\r\n\r\n\"2\",-5\n"),
              ElementsAre(ElementsAre(1, ::testing::DoubleNear(26.85, 1e-12)), ElementsAre(2, -5)));
}

TEST(Keeper, CondensesRowsByTheTrapezoidalRule) {
  Keeper keeper(
      {{0, Take::kLast}, {0, Take::kMin}, {0, Take::kMax}, {0, Take::kMean}, {0, Take::kIntegral}, {1, Take::kRise}});
  EXPECT_TRUE(std::isnan(keeper.values().at(0)));
  keeper.add(1000, std::vector{2.0, 5.0});
  EXPECT_THAT(keeper.values(), ElementsAre(2, 2, 2, 2, 0, 0));
  keeper.add(1500, std::vector{6.0, 5.0});
  keeper.add(3500, std::vector{-4.0, 1.0});
  EXPECT_THAT(keeper.values(), ElementsAre(-4, -4, 6, 1.6, 4, -4));  // (2+6)/2 0.5 + (6-4)/2 2 = 4, over 2.5 s
  keeper.add(4000, std::vector{std::nan(""), 0.0});
  keeper.add(4500, std::vector{1.0, 0.0});
  for (const std::size_t i : {1U, 2U, 3U, 4U}) EXPECT_TRUE(std::isnan(keeper.values().at(i))) << i;
}

class JournalTest : public ProgramTest {
 protected:
  static constexpr const char* kHeader = "\"point\",\"a\"";

  std::map<std::uint64_t, std::string> rows(bool restart = false, const std::string& plan = "p\n") const {
    return Journal(path("j.csv"), kHeader, plan, restart).rows();
  }
  std::string complaint(const std::string& plan = "p\n") const try {
    rows(false, plan);
    return {};
  } catch (const runner::Error& error) {
    return error.what();
  }
};

TEST_F(JournalTest, KeepsWholeLinesAndDropsOneThatWasCutOff) {
  {
    Journal journal(path("j.csv"), kHeader, "p\n", false);
    journal.append(2, "2,x");
    journal.append(1, "1,y");
    journal.append(2, "2,\"again, z\"");
    EXPECT_THAT(complaint(), HasSubstr("another sweep writes to this folder"));
  }
  std::ofstream(path("j.csv"), std::ios::app) << "3,torn";
  for (int i = 0; i < 2; ++i) EXPECT_THAT(rows(), ElementsAre(Pair(1, "1,y"), Pair(2, "2,\"again, z\"")));
  EXPECT_EQ(read("j.csv"), "\"point\",\"a\"\n2,x\n1,y\n2,\"again, z\"\n");

  EXPECT_THAT(complaint("p\nq\n"), HasSubstr("holds points of another plan or unit; now 'q'"));
  EXPECT_THAT(rows(true, "p\nq\n"), IsEmpty());
  EXPECT_EQ(complaint("p\nq\n"), "");
}

TEST_F(JournalTest, TellsADamagedLine) {
  EXPECT_THAT(rows(), IsEmpty());
  for (const char* line : {"x,1", "1", "1,2,3", "-1,2", ""}) {
    write("j.csv", std::string(kHeader) + "\n1,y\n" + line + "\n");
    EXPECT_THAT(complaint(), HasSubstr("j.csv:3: the line is damaged")) << line;
  }
  write("j.csv", "\"point\",\"b\"\n");
  EXPECT_THAT(complaint(), HasSubstr("j.csv:1: these are not the columns"));
}

}  // namespace
}  // namespace sweep
