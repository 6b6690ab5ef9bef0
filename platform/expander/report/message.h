// What an expander says to its window program, over a pipe that is the window's standard input: one
// message a line. A line is a word for its kind, then fields, each after a tab; in a field a
// backslash, a tab and a line feed are written as "\\", "\t" and "\n". Numbers are decimal.
// Example:
//
//   job <TAB> /home/ann/Tool.zip <TAB> /home/ann <TAB> Tool <TAB> 1
//   progress <TAB> 1048576 <TAB> 62914560 <TAB> 3 <TAB> 120 <TAB> 0 <TAB> Tool/notes.txt
//   done
#ifndef PLATFORM_EXPANDER_REPORT_MESSAGE_H_
#define PLATFORM_EXPANDER_REPORT_MESSAGE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "platform/expander/report/reason.h"

namespace zephin::expander {

/// The first message. Paths and names are bytes as the system takes them.
struct Job {
  std::string archive;  ///< Full path.
  std::string folder;   ///< Full path of the folder that the contents go into.
  std::string name;     ///< What the user knows the contents by: the archive's name without ending.
  /// False if the caller reports failures itself: then the window shows progress only.
  bool showsFailure = true;
};

/// How far the work is. Sent several times a second.
struct Progress {
  std::uint64_t bytesDone = 0;
  std::uint64_t bytesToDo = 0;  ///< All bytes, those that are done included; 0 if unknown yet.
  std::uint64_t entriesDone = 0;
  std::uint64_t entriesToDo = 0;
  std::uint64_t missing = 0;  ///< Entries that could not be written, so far.
  std::string name;           ///< The entry that is being written; may be empty.
};

/// One entry that is not on disk. All of these precede the Failure.
struct MissingEntry {
  Reason reason = Reason::Other;
  std::string name;
};

/// The last message of an expansion that is not complete.
struct Failure {
  Reason reason = Reason::Other;  ///< The one that most of the missing entries have.
  /// For NoSpace in bytes, for NoFileSlots in files and folders; 0 if unknown.
  std::uint64_t needed = 0;
  std::uint64_t free = 0;
  std::string detail;          ///< The system's words for a fault of Reason::Other; may be empty.
  std::string placed;          ///< Name of the folder or file that was made; empty if nothing was.
  std::uint64_t expanded = 0;  ///< Entries that are on disk whole.
  std::uint64_t missing = 0;   ///< Entries that are not, sent as MissingEntry or not.
};

/// The last message of an expansion that is complete, or whose user took the contents away.
struct Done {};

using Message = std::variant<Job, Progress, MissingEntry, Failure, Done>;

/// The line for a message, with its line feed.
std::string Encode(const Message& message);

/// The message of a line (without its line feed); nothing if the line is not one of the above.
std::optional<Message> Decode(std::string_view line);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_REPORT_MESSAGE_H_
