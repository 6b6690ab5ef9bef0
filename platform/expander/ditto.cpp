// ditto -xk ARCHIVE FOLDER: expands a zip archive into a folder. The exit status is 0 only if every
// byte of every entry is on disk.

#include <span>
#include <string_view>

#include "platform/expander/expander.h"
#include "platform/expander/program.h"

int main(int argc, char** argv) {
  constexpr const char* kName = "ditto";
  zephin::expander::PrepareProcess();
  const std::span<char*> words(argv, static_cast<std::size_t>(argc));
  if (words.size() != 4 || std::string_view(words[1]) != "-xk") {
    zephin::expander::WriteLine(kName, "usage: ditto -xk ARCHIVE FOLDER");
    return 2;
  }
  // The caller reports a failure itself, by the exit status.
  zephin::expander::Job job = zephin::expander::MakeJob(words[2], words[3]);
  job.showsFailure = false;
  return zephin::expander::RunProgram(kName, job, [&](zephin::expander::Report& report) {
    return zephin::expander::ExpandInto(words[2], words[3], report);
  });
}
