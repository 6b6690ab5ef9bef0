// Keeps a text on the clipboard after the program that has put it there has ended: takes it over
// from that program and serves it until another program takes the clipboard or the session ends.
//
//   clipboard_keeper OWNER     OWNER: the window that owns the clipboard, in decimal

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstring>
#include <string>

#include "platform/qt/clipboard/display.h"
#include "platform/qt/clipboard/text_server.h"

namespace {

constexpr const char* kInMemory = "clipboard_keeper (in memory)";

/// Runs this program again from a copy in memory, so that the user can eject the disc with the
/// installer while the text is served. Returns only on failure.
void GoOnInMemory(const std::string& owner) {
  const int program = open("/proc/self/exe", O_RDONLY | O_CLOEXEC);
  const int copy = memfd_create("clipboard_keeper", MFD_CLOEXEC);
  struct stat facts {};
  if (program < 0 || copy < 0 || fstat(program, &facts) != 0) {
    return;
  }
  off_t done = 0;
  while (done < facts.st_size) {
    if (sendfile(copy, program, &done, static_cast<std::size_t>(facts.st_size - done)) <= 0) {
      return;
    }
  }
  // By this name the copy knows that it is one.
  std::string name = kInMemory;
  std::string window = owner;
  const std::array<char*, 3> arguments{name.data(), window.data(), nullptr};
  fexecve(copy, arguments.data(), environ);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    return 1;
  }
  if (std::strcmp(argv[0], kInMemory) != 0) {
    GoOnInMemory(argv[1]);
  }
  // No file system is in use, and can be unmounted.
  if (chdir("/") != 0) {
    return 1;
  }
  xcb_window_t owner = XCB_NONE;
  std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), owner);
  zephin::Display display;
  if (!display.IsThere()) {
    return 1;
  }
  if (auto text = zephin::TakeOver(display, owner)) {
    zephin::TextServer(display, std::move(*text)).Run();
  }
  return 0;
}
