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
/// An answer or event of the display library, which the C library frees. Null for a failure.
template <class T>
using Reply = std::unique_ptr<T, FreeReply>;

/// The names in the exchange of a text between programs, as the display numbers them.
struct Atoms {
  xcb_atom_t clipboard, clipboardManager, saveTargets, targets, timestamp, multiple, incr;
  xcb_atom_t utf8String, text, plainText, plainTextUtf8, transfer;
};

/// A connection to the user's X display beside the toolkit's, with one window that is never shown.
/// The window owns the clipboard, and receives the texts of other programs.
class Display {
 public:
  /// Doesn't fail: ask `IsThere` afterwards.
  Display();
  ~Display();
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;

  /// False if there is no display or the connection is lost. The other calls are harmless then, and
  /// return nothing.
  bool IsThere() const;
  xcb_connection_t* Connection() const { return connection_; }
  xcb_window_t Window() const { return window_; }
  const Atoms& Names() const { return atoms_; }

  /// The window that owns the selection, or XCB_NONE.
  xcb_window_t OwnerOf(xcb_atom_t selection) const;
  /// The display's time now, by which it orders the claims on a selection. Drops the events that
  /// arrive meanwhile.
  xcb_timestamp_t Now();
  /// Sends pending requests and returns the next event. Null if none comes within that many
  /// milliseconds (below 0: no limit), or if the connection is lost.
  Reply<xcb_generic_event_t> NextEvent(int milliseconds);

  struct Property {
    xcb_atom_t type;    ///< As the sender has declared it.
    std::string bytes;  ///< At most `limit`, in any encoding.
  };
  /// Reads and deletes a property of this window. Nothing if it can't be read, or if it is longer
  /// than `limit` bytes; then it isn't deleted.
  std::optional<Property> TakeProperty(xcb_atom_t name, std::uint32_t limit);

 private:
  xcb_atom_t AtomOf(const char* name) const;
  Atoms InternAtoms() const;
  void MakeWindow();

  xcb_connection_t* connection_;
  xcb_window_t window_ = XCB_NONE;
  Atoms atoms_{};
};

/// The kind of an event. The bit that says who has sent it is left out.
inline unsigned KindOf(const xcb_generic_event_t& event) {
  return event.response_type & 0x7FU;
}

}  // namespace zephin

#endif  // PLATFORM_QT_CLIPBOARD_DISPLAY_H_
