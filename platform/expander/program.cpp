#include "platform/expander/program.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <exception>
#include <string>

namespace zephin::expander {

void PrepareProcess() {
  // The system gives out the lowest free number, so this fills the gaps up to standard error.
  int number = 0;
  do {
    number = ::open("/dev/null", O_RDWR);
  } while (number >= 0 && number <= STDERR_FILENO);
  if (number >= 0) {
    (void)::close(number);
  }
  for (const int signal : {SIGXFSZ, SIGPIPE}) {
    (void)std::signal(signal, SIG_IGN);
  }
}

int RunProgram(const char* name, const std::function<Result()>& expand) {
  std::string line;
  try {
    const Result result = expand();
    if (result.Complete()) {
      return 0;
    }
    line = result.Line();
  } catch (const std::exception& exception) {
    line = exception.what();
  }
  WriteLine(name, line);
  return 1;
}

void WriteLine(const char* name, const std::string& line) {
  const std::string text = std::string(name) + ": " + line + "\n";
  // One call, so that lines of several processes don't mix.
  (void)!::write(STDERR_FILENO, text.data(), text.size());
}

}  // namespace zephin::expander
