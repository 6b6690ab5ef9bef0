#ifndef PLATFORM_QT_CLIPBOARD_TEXT_SERVER_H_
#define PLATFORM_QT_CLIPBOARD_TEXT_SERVER_H_

#include <list>
#include <string>

#include "platform/qt/clipboard/display.h"
#include "platform/qt/clipboard/take_over.h"

namespace zephin {

/// Gives the clipboard's text to the programs that ask for it, until another program takes the
/// clipboard, a clipboard manager has taken the text into its keeping, or the session ends.
class TextServer {
 public:
  TextServer(Display& display, KeptText text);
  void Run();

 private:
  /// A text on its way to a program, piece by piece.
  struct Transfer {
    xcb_window_t to;
    xcb_atom_t property;
    xcb_atom_t type;
    std::string bytes;
    std::size_t sent;
  };

  void AskManagerToKeep();
  void Handle(const xcb_generic_event_t& event);
  void Answer(const xcb_selection_request_event_t& request);
  bool Give(xcb_window_t to, xcb_atom_t target, xcb_atom_t property);
  bool GiveSeveral(xcb_window_t to, xcb_atom_t property);
  void GiveText(xcb_window_t to, xcb_atom_t property, xcb_atom_t type, std::string bytes);
  void GiveNextPiece(const xcb_property_notify_event_t& change);

  Display& display_;
  KeptText text_;
  std::size_t longestPiece_;
  std::list<Transfer> transfers_;
  bool ends_ = false;
};

}  // namespace zephin

#endif  // PLATFORM_QT_CLIPBOARD_TEXT_SERVER_H_
