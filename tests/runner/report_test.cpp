// `tessera report`: what gets into a page, and what is refused. tests/report opens the pages in a browser.

#include <cmath>
#include <nlohmann/json.hpp>
#include <numeric>

#include "apps/runner/report_data.h"
#include "runner/test_support.h"

namespace {

class ReportTest : public ProgramTest {
 protected:
  /// Makes a page of one run and takes its data out as a browser does: up to the next end of a script element.
  nlohmann::json run_of(const std::string& file) {
    EXPECT_EQ(tessera("report -o page.html " + file).code, 0);
    const std::string page = read("page.html"), mark = "id=\"data\">";
    const std::size_t start = page.find(mark) + mark.size();
    return nlohmann::json::parse(page.substr(start, page.find("</script", start) - start))["runs"][0];
  }
};

TEST_F(ReportTest, NoTextEndsTheDataAndWhatIsOddIsTold) {
  write("a<b&.csv", "time,\"</script>\",\"say \"\"<!--\"\"\"\n0,1,2\n1,1.5,2\n");
  EXPECT_THAT(run_of("'a<b&.csv'")["notes"].dump(), HasSubstr("There is no a<b&.meta.json"));
  EXPECT_THAT(read("page.html"), HasSubstr("<title>a&lt;b&amp;</title>"));
  const std::string meta = R"({"format": 1, "kind": "run", "settings": {"stopTime": 9}, "result": {"rows": 1e300},)";
  write("a<b&.meta.json", meta + R"("run": {"state": "</SCRIPT><b>"}})");
  nlohmann::json run = run_of("'a<b&.csv'");
  EXPECT_EQ(run["columns"][0]["name"], "</script>");
  EXPECT_EQ(run["columns"][1]["name"], "say \"<!--\"");
  EXPECT_EQ(run["meta"]["run"]["state"], "</SCRIPT><b>");
  EXPECT_THAT(run["warnings"].dump(), HasSubstr("the rows end at 1 s, before the stop time of 9 s"));
  EXPECT_THAT(run["warnings"].dump(), HasSubstr("tells of 1e+300 rows, but a<b&.csv has 2"));
  write("a<b&.meta.json", meta + R"("run": {"exitCode": 1e300, "state": "stopped"}})");
  EXPECT_THAT(run_of("'a<b&.csv'")["warnings"].dump(), HasSubstr("the run did not end as it should: stopped"));
}

TEST_F(ReportTest, RefusesWhatItCannotDraw) {
  write("good.csv", "time,x\n0,1\n");
  write("study.csv", "point,status\n0\n");
  expect_refusal("report study.csv", 5, "study.csv: line 2: the row has 1 cells, the header 2");
  expect_refusal("report good.csv -o ./good.csv", 2, "the page cannot take the place of 'good.csv'");
  expect_refusal("report good.npz", 2, "'good.npz': pages are made from CSV files");
  expect_refusal("report good.csv study.csv", 2, "'study.csv' is the table of a study");
  const std::string deep = R"({"format": )" + std::string(1'000'000, '[') + std::string(1'000'000, ']') + "}";
  const std::pair<const char*, const char*> metas[] = {
      {R"({"format": 2, "kind": "run"})", "its format is 2, known is 1"},
      {R"({"format": 1, "kind": "map"})", "its kind is 'map', known are 'run' and 'sweep'"},
      {R"({"format": 1, "kind": "run", "outputs": 7})", "cannot read 'good.meta.json'"},
      {R"({"format": 1)", "cannot read 'good.meta.json'"},
      {deep.c_str(), "good.meta.json: nested too deeply"}};
  for (const auto& [meta, message] : metas) {
    write("good.meta.json", meta);
    expect_refusal("report good.csv", 5, message);
  }
}

TEST(ReportDataTest, ThinningKeepsPeaksAndEnds) {
  runner::ResultTable table{{"x"}, std::vector<double>(30001), {std::vector<double>(30001, 1.0)}};
  std::iota(table.time.begin(), table.time.end(), 0.0);
  table.columns[0][0] = std::nan("");
  table.columns[0][12345] = -7.0;
  table.columns[0][23456] = 9.0;
  const auto [names, time, columns] = runner::thinned(table);
  EXPECT_LE(time.size(), runner::kMostDrawnRows + 1);
  EXPECT_TRUE(std::is_sorted(time.begin(), time.end()) && time.front() == 0.0 && time.back() == 30000.0);
  for (const double peak : {-7.0, 9.0}) EXPECT_EQ(std::count(columns[0].begin(), columns[0].end(), peak), 1);
}

TEST(ReportDataTest, UnusualFiguresAreTold) {
  const struct {
    const char *name, *unit, *text;
    double usual, value;
  } cases[] = {{"coolant.outlet_temperature", "degC", "reaches 96 degC at 7 s; usual is at most 95 degC", 20, 96},
               {"exhaust.temperature", "degC", "", 20, 96},
               {"exhaust.temperature", "degC", "falls to -41 degC at 7 s; usual is at least -40 degC", 20, -41},
               {"anode.pressure", "bar", "reaches 5.5 bar at 7 s; usual is at most 5 bar", 1, 5.5},
               {"tank.pressure", "bar", "", 350, 700},
               {"anode.pressure", "bar", "is not finite in 1 of 2 rows, first at 7 s", 1, INFINITY}};
  for (const auto& c : cases) {
    std::string text;
    for (const auto& warning : runner::check_signal(c.name, c.unit, {0, 7}, {c.usual, c.value})) text += warning.text;
    EXPECT_EQ(text, c.text) << c.name;
  }
}

}  // namespace
