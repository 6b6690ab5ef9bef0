// expand_beside [--open] ARCHIVE: the handler of zip archives. It expands the archive beside
// itself, and continues if the archive is deleted or its parent process ends. With --open the
// archive is open as standard input, and may be deleted before the program starts. Its only output
// is one line on standard error if something is missing at the end.

#include <unistd.h>

#include <csignal>
#include <span>
#include <string>
#include <string_view>

#include "platform/expander/expander.h"
#include "platform/expander/program.h"

int main(int argc, char** argv) {
  constexpr const char* kName = "expand_beside";
  zephin::expander::PrepareProcess();
  (void)std::signal(SIGHUP, SIG_IGN);
  const std::span<char*> words(argv, static_cast<std::size_t>(argc));
  const bool open = words.size() == 3 && std::string_view(words[1]) == "--open";
  if (words.size() != 2 && !open) {
    zephin::expander::WriteLine(kName, "usage: expand_beside [--open] ARCHIVE");
    return 2;
  }
  const std::string archive = words.back();
  const std::string folder = archive.substr(0, archive.rfind('/') + 1);
  const zephin::expander::Job job =
      zephin::expander::MakeJob(archive, folder.empty() ? "." : folder);
  return zephin::expander::RunProgram(kName, job, [&](zephin::expander::Report& report) {
    return zephin::expander::ExpandBeside(archive, report, open ? STDIN_FILENO : -1);
  });
}
