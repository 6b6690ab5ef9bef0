#ifndef PLATFORM_QT_SESSION_CLIPBOARD_H_
#define PLATFORM_QT_SESSION_CLIPBOARD_H_

#include <cstdint>
#include <memory>
#include <string>

#include "platform/framework/string.h"

namespace zephin {

class Display;

/// The session's clipboard. Texts are bytes of UTF-8, so that a path that is not valid UTF-8 is
/// kept as it is. Other programs' texts are read on a connection of its own, because the toolkit
/// waits for up to 15 seconds for a program that doesn't answer.
class SessionClipboard {
 public:
  SessionClipboard();
  ~SessionClipboard();
  SessionClipboard(const SessionClipboard&) = delete;
  SessionClipboard& operator=(const SessionClipboard&) = delete;

  /// Empty if there is no text. The program that owns the clipboard has two seconds to answer. If
  /// it is busy for longer, the text that was last read counts; until it answers, each further call
  /// waits only for a moment. If nothing was read yet, the owner has ten seconds.
  String Text();
  /// An empty text replaces what is on the clipboard, too.
  void SetText(const String& text);

  /// Lets another program keep the text after this process has ended: starts `clipboard_keeper` in
  /// that folder, and returns when it has the text, or after two seconds. Does nothing if another
  /// program owns the clipboard.
  void HandOver(const std::string& helpersFolder);

 private:
  /// The window that owns the clipboard, or 0. Connects to the display at the first call.
  std::uint32_t Owner();
  /// The text of another program.
  String Ask(std::uint32_t owner);

  std::unique_ptr<Display> display_;
  std::string ownText_;
  std::uint32_t ownWindow_ = 0;    ///< The owner when this process set the text.
  std::uint32_t silentOwner_ = 0;  ///< The last one asked, if it hasn't answered.
  bool hasAnswer_ = false;  ///< Whether an owner has answered since this process set the text.
  String lastAnswer_;
};

}  // namespace zephin

#endif  // PLATFORM_QT_SESSION_CLIPBOARD_H_
