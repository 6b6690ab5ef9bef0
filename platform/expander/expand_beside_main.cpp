// expand_beside ARCHIVE: the handler of zip archives. It expands the archive beside itself, and
// continues if the archive is deleted or its parent process ends. Its only output is one line on
// standard error if something is missing at the end.

#include <csignal>
#include <span>
#include <string>

#include "platform/expander/expander.h"
#include "platform/expander/program.h"

int main(int argc, char** argv) {
  constexpr const char* kName = "expand_beside";
  zephin::expander::PrepareProcess();
  (void)std::signal(SIGHUP, SIG_IGN);
  const std::span<char*> words(argv, static_cast<std::size_t>(argc));
  if (words.size() != 2) {
    zephin::expander::WriteLine(kName, "usage: expand_beside ARCHIVE");
    return 2;
  }
  const std::string archive = words[1];
  const std::string folder = archive.substr(0, archive.rfind('/') + 1);
  const zephin::expander::Job job =
      zephin::expander::MakeJob(archive, folder.empty() ? "." : folder);
  return zephin::expander::RunProgram(kName, job, [&](zephin::expander::Report& report) {
    return zephin::expander::ExpandBeside(archive, report);
  });
}
