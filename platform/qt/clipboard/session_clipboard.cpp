#include "platform/qt/clipboard/session_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "platform/framework/launcher.h"
#include "platform/qt/clipboard/display.h"
#include "platform/qt/clipboard/read_text.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/session/session.h"

namespace zephin {
namespace {

// In milliseconds.
constexpr int kPatience = 2000;
constexpr int kFirstPatience = 10'000;
constexpr int kPatienceWithSilent = 50;

}  // namespace

SessionClipboard::SessionClipboard() = default;
SessionClipboard::~SessionClipboard() = default;

std::uint32_t SessionClipboard::Owner() {
  if (!display_) {
    display_ = std::make_unique<Display>();
  }
  return display_->OwnerOf(display_->Names().clipboard);
}

String SessionClipboard::Text() {
  const std::uint32_t owner = Owner();
  if (owner == XCB_NONE) {
    return {};
  }
  // This process can't answer itself while it waits.
  return owner == ownWindow_ ? Utf8(ownText_) : Ask(owner);
}

String SessionClipboard::Ask(std::uint32_t owner) {
  const int usual = hasAnswer_ ? kPatience : kFirstPatience;
  const int patience = owner == silentOwner_ ? kPatienceWithSilent : usual;
  ClipboardAnswer answer =
      ReadText(*display_, display_->Names().utf8String, display_->Now(), patience);
  silentOwner_ = answer.kind == ClipboardAnswer::Kind::Silence ? owner : XCB_NONE;
  if (silentOwner_ != XCB_NONE) {
    // A helper program that is busy has not taken back what it said.
    return lastAnswer_;
  }
  hasAnswer_ = true;
  lastAnswer_ = Utf8(std::move(answer.bytes));
  // Old programs offer Latin-1 only.
  if (answer.kind == ClipboardAnswer::Kind::Nothing) {
    answer = ReadText(*display_, XCB_ATOM_STRING, display_->Now(), patience);
    lastAnswer_ = FromQString(QString::fromLatin1(QByteArray::fromStdString(answer.bytes)));
  }
  return lastAnswer_;
}

void SessionClipboard::SetText(const String& text) {
  const bool isUtf8 =
      text.DeclaredEncoding() == Encoding::UTF8 || text.DeclaredEncoding() == Encoding::None;
  ownText_ = isUtf8 ? text.Bytes() : FromQString(ToQString(text)).Bytes();
  // Not `setText`, which would replace bytes that are not valid UTF-8.
  auto* data = new QMimeData;
  data->setData(QStringLiteral("text/plain"), QByteArray::fromStdString(ownText_));
  QGuiApplication::clipboard()->setMimeData(data);
  ownWindow_ = Owner();
  hasAnswer_ = false;
  lastAnswer_ = {};
}

void SessionClipboard::HandOver(const std::string& helpersFolder) {
  if (ownWindow_ == XCB_NONE || Owner() != ownWindow_) {
    return;
  }
  // The keeper reads the text from this process, which must answer it meanwhile.
  if (StartDetached({{helpersFolder + "/clipboard_keeper", std::to_string(ownWindow_)}, ""})) {
    TalkToDisplay(kPatience, [&] { return Owner() != ownWindow_; });
  }
}

}  // namespace zephin
