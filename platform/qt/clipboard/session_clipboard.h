#ifndef PLATFORM_QT_SESSION_CLIPBOARD_H_
#define PLATFORM_QT_SESSION_CLIPBOARD_H_

#include <cstdint>
#include <memory>
#include <string>

#include "platform/framework/string.h"

namespace zephin {

class Display;

/// The session's clipboard. Texts come and go as bytes of UTF-8, so that a path which is not valid
/// as text is kept as it is. Other programs' texts are read on a connection of its own, since the
/// toolkit waits up to 15 seconds for a program that doesn't answer.
class SessionClipboard {
 public:
  SessionClipboard();
  ~SessionClipboard();
  SessionClipboard(const SessionClipboard&) = delete;
  SessionClipboard& operator=(const SessionClipboard&) = delete;

  /// Empty if there is no text. A program that owns it and is too busy to answer within two seconds
  /// is taken for having what it had when it was last asked, and nothing if it never was; while it
  /// stays silent it is waited for no longer than a moment.
  String Text();
  /// An empty text leaves an empty text, not what was there before.
  void SetText(const String& text);

  /// What this process has put on the clipboard would go with it. Has the small program
  /// `clipboard_keeper` of that folder take it over, and returns when it has, or after two seconds.
  /// Nothing is done if the clipboard is another program's by now.
  void HandOver(const std::string& helpersFolder);

 private:
  std::uint32_t Owner();
  String Ask(std::uint32_t owner);

  std::unique_ptr<Display> display_;
  std::string ownText_;
  std::uint32_t ownWindow_ = 0;      ///< The owner's, from when this process was it.
  std::uint32_t silentOwner_ = 0;    ///< Hasn't answered when it was last asked.
  std::uint32_t answeredOwner_ = 0;  ///< Whose answer the last one was.
  String lastAnswer_;
};

}  // namespace zephin

#endif  // PLATFORM_QT_SESSION_CLIPBOARD_H_
