// A run while the world around it fails, and archives that are made to do harm.

#include "runner/test_support.h"

namespace {

/// Plays 10000 rows to out/results.csv, where older results are. One shell command acts before the unit is loaded, one
/// in the middle of the run. Each finds the run as $! and waiting for them: its log is a pipe that nobody reads so
/// long.
class DisturbedRun : public ProgramTest {
 protected:
  Outcome run(const std::string& before_loading, const std::string& in_the_middle) {
    std::filesystem::create_directory(path("out"));
    write("out/results.csv", "old");
    pack("mock.fmu", {});
    return shell("mkfifo log && { env TMPDIR=temporary '" TESSERA_PROGRAM
                 "' run mock.fmu --stop-time 10 --output-interval 0.001 --quiet --log-level info --log-file log "
                 "--output-file out/results.csv >stdout 2>stderr & } && "
                 "until [ -e out/results.meta.json.part ]; do sleep 0.01; done; " +
                 before_loading + "; exec 3<log && head -c 1 <&3 >first; " + in_the_middle +
                 "; cat <&3 >rest; wait $!; code=$?; rm log; exit $code");
  }
};

TEST_F(DisturbedRun, KeepsItsRowsAndHarmsNoOlderOnes) {
  // The second one comes when the run waits for its log and SIGINT, bit 1 of the mask, is caught no more.
  const std::string twice =
      "while grep -q '^State:.[RD]' /proc/$!/status; do sleep 0.01; done; kill -INT $!; "
      "while grep -q '^SigCgt:.*[2367abef]$' /proc/$!/status; do sleep 0.01; done; kill -INT $!";
  const struct {
    std::string before_loading, in_the_middle;
    int code;
    const char *message, *rows_at, *old_at;  ///< files with the new rows and with the old, if any
    bool are_all_rows;
  } cases[] = {
      {":", "kill -TERM $!", 143, "tessera: terminated at", "out/results.csv", "", false},
      {":", "kill -INT $!", 130, "tessera: cancelled at", "out/results.csv", "", false},
      {":", twice, 130, "", "", "out/results.csv", false},
      {":", "rm -r out", 5, "cannot rename 'out/results.csv.part': No such file", "", "", false},
      {":", "mv out moved", 5, "cannot rename 'out", "moved/results.csv.part", "moved/results.csv", true},
      {":", "rm mock.fmu", 0, "", "out/results.csv", "", true},
      {":", ": >mock.fmu", 0, "", "out/results.csv", "", true},
      {":", "echo >new; mv new mock.fmu", 0, "", "out/results.csv", "", true},
      {"rm mock.fmu", ":", 0, "", "out/results.csv", "", true},
      {": >mock.fmu", ":", 5, "mock.fmu: entry 'binaries/linux64/mock.so': ", "", "out/results.csv", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.before_loading + " ... " + c.in_the_middle);
    const Outcome outcome = run(c.before_loading, c.in_the_middle);
    EXPECT_EQ(outcome.code, c.code);
    EXPECT_EQ(outcome.errors.empty(), std::string(c.message).empty()) << outcome.errors;
    EXPECT_THAT(outcome.errors, HasSubstr(c.message));
    const auto content = [&](const std::string& name) { return name.empty() ? "" : read(name); };
    const std::string rows = content(c.rows_at);
    const auto lines = std::count(rows.begin(), rows.end(), '\n');
    EXPECT_EQ(lines == 10'002, c.are_all_rows) << lines;
    EXPECT_EQ(lines >= 2, !std::string(c.rows_at).empty()) << lines;
    EXPECT_EQ(content(c.old_at), std::string(c.old_at).empty() ? "" : "old");
    EXPECT_EQ(exists("out/results.csv.part"), c.in_the_middle == twice);  // ended at once
    std::filesystem::remove_all(path("out"));
    std::filesystem::remove_all(path("moved"));
  }
}

TEST_F(ProgramTest, StreamsThatTakeNothingHarmNoResults) {
  ASSERT_EQ(tessera("run mock.fmu").code, 0);
  const std::string results = read("results.csv");
  const char* const untold = "tessera: cannot write to standard output\n";
  const struct {
    const char* arguments;
    int code;
    const char* errors;
  } cases[] = {
      {"--quiet >/dev/full", 5, untold},
      {"--quiet >&-", 5, untold},
      {"--quiet >&5", 0, ""},
      {">&- 2>&-", 5, ""},
      {"<&- >&- 2>&-", 5, ""},
      {"2>&-", 0, ""},
      {"2>&5", 0, ""},
      {"2>/dev/full", 0, ""},
      {"--quiet --log-level info --log-file /dev/full", 5,
       "tessera: the log file '/dev/full' could not be written to its end\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.arguments);
    std::filesystem::remove(path("results.csv"));
    const Outcome outcome = tessera("run mock.fmu " + std::string(c.arguments),  // 5 is a pipe without a reader
                                    "rm -f pipe && mkfifo pipe && exec 4<>pipe 5>pipe 4<&-");
    EXPECT_EQ(outcome.code, c.code);
    EXPECT_EQ(outcome.errors, c.errors);
    EXPECT_EQ(read("results.csv"), results);
  }
  expect_refusal("run mock.fmu --quiet --output-file /dev/full", 5, "cannot write '/dev/full': No space left");
  const Outcome headed = shell("{ '" TESSERA_PROGRAM
                               "' run mock.fmu --quiet --output-file /dev/stdout --stop-time 200 "
                               "--output-interval 0.001 2>stderr; echo $? >code; } | head -n 1 >stdout");
  EXPECT_EQ(read("code"), "5\n");
  EXPECT_THAT(headed.errors, ::testing::StartsWith("tessera: cannot write '/dev/stdout': Broken pipe\n"));
  EXPECT_THAT(headed.output, ::testing::StartsWith("\"time\","));
  shell("'" TESSERA_PROGRAM "' run mock.fmu --quiet --output-file rows.csv >summary");
  for (const char* target : {"| cat >stdout", ">stdout"}) {  // the summary keeps away from the rows
    const Outcome piped =
        shell("'" TESSERA_PROGRAM "' run mock.fmu --quiet --output-file /dev/stdout 2>stderr " + std::string(target));
    EXPECT_EQ(piped.output, read("rows.csv"));
    EXPECT_THAT(piped.errors, HasSubstr("state           finished"));
  }

  const Outcome stuck =
      shell("mkfifo stuck && timeout -k 5 0.5 '" TESSERA_PROGRAM "' run mock.fmu --output-file stuck");
  EXPECT_EQ(stuck.code, 124);  // 137 where SIGTERM did not end the wait for a reader
}

TEST_F(ProgramTest, AnArchiveThatCouldDoHarmIsRefused) {
  const struct {
    Entries changes;
    const char* message;
  } cases[] = {{{{"../escaped", "x"}}, "entry '../escaped' leads out"},
               {{{"/escaped", "x"}}, "entry '/escaped' leads out"},
               {{{"a\\..\\..\\escaped", "x"}}, "entry 'a\\..\\..\\escaped' leads out"},
               {{{"C:escaped", "x"}}, "entry 'C:escaped' leads out"},
               {{{"binaries", "x"}}, "entry 'binaries/linux64/mock.so' has a file for its folder"}};
  for (const auto& c : cases) {
    pack("bad.fmu", c.changes);
    expect_refusal("run bad.fmu", 5, c.message);
  }
  EXPECT_FALSE(exists("../escaped") || std::filesystem::exists("/escaped"));

  pack("bad.fmu", {{"modelDescription.xmk", "x"}});
  std::string bytes = read("bad.fmu");
  for (std::size_t i = 0; (i = bytes.find(".xmk", i)) != std::string::npos;) bytes.replace(i, 4, ".xml");
  write("bad.fmu", bytes);
  expect_refusal("run bad.fmu", 5, "entry 'modelDescription.xml' comes twice");

  // In the binary's entry of the table of contents, which ends with its name.
  const auto with_changed_entry = [&](std::size_t offset, const std::string& change) {
    std::string changed = read("mock.fmu");
    changed.replace(changed.rfind(kBinary) - 46 + offset, change.size(), change);
    write("bad.fmu", changed);
  };
  constexpr std::size_t kFlags = 8, kSize = 24;
  with_changed_entry(kFlags, "\1");
  expect_refusal("run bad.fmu", 5, "entry 'binaries/linux64/mock.so' is encrypted");
  with_changed_entry(kSize, "\xff\xff\xff\x7f");
  expect_refusal("run bad.fmu", 5, "unpacks to more than 1 GiB, with entry 'binaries/linux64/mock.so'");
  with_changed_entry(kSize, std::string("\x10\0\0\0", 4));
  expect_refusal("run bad.fmu", 5, "entry 'binaries/linux64/mock.so': is damaged");

  bytes = read("mock.fmu");
  for (std::size_t i = 0; i < 10; ++i) {
    write("bad.fmu", bytes.substr(0, i * bytes.size() / 10 + i));
    expect_refusal("run bad.fmu", 5, "bad.fmu: ");
  }
}

}  // namespace
