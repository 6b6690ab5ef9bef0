// expand_beside ARCHIVE: the handler of zip archives that an installer or a desktop starts and
// forgets. Expands the archive beside it, goes on when the archive is deleted or its caller ends,
// and says nothing but one line on standard error when something is missing at the end.

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
