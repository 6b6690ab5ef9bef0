#include "platform/qt/expansion/installers.h"

#include <fcntl.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QFile>
#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/qt/session/session.h"

namespace zephin {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kMostWindows = 1024;

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <class Reply>
using Answer = std::unique_ptr<Reply, Free>;

/// The program file of a process, by the descriptor of its folder in /proc. Empty if it has ended
/// or belongs to another user.
std::string ProgramOf(int folder) {
  std::array<char, PATH_MAX> path{};
  const ssize_t length = ::readlinkat(folder, "exe", path.data(), path.size());
  return {path.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

int OpenProcess(const std::string& folder) {
  return ::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
}

const std::string& FolderOfInstallers() {
  // Found once: the bundle may be deleted while this program runs.
  static const std::string kFolder = QFile::encodeName(BundleContents()).toStdString() + "MacOS/";
  return kFolder;
}

bool IsInstaller(const std::string& program) {
  return program.starts_with(FolderOfInstallers());
}

bool IsWindowProgram(std::string_view program) {
  return program.ends_with("/expansion_window");
}

/// A connection of its own, for a few questions. The toolkit's answers don't include other
/// programs' windows.
class Server {
 public:
  Server() : connection_(xcb_connect(nullptr, &screen_)) {
    if (xcb_connection_has_error(connection_) == 0) {
      xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
      for (int i = 0; i < screen_ && screens.rem > 1; ++i) {
        xcb_screen_next(&screens);
      }
      root_ = screens.data->root;
    }
  }
  ~Server() { xcb_disconnect(connection_); }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// The windows that a window manager manages; without one, all at the top.
  std::vector<xcb_window_t> Windows() const {
    if (root_ == XCB_NONE) {
      return {};
    }
    std::vector<xcb_window_t> managed = Values(root_, "_NET_CLIENT_LIST", XCB_ATOM_WINDOW);
    if (!managed.empty()) {
      return managed;
    }
    const Answer<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection_, xcb_query_tree(connection_, root_), nullptr));
    if (tree == nullptr) {
      return {};
    }
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
  }

  /// The program file of a window's process; empty if it is unknown.
  std::string ProgramOfWindow(xcb_window_t window) const {
    const std::vector<std::uint32_t> process = Values(window, "_NET_WM_PID", XCB_ATOM_CARDINAL);
    if (process.empty() || process.front() == static_cast<std::uint32_t>(::getpid())) {
      return {};
    }
    const int folder = OpenProcess("/proc/" + std::to_string(process.front()));
    std::string program = ProgramOf(folder);
    (void)::close(folder);
    return program;
  }

  /// Nothing if the window is hidden.
  std::optional<QRect> Area(xcb_window_t window) const {
    const Answer<xcb_get_window_attributes_reply_t> state(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, window), nullptr));
    const Answer<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
    const Answer<xcb_translate_coordinates_reply_t> place(xcb_translate_coordinates_reply(
        connection_, xcb_translate_coordinates(connection_, window, root_, 0, 0), nullptr));
    if (state == nullptr || size == nullptr || place == nullptr ||
        state->map_state != XCB_MAP_STATE_VIEWABLE) {
      return std::nullopt;
    }
    QRect area(place->dst_x, place->dst_y, size->width, size->height);
    // Left, right, top, bottom.
    const std::vector<std::uint32_t> frame =
        Values(window, "_NET_FRAME_EXTENTS", XCB_ATOM_CARDINAL);
    if (frame.size() == 4) {
      area.adjust(-static_cast<int>(frame[0]), -static_cast<int>(frame[2]),
                  static_cast<int>(frame[1]), static_cast<int>(frame[3]));
    }
    return area;
  }

 private:
  std::vector<std::uint32_t> Values(xcb_window_t window, std::string_view property,
                                    xcb_atom_t type) const {
    const Answer<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 1, static_cast<std::uint16_t>(property.size()),
                        property.data()),
        nullptr));
    if (atom == nullptr || atom->atom == XCB_ATOM_NONE) {
      return {};
    }
    const Answer<xcb_get_property_reply_t> value(xcb_get_property_reply(
        connection_, xcb_get_property(connection_, 0, window, atom->atom, type, 0, kMostWindows),
        nullptr));
    if (value == nullptr || value->format != 32) {
      return {};
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(value.get()));
    return {first, first + xcb_get_property_value_length(value.get()) / 4};
  }

  int screen_ = 0;
  xcb_connection_t* connection_;
  xcb_window_t root_ = XCB_NONE;
};

template <class Predicate>
std::vector<QRect> AreasOf(Predicate counts) {
  const Server server;
  std::vector<QRect> areas;
  for (const xcb_window_t window : server.Windows()) {
    if (counts(server.ProgramOfWindow(window))) {
      if (const auto area = server.Area(window)) {
        areas.push_back(*area);
      }
    }
  }
  return areas;
}

}  // namespace

Installers::Installers() {
  std::error_code failure;
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc", failure)) {
    const std::string name = entry.path().filename();
    if (name.find_first_not_of("0123456789") != std::string::npos) {
      continue;
    }
    const int folder = OpenProcess(entry.path());
    if (IsInstaller(ProgramOf(folder))) {
      folders_.push_back(folder);
    } else {
      (void)::close(folder);
    }
  }
}

Installers::~Installers() {
  for (const int folder : folders_) {
    (void)::close(folder);
  }
}

bool Installers::Run() const {
  return std::any_of(folders_.begin(), folders_.end(),
                     [](int folder) { return !ProgramOf(folder).empty(); });
}

std::vector<QRect> WindowsToSpare() {
  return AreasOf(
      [](const std::string& program) { return IsInstaller(program) || IsWindowProgram(program); });
}

bool InstallerIsVisible() {
  return !AreasOf(IsInstaller).empty();
}

}  // namespace zephin
