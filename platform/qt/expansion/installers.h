// The installers of this program's bundle that run, and where their windows are.
#ifndef PLATFORM_QT_EXPANSION_INSTALLERS_H_
#define PLATFORM_QT_EXPANSION_INSTALLERS_H_

#include <QRect>
#include <string>
#include <vector>

namespace zephin {

/// Recognises an installer by its program file, which is in `Contents/MacOS` of the same bundle.
class Installers {
 public:
  /// Finds those that run now.
  Installers();
  ~Installers();
  Installers(const Installers&) = delete;
  Installers& operator=(const Installers&) = delete;

  /// Whether one of those that ran at the start still runs.
  bool Run() const;

 private:
  /// Descriptors of their folders in /proc, which outlive the process without meaning another one.
  std::vector<int> folders_;
};

/// The areas of the visible windows of running installers of this bundle and of other programs like
/// this one, frames included, in pixels of the X server. Empty if the server doesn't report them.
std::vector<QRect> WindowsToSpare();

/// Whether a visible window of such an installer exists.
bool InstallerIsVisible();

}  // namespace zephin

#endif  // PLATFORM_QT_EXPANSION_INSTALLERS_H_
