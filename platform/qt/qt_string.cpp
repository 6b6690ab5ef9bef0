#include "platform/qt/qt_string.h"

#include <QStringConverter>

#include "platform/framework/text.h"

namespace zephin {
namespace {

QString FromUtf8(const std::string& bytes) {
  return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

bool IsValidUtf8(const std::string& bytes) {
  QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
  const QString text = decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  return !decoder.hasError();
}

QString FromUtf16(const std::string& bytes) {
  QStringDecoder decoder(QStringConverter::Utf16LE, QStringConverter::Flag::ConvertInitialBom);
  return decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

}  // namespace

QString ToQString(const String& text) {
  switch (text.DeclaredEncoding()) {
    case Encoding::UTF16:
      return FromUtf16(text.Bytes());
    case Encoding::MacRoman:
      return FromUtf8(ConvertEncoding(text, Encoding::UTF8).Bytes());
    case Encoding::None:
      // Records without a declared encoding were written by either generation of builders.
      return IsValidUtf8(text.Bytes()) ? FromUtf8(text.Bytes())
                                       : ToQString(DefineEncoding(text, Encoding::MacRoman));
    case Encoding::UTF8:
      break;
  }
  return FromUtf8(text.Bytes());
}

String FromQString(const QString& text) {
  return Utf8(text.toUtf8().toStdString());
}

// Texts of setups have the line ends of all three systems.
QString WithLineFeeds(QString text) {
  return text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
}

QString AsCaption(QString text) {
  // The toolkit would take "&" for the mark of a keyboard shortcut.
  return text.replace(u'&', QLatin1String("&&"));
}

QString AsWindowTitle(QString text) {
  // A doubled mark stands for the letters themselves.
  return text.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

QString AsToolTip(const QString& text, int width) {
  // Only a table gives the toolkit a width; it breaks other texts where it likes.
  return QStringLiteral(
             "<table width='%1' cellspacing='0' cellpadding='0'><tr>"
             "<td style='white-space:pre-wrap'>%2</td></tr></table>")
      .arg(QString::number(width), text.toHtmlEscaped());
}

}  // namespace zephin
