#ifndef PLATFORM_QT_WIDGETS_LOCKED_ICONS_H_
#define PLATFORM_QT_WIDGETS_LOCKED_ICONS_H_

#include <QFileIconProvider>
#include <QIcon>

namespace zephin {

/// Icons for lists of folders: a folder that the user can't write to is grey and has a lock, others
/// look as the style draws them. The list asks for icons from a thread of its own.
class LockedIcons final : public QFileIconProvider {
 public:
  /// Draws the icons, on the main thread. The toolkit's application must exist.
  LockedIcons();

  using QFileIconProvider::icon;
  /// Asks the file system whether the user may write to the folder. Files have their usual icons.
  /// Safe to call from any thread.
  QIcon icon(const QFileInfo& info) const override;

 private:
  QIcon open_;
  QIcon locked_;
};

}  // namespace zephin

#endif  // PLATFORM_QT_WIDGETS_LOCKED_ICONS_H_
