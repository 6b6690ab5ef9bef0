// What the main functions of the expander's programs share.
#ifndef PLATFORM_EXPANDER_PROGRAM_H_
#define PLATFORM_EXPANDER_PROGRAM_H_

#include <functional>

#include "platform/expander/expander.h"

namespace zephin::expander {

/// Prepares the process. Closed standard streams are opened on /dev/null, so that no expanded file
/// gets the number of standard error and messages in its data. SIGXFSZ and SIGPIPE are ignored, so
/// that writing fails with an error code.
void PrepareProcess();

/// Runs the expansion and returns the exit status: 0 only if it is complete. Otherwise writes
/// "NAME: " and the first fault to standard error; exceptions are reported in the same way.
/// The user sees a long expansion in a window, and a failure too if the job says so.
int RunProgram(const char* name, const Job& job, const std::function<Result(Report&)>& expand);

/// The job of expanding an archive into a folder. Paths may be relative.
Job MakeJob(const std::string& archivePath, const std::string& folderPath);

/// Writes "NAME: LINE" to standard error. Errors are ignored.
void WriteLine(const char* name, const std::string& line);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_PROGRAM_H_
