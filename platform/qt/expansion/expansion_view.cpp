#include "platform/qt/expansion/expansion_view.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>
#include <cerrno>
#include <type_traits>
#include <variant>

namespace zephin {
namespace {

constexpr std::size_t kBlock = 1U << 16U;
/// A longer line is no message.
constexpr std::size_t kLongestLine = 1U << 20U;
/// In milliseconds.
constexpr int kWatchInterval = 500;

}  // namespace

ExpansionView::ExpansionView(const Words& words, int descriptor)
    : words_(words), descriptor_(descriptor), notifier_(descriptor, QSocketNotifier::Read) {
  (void)::fcntl(descriptor, F_SETFL, O_NONBLOCK);
  connect(&notifier_, &QSocketNotifier::activated, this, [this] { Read(); });
  connect(&watch_, &QTimer::timeout, this, [this] { WatchInstaller(); });
}

void ExpansionView::Read() {
  // All that is there before anything is shown: an expansion that ends at once needs no window.
  std::array<char, kBlock> block{};
  ssize_t count = 0;
  do {
    count = ::read(descriptor_, block.data(), block.size());
    if (count > 0) {
      unread_.append(block.data(), static_cast<std::size_t>(count));
    }
  } while ((count > 0 && unread_.size() < kLongestLine) || (count < 0 && errno == EINTR));
  const bool open = count > 0 || (count < 0 && errno == EAGAIN);
  TakeLines();
  if (!open) {
    notifier_.setEnabled(false);
    End();
  }
}

void ExpansionView::TakeLines() {
  std::optional<expander::Message> progress;
  std::size_t begin = 0;
  for (std::size_t end = unread_.find('\n'); end != std::string::npos;
       end = unread_.find('\n', begin)) {
    const auto message = expander::Decode(std::string_view(unread_).substr(begin, end - begin));
    begin = end + 1;
    if (message && std::holds_alternative<expander::Progress>(*message)) {
      progress = message;
    } else if (message) {
      progress.reset();
      Take(*message);
    }
  }
  unread_.erase(0, begin);
  if (unread_.size() > kLongestLine) {
    unread_.clear();
  }
  // Of several only the last one is news.
  if (progress) {
    Take(*progress);
  }
}

void ExpansionView::Take(const expander::Message& message) {
  if (const auto* job = std::get_if<expander::Job>(&message)) {
    Begin(*job);
  } else if (!job_ || failure_) {
    return;
  } else if (const auto* progress = std::get_if<expander::Progress>(&message)) {
    progress_->Show(*progress);
  } else if (const auto* entry = std::get_if<expander::MissingEntry>(&message)) {
    missing_.push_back(*entry);
  } else if (const auto* failure = std::get_if<expander::Failure>(&message)) {
    Fail(*failure);
  } else {
    QCoreApplication::quit();
  }
}

void ExpansionView::Begin(const expander::Job& job) {
  if (!job_) {
    job_ = job;
    progress_ = std::make_unique<ProgressWindow>(words_, job);
    watch_.start(kWatchInterval);
    WatchInstaller();
  }
}

void ExpansionView::Fail(const expander::Failure& failure) {
  watch_.stop();
  progress_->hide();
  failure_ =
      std::make_unique<FailureWindow>(words_, TextOfFailure(words_, *job_, failure, missing_));
  connect(failure_.get(), &QDialog::finished, this, [] { QCoreApplication::quit(); });
  failure_->Appear();
}

void ExpansionView::End() {
  if (failure_) {
    return;
  }
  if (job_ && job_->showsFailure) {
    expander::Failure failure;
    failure.reason = expander::Reason::BrokenOff;
    Fail(failure);
  } else {
    QCoreApplication::quit();
  }
}

void ExpansionView::WatchInstaller() {
  if (!installers_.Run()) {
    watch_.stop();
    progress_->ShowThatInstallerEnded();
  }
}

}  // namespace zephin
