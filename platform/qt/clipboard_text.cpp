#include "platform/qt/clipboard_text.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "platform/framework/launcher.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/session.h"

namespace zephin {
namespace {

constexpr int kPatience = 2000;  ///< Milliseconds.

}  // namespace

String ReadClipboardText() {
  return FromQString(QGuiApplication::clipboard()->text());
}

void WriteClipboardText(const String& text) {
  const bool isUtf8 =
      text.DeclaredEncoding() == Encoding::UTF8 || text.DeclaredEncoding() == Encoding::None;
  const String utf8 = isUtf8 ? text : FromQString(ToQString(text));
  // As bytes: a path need not be valid as text.
  auto* data = new QMimeData;
  data->setData(QStringLiteral("text/plain"), QByteArray::fromStdString(utf8.Bytes()));
  QGuiApplication::clipboard()->setMimeData(data);
}

void HandClipboardOver(const std::string& helpersFolder) {
  const QClipboard* clipboard = QGuiApplication::clipboard();
  if (clipboard->ownsClipboard() &&
      StartDetached({helpersFolder + "/clipboard_keeper", std::to_string(ClipboardOwner())})) {
    TalkToDisplay(kPatience, [&] { return !clipboard->ownsClipboard(); });
  }
}

}  // namespace zephin
