// The words of a failed expansion for its user.
#ifndef PLATFORM_QT_EXPANSION_FAILURE_TEXT_H_
#define PLATFORM_QT_EXPANSION_FAILURE_TEXT_H_

#include <QString>
#include <QStringList>
#include <vector>

#include "platform/expander/report/message.h"
#include "platform/qt/expansion/words.h"

namespace zephin {

struct FailureText {
  QString heading;         ///< What could not be unpacked.
  QStringList paragraphs;  ///< Where, why, what is missing, what was left, what to do.
  /// All missing names that were sent, one a line; under a line for each reason if there are
  /// several. Empty if there is none.
  QString details;
};

FailureText TextOfFailure(const Words& words, const expander::Job& job,
                          const expander::Failure& failure,
                          const std::vector<expander::MissingEntry>& missing);

/// A name or path of the system as text on one line. Bytes that are no UTF-8 and characters that
/// could change the line's order or end it become visible signs.
QString ShownName(const std::string& bytes);

}  // namespace zephin

#endif  // PLATFORM_QT_EXPANSION_FAILURE_TEXT_H_
