#include "platform/qt/clipboard/text_server.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "platform/qt/clipboard/read_text.h"

namespace zephin {
namespace {

/// In milliseconds, for an owner that doesn't answer.
constexpr int kPatience = 3000;
/// In units of four bytes.
constexpr std::uint32_t kLongestList = 4096;

/// Letters outside Latin-1 become question marks.
std::string ToLatin1(const std::string& utf8) {
  std::string latin;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80) {
      latin += utf8[i];
    } else if ((byte == 0xC2 || byte == 0xC3) && i + 1 < utf8.size()) {
      latin += static_cast<char>(((byte & 0x03U) << 6U) |
                                 (static_cast<unsigned char>(utf8[++i]) & 0x3FU));
    } else if ((byte & 0xC0U) == 0xC0U) {
      latin += '?';
    }
  }
  return latin;
}

template <class T>
void SetProperty(const Display& display, xcb_window_t to, xcb_atom_t property, xcb_atom_t type,
                 const T* items, std::size_t count) {
  xcb_change_property(display.Connection(), XCB_PROP_MODE_REPLACE, to, property, type,
                      static_cast<std::uint8_t>(8 * sizeof(T)), static_cast<std::uint32_t>(count),
                      items);
}

}  // namespace

std::optional<KeptText> TakeOver(Display& display, xcb_window_t owner) {
  const Atoms& names = display.Names();
  const xcb_timestamp_t now = display.Now();
  if (display.OwnerOf(names.clipboard) != owner) {
    return std::nullopt;
  }
  ClipboardAnswer answer = ReadText(display, names.utf8String, now, kPatience);
  // In bytes: half of what one request to the display can hold.
  const std::size_t limit = std::size_t{xcb_get_maximum_request_length(display.Connection())} * 2;
  if (answer.kind != ClipboardAnswer::Kind::Text || answer.bytes.size() > limit) {
    return std::nullopt;
  }
  // No other program may claim the clipboard between the check and the claim.
  xcb_grab_server(display.Connection());
  const bool stillOwned = display.OwnerOf(names.clipboard) == owner;
  if (stillOwned) {
    xcb_set_selection_owner(display.Connection(), display.Window(), names.clipboard, now);
  }
  xcb_ungrab_server(display.Connection());
  if (!stillOwned || display.OwnerOf(names.clipboard) != display.Window()) {
    return std::nullopt;
  }
  return KeptText{std::move(answer.bytes), now};
}

void TextServer::Run() {
  AskManagerToKeep();
  while (const Reply<xcb_generic_event_t> event = display_.NextEvent(-1)) {
    switch (KindOf(*event)) {
      case XCB_SELECTION_REQUEST:
        Answer(reinterpret_cast<const xcb_selection_request_event_t&>(*event));
        break;
      case XCB_SELECTION_CLEAR:
        return;
      default:
        // The manager's answer means nothing: some report a copy that they don't have. One that has
        // a copy takes the clipboard.
        break;
    }
  }
}

void TextServer::AskManagerToKeep() {
  const Atoms& names = display_.Names();
  if (display_.OwnerOf(names.clipboardManager) != XCB_NONE) {
    SetProperty(display_, display_.Window(), names.transfer, XCB_ATOM_ATOM, &names.utf8String, 1);
    xcb_convert_selection(display_.Connection(), display_.Window(), names.clipboardManager,
                          names.saveTargets, names.transfer, text_.since);
  }
}

void TextServer::Answer(const xcb_selection_request_event_t& request) {
  // Old programs give no property. The protocol then uses the target as its name.
  const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
  const bool given = Give(request.requestor, request.target, property);
  xcb_selection_notify_event_t answer{};
  // Every request gets an answer, or the other program would wait for it.
  answer.response_type = XCB_SELECTION_NOTIFY;
  answer.time = request.time;
  answer.requestor = request.requestor;
  answer.selection = request.selection;
  answer.target = request.target;
  answer.property = given ? property : xcb_atom_t{XCB_ATOM_NONE};
  xcb_send_event(display_.Connection(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&answer));
}

bool TextServer::Give(xcb_window_t to, xcb_atom_t target, xcb_atom_t property) {
  const Atoms& names = display_.Names();
  if (target == names.targets) {
    const std::array offered{
        names.targets,       names.timestamp, names.multiple, names.utf8String,
        names.plainTextUtf8, names.plainText, names.text,     xcb_atom_t{XCB_ATOM_STRING}};
    SetProperty(display_, to, property, XCB_ATOM_ATOM, offered.data(), offered.size());
  } else if (target == names.timestamp) {
    SetProperty(display_, to, property, XCB_ATOM_INTEGER, &text_.since, 1);
  } else if (target == names.multiple) {
    return GiveSeveral(to, property);
  } else if (target == XCB_ATOM_STRING) {
    const std::string latin1 = ToLatin1(text_.utf8);
    SetProperty(display_, to, property, XCB_ATOM_STRING, latin1.data(), latin1.size());
  } else if (target == names.utf8String || target == names.text) {
    SetProperty(display_, to, property, names.utf8String, text_.utf8.data(), text_.utf8.size());
  } else if (target == names.plainText || target == names.plainTextUtf8) {
    SetProperty(display_, to, property, target, text_.utf8.data(), text_.utf8.size());
  } else {
    return false;
  }
  return true;
}

/// Clipboard managers ask for all targets in one request: the property is a list of pairs, each a
/// target and the property for it. Targets that can't be given are marked in that list.
bool TextServer::GiveSeveral(xcb_window_t to, xcb_atom_t property) {
  const auto cookie = xcb_get_property(display_.Connection(), 0, to, property,
                                       XCB_GET_PROPERTY_TYPE_ANY, 0, kLongestList);
  const Reply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(display_.Connection(), cookie, nullptr));
  if (!reply || reply->format != 32) {
    return false;
  }
  const auto* first = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
  std::vector<xcb_atom_t> pairs(first, first + reply->value_len);
  for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
    if (pairs[i] == display_.Names().multiple || !Give(to, pairs[i], pairs[i + 1])) {
      pairs[i + 1] = XCB_ATOM_NONE;
    }
  }
  SetProperty(display_, to, property, reply->type, pairs.data(), pairs.size());
  return true;
}

}  // namespace zephin
