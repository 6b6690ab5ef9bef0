// The programs as a shell meets them: words, exit status, the one line on standard error.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <vector>

#include "tests/platform/expander/zip_writer.h"
#include "tests/support/scratch_folder.h"

namespace zephin::test {
namespace {

// Each command, in a folder with good.zip and bad.zip, its status and its line: standard error goes
// to a file unless the command says otherwise.
TEST(Programs, StatusAndLine) {
  const std::vector<std::tuple<const char*, int, const char*>> rows = {
      {"$DITTO -xk good.zip t && grep -q good t/a", 0, ""},
      {"$DITTO -xk bad.zip t", 1,
       "ditto: ../\\x0a: the name leads out of the folder (and 1 more)\n"},
      {"$DITTO -xk none.zip t", 1, "ditto: none.zip: No such file or directory\n"},
      {"$DITTO -xk good.zip", 2, "ditto: usage: ditto -xk ARCHIVE FOLDER\n"},
      {"$DITTO -ck good.zip t", 2, "ditto: usage: ditto -xk ARCHIVE FOLDER\n"},
      // The first file that is opened must not get the number of standard error.
      {"$DITTO -xk bad.zip t <&- >&- 2>&-", 1, ""},
      {"ulimit -f 0; $DITTO -xk good.zip t 2>&1 | grep -q 'a: File too large'", 0, ""},
      {"$BESIDE good.zip && grep -q good good/a", 0, ""},
      {"$BESIDE none.zip", 1, "expand_beside: none.zip: No such file or directory\n"},
      {"{ rm good.zip && $BESIDE --open good.zip; } <good.zip && grep -q good good/a", 0, ""},
      {"$BESIDE --open good.zip </dev/null && grep -q good good/a", 0, ""},
      {"$BESIDE", 2, "expand_beside: usage: expand_beside [--open] ARCHIVE\n"}};
  for (const auto& [words, status, line] : rows) {
    SCOPED_TRACE(words);
    const ScratchFolder scratch;
    const ZipEntry good{.name = "a", .data = "good"};
    WriteFile(scratch / "good.zip", MakeZip({good, {.name = "b"}}));
    WriteFile(scratch / "bad.zip", MakeZip({{.name = "../\n"}, {.name = "/"}, good}));
    // Without IFS a path with blanks stays one word.
    const std::string command = "cd '" + scratch.Path().string() +
                                "' && IFS= DITTO='" DITTO_PROGRAM "' BESIDE='" EXPAND_BESIDE_PROGRAM
                                "' && { " +
                                words + "; } 2>error >output";
    const int ended = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(ended), status);
    EXPECT_EQ(ReadFile(scratch / "error"), line);
    EXPECT_EQ(ReadFile(scratch / "output"), "");
  }
}

}  // namespace
}  // namespace zephin::test
