#include "platform/qt/clipboard/text_server.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace zephin {
namespace {

constexpr std::size_t kLongestPiece = 256U << 10U;
/// How long a program that has begun to read is waited for after the clipboard is another's.
constexpr int kLastPatience = 5000;
constexpr std::uint32_t kLongestList = 4096;

/// Letters outside Latin-1 become question marks: programs that ask for no more can't show them.
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

TextServer::TextServer(Display& display, KeptText text)
    : display_(display),
      text_(std::move(text)),
      longestPiece_(std::min(
          kLongestPiece, std::size_t{xcb_get_maximum_request_length(display.Connection())} * 2)) {}

void TextServer::Run() {
  AskManagerToKeep();
  while (!ends_ || !transfers_.empty()) {
    const Reply<xcb_generic_event_t> event = display_.NextEvent(ends_ ? kLastPatience : -1);
    if (!event) {
      return;
    }
    Handle(*event);
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

void TextServer::Handle(const xcb_generic_event_t& event) {
  switch (KindOf(event)) {
    case XCB_SELECTION_REQUEST:
      Answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
      break;
    case XCB_SELECTION_CLEAR:
      ends_ = true;
      break;
    case XCB_SELECTION_NOTIFY:
      // The manager has answered: with a property, it has the text.
      ends_ =
          reinterpret_cast<const xcb_selection_notify_event_t&>(event).property != XCB_ATOM_NONE;
      break;
    case XCB_PROPERTY_NOTIFY:
      GiveNextPiece(reinterpret_cast<const xcb_property_notify_event_t&>(event));
      break;
    default:
      break;
  }
}

void TextServer::Answer(const xcb_selection_request_event_t& request) {
  // Programs from before the present rules give no property and expect the target's name.
  const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
  const bool given = Give(request.requestor, request.target, property);
  xcb_selection_notify_event_t answer{};
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
    GiveText(to, property, XCB_ATOM_STRING, ToLatin1(text_.utf8));
  } else if (target == names.utf8String || target == names.text) {
    GiveText(to, property, names.utf8String, text_.utf8);
  } else if (target == names.plainText || target == names.plainTextUtf8) {
    GiveText(to, property, target, text_.utf8);
  } else {
    return false;
  }
  return true;
}

/// The property lists pairs of a target and the property for it.
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

void TextServer::GiveText(xcb_window_t to, xcb_atom_t property, xcb_atom_t type,
                          std::string bytes) {
  if (bytes.size() <= longestPiece_) {
    SetProperty(display_, to, property, type, bytes.data(), bytes.size());
    return;
  }
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(display_.Connection(), to, XCB_CW_EVENT_MASK, &events);
  const auto atLeast = static_cast<std::uint32_t>(bytes.size());
  SetProperty(display_, to, property, display_.Names().incr, &atLeast, 1);
  transfers_.push_back({to, property, type, std::move(bytes), 0});
}

/// A program asks for the next piece by deleting the last one; an empty one is the end.
void TextServer::GiveNextPiece(const xcb_property_notify_event_t& change) {
  if (change.state != XCB_PROPERTY_DELETE) {
    return;
  }
  const auto transfer =
      std::find_if(transfers_.begin(), transfers_.end(), [&](const Transfer& each) {
        return each.to == change.window && each.property == change.atom;
      });
  if (transfer == transfers_.end()) {
    return;
  }
  const std::size_t length = std::min(longestPiece_, transfer->bytes.size() - transfer->sent);
  SetProperty(display_, transfer->to, transfer->property, transfer->type,
              transfer->bytes.data() + transfer->sent, length);
  transfer->sent += length;
  if (length == 0) {
    transfers_.erase(transfer);
  }
}

}  // namespace zephin
