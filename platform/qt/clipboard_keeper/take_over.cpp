#include "platform/qt/clipboard_keeper/take_over.h"

namespace zephin {
namespace {

constexpr int kPatience = 3000;  ///< Milliseconds of silence.
constexpr std::uint32_t kLongestText = 64U << 20U;

/// Waits for an event of that kind; null if it doesn't come.
Reply<xcb_generic_event_t> Await(Display& display, unsigned kind) {
  while (Reply<xcb_generic_event_t> event = display.NextEvent(kPatience)) {
    if (KindOf(*event) == kind) {
      return event;
    }
  }
  return nullptr;
}

/// Waits until the owner has put the next piece of a long text on the window.
bool AwaitPiece(Display& display) {
  while (const Reply<xcb_generic_event_t> event = Await(display, XCB_PROPERTY_NOTIFY)) {
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
    if (change.atom == display.Names().transfer && change.state == XCB_PROPERTY_NEW_VALUE) {
      return true;
    }
  }
  return false;
}

/// The rest of a text that comes in pieces; an empty piece ends it.
std::optional<std::string> ReadPieces(Display& display) {
  std::string text;
  while (AwaitPiece(display)) {
    const auto piece = display.TakeProperty(display.Names().transfer, kLongestText);
    if (!piece || text.size() + piece->bytes.size() > kLongestText) {
      return std::nullopt;
    }
    if (piece->bytes.empty()) {
      return text;
    }
    text += piece->bytes;
  }
  return std::nullopt;
}

std::optional<std::string> ReadText(Display& display, xcb_timestamp_t now) {
  const Atoms& names = display.Names();
  xcb_convert_selection(display.Connection(), display.Window(), names.clipboard, names.utf8String,
                        names.transfer, now);
  const Reply<xcb_generic_event_t> event = Await(display, XCB_SELECTION_NOTIFY);
  if (!event ||
      reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property == XCB_ATOM_NONE) {
    return std::nullopt;
  }
  const auto text = display.TakeProperty(names.transfer, kLongestText);
  if (!text) {
    return std::nullopt;
  }
  return text->type == names.incr ? ReadPieces(display) : text->bytes;
}

}  // namespace

std::optional<KeptText> TakeOver(Display& display, xcb_window_t owner) {
  const xcb_atom_t clipboard = display.Names().clipboard;
  const xcb_timestamp_t now = display.Now();
  if (display.OwnerOf(clipboard) != owner) {
    return std::nullopt;
  }
  std::optional<std::string> text = ReadText(display, now);
  if (!text) {
    return std::nullopt;
  }
  // Nobody else may take it between the look and the taking.
  xcb_grab_server(display.Connection());
  const bool stillThere = display.OwnerOf(clipboard) == owner;
  if (stillThere) {
    xcb_set_selection_owner(display.Connection(), display.Window(), clipboard, now);
  }
  xcb_ungrab_server(display.Connection());
  if (!stillThere || display.OwnerOf(clipboard) != display.Window()) {
    return std::nullopt;
  }
  return KeptText{std::move(*text), now};
}

}  // namespace zephin
