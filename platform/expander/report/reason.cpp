#include "platform/expander/report/reason.h"

#include <cerrno>

namespace zephin::expander {

Reason ReasonOf(int code) {
  switch (code) {
    case ENOSPC:
      return Reason::NoSpace;
    case EDQUOT:
      return Reason::Quota;
    case EFBIG:
      return Reason::TooLarge;
    case EACCES:
    case EPERM:
      return Reason::NoPermission;
    case EROFS:
      return Reason::ReadOnly;
    case EMFILE:
    case ENFILE:
      return Reason::TooManyOpen;
    // Disks of other systems report a character that they can't store as one of the last two.
    case ENAMETOOLONG:
    case EILSEQ:
    case EINVAL:
      return Reason::NameRefused;
    case EEXIST:
    case EISDIR:
    case ENOTDIR:
    case ELOOP:
    case ENOTEMPTY:
      return Reason::InTheWay;
    case ENOENT:
    case ESTALE:
      return Reason::Gone;
    case EIO:
    case ENODEV:
    case ENXIO:
      return Reason::DiskFault;
    case ENOMEM:
    case EAGAIN:
      return Reason::NoMemory;
    default:
      return Reason::Other;
  }
}

}  // namespace zephin::expander
