#ifndef PLATFORM_QT_CLIPBOARD_DISPLAY_H_
#define PLATFORM_QT_CLIPBOARD_DISPLAY_H_

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

namespace zephin {

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};
/// What the display library hands out; null where it failed.
template <class T>
using Reply = std::unique_ptr<T, FreeReply>;

/// The names that the exchange of a text between programs goes by.
struct Atoms {
  xcb_atom_t clipboard, clipboardManager, saveTargets, targets, timestamp, multiple, incr;
  xcb_atom_t utf8String, text, plainText, plainTextUtf8, transfer;
};

/// A connection to the user's display, beside the toolkit's, with one window that is never shown.
class Display {
 public:
  Display();
  ~Display();
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;

  /// False if there is no display, or if it has gone.
  bool IsThere() const;
  xcb_connection_t* Connection() const { return connection_; }
  xcb_window_t Window() const { return window_; }
  const Atoms& Names() const { return atoms_; }

  /// XCB_NONE if nobody owns it.
  xcb_window_t OwnerOf(xcb_atom_t selection) const;
  /// The display's own time now, which orders the claims on a selection.
  xcb_timestamp_t Now();
  /// The next event, or null when the display has gone or `milliseconds` (below 0: no limit) have
  /// passed. Sends what is waiting to be sent.
  Reply<xcb_generic_event_t> NextEvent(int milliseconds);

  struct Property {
    xcb_atom_t type;
    std::string bytes;
  };
  /// Takes a property off this program's window; nothing if it is longer than `limit` bytes.
  std::optional<Property> TakeProperty(xcb_atom_t name, std::uint32_t limit);

 private:
  xcb_atom_t AtomOf(const char* name) const;
  Atoms InternAtoms() const;
  void MakeWindow();

  xcb_connection_t* connection_;
  xcb_window_t window_ = XCB_NONE;
  Atoms atoms_{};
};

/// The kind of an event, whether another program sent it or the display itself.
inline unsigned KindOf(const xcb_generic_event_t& event) {
  return event.response_type & 0x7FU;
}

}  // namespace zephin

#endif  // PLATFORM_QT_CLIPBOARD_DISPLAY_H_
