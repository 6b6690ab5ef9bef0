#include "platform/qt/clipboard/take_over.h"

#include <utility>

#include "platform/qt/clipboard/read_text.h"

namespace zephin {
namespace {

constexpr int kPatience = 3000;  ///< Milliseconds of silence.

}  // namespace

std::optional<KeptText> TakeOver(Display& display, xcb_window_t owner) {
  const Atoms& names = display.Names();
  const xcb_timestamp_t now = display.Now();
  if (display.OwnerOf(names.clipboard) != owner) {
    return std::nullopt;
  }
  ClipboardAnswer answer = ReadText(display, names.utf8String, now, kPatience);
  if (answer.kind != ClipboardAnswer::Kind::Text) {
    return std::nullopt;
  }
  // Nobody else may take it between the look and the taking.
  xcb_grab_server(display.Connection());
  const bool stillThere = display.OwnerOf(names.clipboard) == owner;
  if (stillThere) {
    xcb_set_selection_owner(display.Connection(), display.Window(), names.clipboard, now);
  }
  xcb_ungrab_server(display.Connection());
  if (!stillThere || display.OwnerOf(names.clipboard) != display.Window()) {
    return std::nullopt;
  }
  return KeptText{std::move(answer.bytes), now};
}

}  // namespace zephin
