// Reads the expander's messages and shows them in windows.
#ifndef PLATFORM_QT_EXPANSION_EXPANSION_VIEW_H_
#define PLATFORM_QT_EXPANSION_EXPANSION_VIEW_H_

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/expander/report/message.h"
#include "platform/qt/expansion/failure_window.h"
#include "platform/qt/expansion/installers.h"
#include "platform/qt/expansion/progress_window.h"
#include "platform/qt/expansion/words.h"

namespace zephin {

/// One expansion, from its first message on. Ends the toolkit's application when there is nothing
/// more to show: the expansion is done, or the user has closed the failure.
class ExpansionView final : public QObject {
 public:
  /// Reads from `descriptor`, which it makes non-blocking. `words` must outlive it.
  ExpansionView(const Words& words, int descriptor);

 private:
  void Read();
  void TakeLines();
  void Take(const expander::Message& message);
  void Begin(const expander::Job& job);
  void Fail(const expander::Failure& failure);
  /// The pipe was closed. Without a last message the expander has been killed.
  void End();
  void WatchInstaller();

  const Words& words_;
  const int descriptor_;
  QSocketNotifier notifier_;
  QTimer watch_;
  Installers installers_;
  std::string unread_;
  std::optional<expander::Job> job_;
  std::vector<expander::MissingEntry> missing_;
  std::unique_ptr<ProgressWindow> progress_;
  std::unique_ptr<FailureWindow> failure_;
};

}  // namespace zephin

#endif  // PLATFORM_QT_EXPANSION_EXPANSION_VIEW_H_
