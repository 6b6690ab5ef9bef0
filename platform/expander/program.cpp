#include "platform/expander/program.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <exception>
#include <filesystem>
#include <string>
#include <system_error>

#include "platform/expander/report/reporter.h"

namespace zephin::expander {

void PrepareProcess() {
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

int RunProgram(const char* name, const Job& job, const std::function<Result(Report&)>& expand) {
  Report report;
  Reporter reporter(job, report);
  Result result;
  try {
    result = expand(report);
  } catch (const std::exception& exception) {
    result.faults = 1;
    result.firstFault = exception.what();
    report.AddFault(Report::kWholeArchive, Reason::NoMemory, job.archive, exception.what());
  }
  if (!result.Complete()) {
    WriteLine(name, result.Line());
  }
  reporter.End(result.placedAs, result.expanded);
  return result.Complete() ? 0 : 1;
}

Job MakeJob(const std::string& archivePath, const std::string& folderPath) {
  std::error_code failure;
  const auto whole = [&failure](const std::string& path) {
    std::string absolute = std::filesystem::absolute(path, failure).lexically_normal();
    while (absolute.size() > 1 && absolute.ends_with('/')) {
      absolute.pop_back();
    }
    return failure ? path : absolute;
  };
  return {whole(archivePath), whole(folderPath), NameOfContents(archivePath)};
}

void WriteLine(const char* name, const std::string& line) {
  const std::string text = std::string(name) + ": " + line + "\n";
  (void)!::write(STDERR_FILENO, text.data(), text.size());
}

}  // namespace zephin::expander
