#ifndef PLATFORM_QT_CLIPBOARD_TEXT_SERVER_H_
#define PLATFORM_QT_CLIPBOARD_TEXT_SERVER_H_

#include <optional>
#include <string>

#include "platform/qt/clipboard/display.h"

// Keeps a text on the clipboard for a program that ends. The text is short (a path, say): it is
// given to each program that asks for it in one piece.

namespace zephin {

/// A text on the clipboard, and the display's time from which it is there.
struct KeptText {
  std::string utf8;
  xcb_timestamp_t since = XCB_CURRENT_TIME;
};

/// Reads the clipboard's text from the window `owner`, and becomes the clipboard's owner. Returns
/// nothing, and changes nothing, if another window owns the clipboard by now, or if the owner
/// doesn't answer, has no text, or has one that is too long for one piece.
std::optional<KeptText> TakeOver(Display& display, xcb_window_t owner);

/// Serves the text that was taken over.
class TextServer {
 public:
  /// `display` is the one that the text was taken over on, and must outlive this object.
  TextServer(Display& display, KeptText text) : display_(display), text_(std::move(text)) {}

  /// Offers the text to the clipboard manager, if there is one, and answers requests for it.
  /// Returns when another program, the manager included, takes the clipboard, or when the session
  /// ends.
  void Run();

 private:
  /// Does nothing if no manager runs.
  void AskManagerToKeep();
  void Answer(const xcb_selection_request_event_t& request);
  // False if the target is none of those offered; the property is unchanged then.
  bool Give(xcb_window_t to, xcb_atom_t target, xcb_atom_t property);
  bool GiveSeveral(xcb_window_t to, xcb_atom_t property);

  Display& display_;
  KeptText text_;
};

}  // namespace zephin

#endif  // PLATFORM_QT_CLIPBOARD_TEXT_SERVER_H_
