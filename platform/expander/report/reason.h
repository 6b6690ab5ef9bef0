// Why an entry is missing after an expansion, in kinds that a user can do something about.
#ifndef PLATFORM_EXPANDER_REPORT_REASON_H_
#define PLATFORM_EXPANDER_REPORT_REASON_H_

#include <cstdint>

namespace zephin::expander {

/// The numbers are part of the messages to the window program: new reasons go to the end.
enum class Reason : std::uint8_t {
  Other,         ///< A system error that is none of the kinds below.
  NoSpace,       ///< The disk is full.
  NoFileSlots,   ///< The disk can't hold that many files and folders.
  Quota,         ///< The user's share of the disk is used up.
  TooLarge,      ///< A file is larger than the disk or the user's limits allow.
  Damaged,       ///< An entry's data are damaged or incomplete.
  NoArchive,     ///< The archive as a whole is damaged or incomplete, or is no archive.
  Unsupported,   ///< An entry is encrypted, or packed by a method that the expander doesn't know.
  NoPermission,  ///< The user may not write to the folder or read the archive.
  ReadOnly,      ///< The disk is write-protected.
  TooManyOpen,   ///< The process or the system has too many open files.
  NameRefused,   ///< The name is unsafe, or the disk can't hold it.
  InTheWay,      ///< Another item has the name.
  Gone,          ///< The folder or the archive was moved or deleted meanwhile.
  DiskFault,     ///< The disk reports an error.
  NoMemory,      ///< The system has no memory or threads left.
  BrokenOff,     ///< The expander was ended before its work was done.
};

constexpr Reason kLastReason = Reason::BrokenOff;

/// The reason for one of the system's error codes.
Reason ReasonOf(int code);

}  // namespace zephin::expander

#endif  // PLATFORM_EXPANDER_REPORT_REASON_H_
