// expand_beside ARCHIVE: the handler of zip archives. It expands the archive beside itself, and
// continues if the archive is deleted or its parent process ends. Its only output is one line on
// standard error if something is missing at the end.

#include <csignal>
#include <span>

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
  return zephin::expander::RunProgram(kName,
                                      [&] { return zephin::expander::ExpandBeside(words[1]); });
}
