#include "platform/qt/widgets/look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QProxyStyle>
#include <QToolTip>
#include <algorithm>

namespace zephin {
namespace {

constexpr int kSmallestPixels = 7;

/// The toolkit's own style. The buttons of its dialogs would carry pictures of the user's theme.
class PlainStyle final : public QProxyStyle {
 public:
  explicit PlainStyle(QObject* parent) : QProxyStyle(QStringLiteral("Fusion")) {
    setParent(parent);
  }

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons
               ? 0
               : QProxyStyle::styleHint(hint, option, widget, data);
  }
};

QPalette LightPalette() {
  QPalette palette(QColor(0xF2, 0xF2, 0xF2), QColor(0xEC, 0xEC, 0xEC));
  palette.setColor(QPalette::WindowText, Qt::black);
  palette.setColor(QPalette::Text, Qt::black);
  palette.setColor(QPalette::ButtonText, Qt::black);
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::AlternateBase, QColor(0xF5, 0xF5, 0xF5));
  palette.setColor(QPalette::Highlight, QColor(0x2F, 0x6F, 0xD0));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(0x00, 0x00, 0xFF));
  palette.setColor(QPalette::LinkVisited, QColor(0x00, 0x00, 0xFF));
  palette.setColor(QPalette::PlaceholderText, QColor(0x80, 0x80, 0x80));
  palette.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFF, 0xE8));
  palette.setColor(QPalette::ToolTipText, Qt::black);
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(0x90, 0x90, 0x90));
  }
  return palette;
}

/// The first family in the list that is installed. The families whose lines suit the fixed boxes
/// best come first. The toolkit gets one name, since it spends milliseconds on each missing family.
QString FirstInstalledFamily() {
  for (const char* family : {"Liberation Sans", "Arimo", "DejaVu Sans", "Noto Sans"}) {
    if (QFontDatabase::hasFamily(QLatin1String(family))) {
      return QLatin1String(family);
    }
  }
  return QStringLiteral("Sans");
}

}  // namespace

void SetUpLook() {
  const QPalette palette = LightPalette();
  QApplication::setPalette(palette);
  QToolTip::setPalette(palette);
  QApplication::setFont(SystemFont());
  QToolTip::setFont(SystemFont());
  // Windows are laid out from left to right in every language; their texts have directions.
  QApplication::setLayoutDirection(Qt::LeftToRight);
  QApplication::setAttribute(Qt::AA_DontShowIconsInMenus);
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setStyle(new PlainStyle(qApp));
}

QFont SystemFont(int pixels) {
  static const QFont kFont = [] {
    QFont font(FirstInstalledFamily());
    font.setPixelSize(kSystemFontPixels);
    return font;
  }();
  QFont font = kFont;
  if (pixels > 0) {
    font.setPixelSize(pixels);
  }
  return font;
}

int SmallestReadable(int pixels) {
  return std::min(pixels, std::max(kSmallestPixels, pixels * 3 / 4));
}

}  // namespace zephin
