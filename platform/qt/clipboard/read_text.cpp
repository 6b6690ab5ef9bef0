#include "platform/qt/clipboard/read_text.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace zephin {
namespace {

using Kind = ClipboardAnswer::Kind;

/// In bytes. Another program could fill this one's memory otherwise.
constexpr std::uint32_t kLongestText = 64U << 20U;

/// Waits for an event of that kind for which `is` is true. Null if none comes in time.
template <class Event, class Predicate>
Reply<xcb_generic_event_t> Await(Display& display, unsigned kind, int patience, Predicate is) {
  while (Reply<xcb_generic_event_t> event = display.NextEvent(patience)) {
    if (KindOf(*event) == kind && is(reinterpret_cast<const Event&>(*event))) {
      return event;
    }
  }
  return nullptr;
}

/// Reads a long text, which comes in pieces. An empty piece ends it.
ClipboardAnswer ReadPieces(Display& display, int patience) {
  const auto isPiece = [&](const xcb_property_notify_event_t& change) {
    return change.atom == display.Names().transfer && change.state == XCB_PROPERTY_NEW_VALUE;
  };
  std::string text;
  while (Await<xcb_property_notify_event_t>(display, XCB_PROPERTY_NOTIFY, patience, isPiece)) {
    const auto piece = display.TakeProperty(display.Names().transfer, kLongestText);
    if (!piece || text.size() + piece->bytes.size() > kLongestText) {
      return {};
    }
    if (piece->bytes.empty()) {
      return {Kind::Text, std::move(text)};
    }
    text += piece->bytes;
  }
  return {Kind::Silence, {}};
}

}  // namespace

ClipboardAnswer ReadText(Display& display, xcb_atom_t target, xcb_timestamp_t now, int patience) {
  const Atoms& names = display.Names();
  xcb_convert_selection(display.Connection(), display.Window(), names.clipboard, target,
                        names.transfer, now);
  // The answer to an earlier question may come now. The time tells the two apart.
  const Reply<xcb_generic_event_t> event = Await<xcb_selection_notify_event_t>(
      display, XCB_SELECTION_NOTIFY, patience,
      [&](const xcb_selection_notify_event_t& answer) { return answer.time == now; });
  if (!event) {
    return {Kind::Silence, {}};
  }
  if (reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property == XCB_ATOM_NONE) {
    return {};
  }
  std::optional<Display::Property> text = display.TakeProperty(names.transfer, kLongestText);
  if (!text) {
    return {};
  }
  // A long text is announced by its size alone; each deleted property asks for the next piece.
  return text->type == names.incr ? ReadPieces(display, patience)
                                  : ClipboardAnswer{Kind::Text, std::move(text->bytes)};
}

}  // namespace zephin
