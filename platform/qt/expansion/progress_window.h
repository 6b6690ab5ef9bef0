#ifndef PLATFORM_QT_EXPANSION_PROGRESS_WINDOW_H_
#define PLATFORM_QT_EXPANSION_PROGRESS_WINDOW_H_

#include <QElapsedTimer>
#include <QWidget>

#include "platform/expander/report/message.h"
#include "platform/qt/expansion/time_left.h"
#include "platform/qt/expansion/words.h"

class QProgressBar;

namespace zephin {

class TextWidget;

/// Shows how far an expansion is. The user can hide it, but not stop the work with it.
class ProgressWindow final : public QWidget {
 public:
  /// `words` must outlive it. Hidden at first.
  ProgressWindow(const Words& words, const expander::Job& job);

  /// Shows the new state. The window appears with the first one, beside the installer and without
  /// taking the focus. Once the user has hidden it, it appears again only for the first item that
  /// can't be written.
  void Show(const expander::Progress& progress);

  void ShowThatInstallerEnded();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void ShowBar(const expander::Progress& progress);
  void ShowFigures(const expander::Progress& progress);
  void ShowMissing(std::uint64_t count);
  QString TimeText() const;

  const Words& words_;
  const bool showsFailure_;
  QProgressBar* bar_ = nullptr;
  TextWidget* figures_ = nullptr;
  TextWidget* missing_ = nullptr;
  TextWidget* ended_ = nullptr;
  QElapsedTimer clock_;
  TimeLeft timeLeft_;
  bool appeared_ = false;
  bool hasMissing_ = false;
};

}  // namespace zephin

#endif  // PLATFORM_QT_EXPANSION_PROGRESS_WINDOW_H_
