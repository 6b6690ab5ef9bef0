// What the expander's small programs share around the call that does the work.
#ifndef PLATFORM_EXPANDER_PROGRAM_H_
#define PLATFORM_EXPANDER_PROGRAM_H_

#include <functional>

#include "platform/expander/expander.h"

namespace zephin::expander {

/// Readies the process: standard streams that were closed lead nowhere, so that no expanded file
/// gets their numbers and a message is never written into it; a write past a limit is an error and
/// no signal; a closed reader of messages ends nothing.
void PrepareProcess();

/// Runs the expansion, writes its line to standard error after the program's name if there is one,
/// and gives the exit status: 0 only for a complete expansion. Running out of memory or threads is
/// a line and a status too.
int RunProgram(const char* name, const std::function<Result()>& expand);

/// Writes one line to standard error; a failure to do so is nobody's to hear.
void WriteLine(const char* name, const std::string& line);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_PROGRAM_H_
