// The programs as a shell meets them: words, exit status, the one line on standard error.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "tests/platform/expander/scratch.h"
#include "tests/platform/expander/zip_writer.h"

namespace zephin::expander::test {
namespace {

struct ProgramCase {
  const char* name;
  // In a folder with good.zip and bad.zip; standard error goes to a file unless it says otherwise.
  const char* command;
  int status;
  const char* line;
};

std::vector<ProgramCase> ProgramCases() {
  return {{"Good", "$DITTO -xk good.zip t && test -f t/a", 0, ""},
          {"Bad", "$DITTO -xk bad.zip t", 1,
           "ditto: ../\\x0a: the name leads out of the folder (and 1 more)\n"},
          {"Missing", "$DITTO -xk none.zip t", 1, "ditto: none.zip: No such file or directory\n"},
          {"TooFewWords", "$DITTO -xk good.zip", 2, "ditto: usage: ditto -xk ARCHIVE FOLDER\n"},
          {"OtherOption", "$DITTO -ck good.zip t", 2, "ditto: usage: ditto -xk ARCHIVE FOLDER\n"},
          // The first file that is opened must not get the number of standard error.
          {"ClosedStreams", "$DITTO -xk bad.zip t <&- >&- 2>&-", 1, ""},
          {"WriteLimit", "ulimit -f 0; $DITTO -xk good.zip t 2>&1 | grep -q 'a: File too large'", 0,
           ""},
          {"Beside", "$BESIDE good.zip && test -f good/a", 0, ""},
          {"BesideMissing", "$BESIDE none.zip", 1,
           "expand_beside: none.zip: No such file or directory\n"},
          {"BesideWithoutWord", "$BESIDE", 2, "expand_beside: usage: expand_beside ARCHIVE\n"}};
}

TEST(Programs, StatusAndLine) {
  for (const auto& row : ProgramCases()) {
    SCOPED_TRACE(row.name);
    const Scratch scratch;
    (void)scratch.Write("good.zip",
                        MakeZip({{.name = "a", .data = "good"}, {.name = "b", .data = "good"}}));
    (void)scratch.Write("bad.zip", MakeZip({{.name = "../\n", .data = "x"},
                                            {.name = "/", .data = "x"},
                                            {.name = "a", .data = "good"}}));
    // Without IFS a path with blanks stays one word.
    const std::string command = "cd '" + scratch.Path("") +
                                "' && IFS= DITTO='" DITTO_PROGRAM "' BESIDE='" EXPAND_BESIDE_PROGRAM
                                "' && { " +
                                row.command + "; } 2>error >output";
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), row.status);
    EXPECT_EQ(ReadFile(scratch.Path("error")), row.line);
    EXPECT_EQ(ReadFile(scratch.Path("output")), "");
    if (std::filesystem::exists(scratch.Path("t/a"))) {
      EXPECT_EQ(ReadFile(scratch.Path("t/a")), "good");
    }
  }
}

}  // namespace
}  // namespace zephin::expander::test
