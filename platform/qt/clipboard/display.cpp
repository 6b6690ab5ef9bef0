#include "platform/qt/clipboard/display.h"

#include <poll.h>

#include <cstring>

namespace zephin {

Display::Display() : connection_(xcb_connect(nullptr, nullptr)) {
  if (IsThere()) {
    atoms_ = InternAtoms();
    MakeWindow();
  }
}

Display::~Display() {
  xcb_disconnect(connection_);
}

bool Display::IsThere() const {
  return xcb_connection_has_error(connection_) == 0;
}

xcb_atom_t Display::AtomOf(const char* name) const {
  const auto cookie =
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

Atoms Display::InternAtoms() const {
  return {.clipboard = AtomOf("CLIPBOARD"),
          .clipboardManager = AtomOf("CLIPBOARD_MANAGER"),
          .saveTargets = AtomOf("SAVE_TARGETS"),
          .targets = AtomOf("TARGETS"),
          .timestamp = AtomOf("TIMESTAMP"),
          .multiple = AtomOf("MULTIPLE"),
          .incr = AtomOf("INCR"),
          .utf8String = AtomOf("UTF8_STRING"),
          .text = AtomOf("TEXT"),
          .plainText = AtomOf("text/plain"),
          .plainTextUtf8 = AtomOf("text/plain;charset=utf-8"),
          .transfer = AtomOf("ZEPHIN_TRANSFER")};
}

void Display::MakeWindow() {
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  // The protocol addresses windows, so that a program without one can neither own nor ask.
  window_ = xcb_generate_id(connection_);
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
}

xcb_window_t Display::OwnerOf(xcb_atom_t selection) const {
  const auto cookie = xcb_get_selection_owner(connection_, selection);
  const Reply<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection_, cookie, nullptr));
  return reply ? reply->owner : XCB_NONE;
}

xcb_timestamp_t Display::Now() {
  // The protocol has no request for the time, but the event for a changed property has it.
  xcb_change_property(connection_, XCB_PROP_MODE_APPEND, window_, atoms_.transfer, XCB_ATOM_STRING,
                      8, 0, nullptr);
  while (const Reply<xcb_generic_event_t> event = NextEvent(-1)) {
    if (KindOf(*event) == XCB_PROPERTY_NOTIFY) {
      return reinterpret_cast<const xcb_property_notify_event_t&>(*event).time;
    }
  }
  return XCB_CURRENT_TIME;
}

Reply<xcb_generic_event_t> Display::NextEvent(int milliseconds) {
  xcb_flush(connection_);
  while (IsThere()) {
    if (Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
      return event;
    }
    pollfd ready{.fd = xcb_get_file_descriptor(connection_), .events = POLLIN, .revents = 0};
    // The library may have read events from the socket already: `poll` sees only what is new.
    if (poll(&ready, 1, milliseconds) <= 0) {
      return nullptr;
    }
  }
  return nullptr;
}

std::optional<Display::Property> Display::TakeProperty(xcb_atom_t name, std::uint32_t limit) {
  const auto cookie =
      xcb_get_property(connection_, 1, window_, name, XCB_GET_PROPERTY_TYPE_ANY, 0, limit / 4);
  const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection_, cookie, nullptr));
  // The display deletes a property only when it is read to its end.
  if (!reply || reply->bytes_after != 0) {
    return std::nullopt;
  }
  const auto* bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
  const int length = xcb_get_property_value_length(reply.get());
  return Property{reply->type, std::string(bytes, static_cast<std::size_t>(length))};
}

}  // namespace zephin
