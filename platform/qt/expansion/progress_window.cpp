#include "platform/qt/expansion/progress_window.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/expansion/failure_text.h"
#include "platform/qt/expansion/window_parts.h"
#include "platform/qt/widgets/look.h"
#include "platform/qt/widgets/text_widget.h"

namespace zephin {
namespace {

// In points.
constexpr int kMargin = 20;
constexpr int kSpacing = 8;
constexpr int kWidth = 340;

constexpr std::uint64_t kMinute = 60;
constexpr std::uint64_t kHour = 3600;

/// 0 to 100. A share, since a multiplication of bytes could overflow.
int Percent(std::uint64_t done, std::uint64_t toDo) {
  constexpr double kWhole = 100;
  const double share = static_cast<double>(done) / static_cast<double>(toDo);
  return static_cast<int>(std::clamp(share, 0.0, 1.0) * kWhole);
}

}  // namespace

ProgressWindow::ProgressWindow(const Words& words, const expander::Job& job)
    : QWidget(nullptr, FlagsOfWindow()), words_(words), showsFailure_(job.showsFailure) {
  const QString name = ShownName(job.name);
  const QString heading = words.Get(Word::Unpacking, name);
  setWindowTitle(heading);
  setLayoutDirection(words.Direction());
  // The window would take the keys that the user types for the installer.
  setAttribute(Qt::WA_ShowWithoutActivating);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kSpacing);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->addWidget(MakeText(this, heading, BoldFont(), kWidth));
  bar_ = new QProgressBar(this);
  bar_->setFixedWidth(kWidth);
  bar_->setAccessibleName(heading);
  bar_->setRange(0, 0);
  layout->addWidget(bar_);
  // Holds its place: the window must not grow with the first estimate.
  figures_ = MakeText(this, QStringLiteral(" "), SystemFont(), kWidth);
  missing_ = MakeText(this, {}, SystemFont(), kWidth);
  ended_ = MakeText(this, {}, SystemFont(), kWidth);
  missing_->hide();
  ended_->hide();
  for (TextWidget* text : {figures_, missing_, ended_}) {
    layout->addWidget(text);
  }
  layout->addSpacing(kSpacing);
  QPushButton* hide = MakeButton(this, words.Get(Word::Hide));
  connect(hide, &QPushButton::clicked, this, &QWidget::hide);
  layout->addWidget(hide, 0, Qt::AlignTrailing);
  hide->setFocus();
  clock_.start();
}

void ProgressWindow::Show(const expander::Progress& progress) {
  ShowBar(progress);
  ShowFigures(progress);
  const bool newlyMissing = showsFailure_ && progress.missing > 0 && !hasMissing_;
  if (showsFailure_ && progress.missing > 0) {
    ShowMissing(progress.missing);
  }
  if (!appeared_ || newlyMissing) {
    ShowBeside(*this);
    appeared_ = true;
  }
}

void ProgressWindow::ShowBar(const expander::Progress& progress) {
  // An archive of empty files has no bytes to count.
  const bool byBytes = progress.bytesToDo > 0;
  const std::uint64_t toDo = byBytes ? progress.bytesToDo : progress.entriesToDo;
  if (toDo == 0) {
    return;
  }
  if (bar_->maximum() == 0) {
    bar_->setRange(0, 100);
  }
  bar_->setValue(Percent(byBytes ? progress.bytesDone : progress.entriesDone, toDo));
}

void ProgressWindow::ShowFigures(const expander::Progress& progress) {
  if (progress.bytesToDo == 0) {
    return;
  }
  constexpr double kMillisecond = 0.001;
  timeLeft_.Add(static_cast<double>(clock_.elapsed()) * kMillisecond, progress.bytesDone,
                progress.bytesToDo);
  const QString figures =
      words_.Get(Word::DoneOf, words_.Size(std::min(progress.bytesDone, progress.bytesToDo)),
                 words_.Size(progress.bytesToDo));
  const QString time = TimeText();
  const QString text = time.isEmpty() ? figures : figures + QStringLiteral(" – ") + time;
  ChangeText(*figures_, text, SystemFont(), kWidth);
}

QString ProgressWindow::TimeText() const {
  const auto seconds = timeLeft_.Seconds();
  if (!seconds) {
    return {};
  }
  if (*seconds < kMinute) {
    return words_.Count(Word::SecondsLeft, *seconds);
  }
  return *seconds <= 2 * kHour ? words_.Count(Word::MinutesLeft, *seconds / kMinute)
                               : words_.Count(Word::HoursLeft, *seconds / kHour);
}

void ProgressWindow::ShowMissing(std::uint64_t count) {
  hasMissing_ = true;
  ChangeText(*missing_, words_.Count(Word::ItemsFail, count), SystemFont(), kWidth);
  missing_->show();
}

void ProgressWindow::ShowThatInstallerEnded() {
  ChangeText(*ended_, words_.Get(Word::InstallerEnded), SystemFont(), kWidth);
  ended_->show();
}

void ProgressWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    hide();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace zephin
