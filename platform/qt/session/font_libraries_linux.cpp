#include "platform/qt/session/font_libraries.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

namespace zephin {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFontconfig = "libfontconfig.so.1";
constexpr const char* kFreetype = "libfreetype.so.6";
constexpr const char* kPreload = "LD_PRELOAD";
/// Set for the second start: what kPreload was before.
constexpr const char* kPreloadBefore = "ZEPHIN_PRELOAD_BEFORE";

/// A library that is loaded during its life, or that was loaded before.
class Library {
 public:
  explicit Library(void* handle) : handle_(handle) {}
  ~Library() {
    if (handle_ != nullptr) {
      (void)::dlclose(handle_);
    }
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  bool IsLoaded() const { return handle_ != nullptr; }
  void* Handle() const { return handle_; }

  template <class Function>
  Function* Find(const char* name) const {
    return reinterpret_cast<Function*>(::dlsym(handle_, name));
  }

 private:
  void* handle_;
};

struct Versions {
  int fontconfig = 0;
  std::array<int, 3> freetype{};
};

std::optional<Versions> VersionsOf(const Library& fontconfig, const Library& freetype) {
  if (!fontconfig.IsLoaded() || !freetype.IsLoaded()) {
    return std::nullopt;
  }
  const auto version = fontconfig.Find<int()>("FcGetVersion");
  const auto begin = freetype.Find<int(void**)>("FT_Init_FreeType");
  const auto ask = freetype.Find<void(void*, int*, int*, int*)>("FT_Library_Version");
  const auto end = freetype.Find<int(void*)>("FT_Done_FreeType");
  void* library = nullptr;
  if (version == nullptr || begin == nullptr || ask == nullptr || end == nullptr ||
      begin(&library) != 0) {
    return std::nullopt;
  }
  Versions versions{version(), {}};
  auto& [major, minor, patch] = versions.freetype;
  ask(library, &major, &minor, &patch);
  (void)end(library);
  return versions;
}

std::optional<Versions> LoadedVersions() {
  const Library fontconfig(::dlopen(kFontconfig, RTLD_NOW | RTLD_NOLOAD));
  const Library freetype(::dlopen(kFreetype, RTLD_NOW | RTLD_NOLOAD));
  return VersionsOf(fontconfig, freetype);
}

/// Loads both libraries apart from those of the program, with every function that they need.
std::optional<Versions> VersionsIn(const fs::path& folder) {
  const Library freetype(::dlmopen(LM_ID_NEWLM, (folder / kFreetype).c_str(), RTLD_NOW));
  Lmid_t space = LM_ID_NEWLM;
  if (!freetype.IsLoaded() || ::dlinfo(freetype.Handle(), RTLD_DI_LMID, &space) != 0) {
    return std::nullopt;
  }
  const Library fontconfig(::dlmopen(space, (folder / kFontconfig).c_str(), RTLD_NOW));
  return VersionsOf(fontconfig, freetype);
}

/// The path of the loaded library; empty if there is none.
fs::path LoadedPath(const char* name, const char* function) {
  const Library library(::dlopen(name, RTLD_NOW | RTLD_NOLOAD));
  Dl_info place{};
  void* const address = library.IsLoaded() ? ::dlsym(library.Handle(), function) : nullptr;
  return address != nullptr && ::dladdr(address, &place) != 0 ? place.dli_fname : "";
}

void Put(const char* name, const std::string& value) {
  if (value.empty()) {
    (void)::unsetenv(name);
  } else {
    (void)::setenv(name, value.c_str(), 1);
  }
}

std::string Get(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace

std::string NewerFontLibraries(const std::vector<std::filesystem::path>& folders) {
  std::error_code failure;
  const auto hasBoth = [&failure](const fs::path& folder) {
    return fs::exists(folder / kFontconfig, failure) && fs::exists(folder / kFreetype, failure);
  };
  const auto folder = std::find_if(folders.begin(), folders.end(), hasBoth);
  // In a build that isn't installed they are the same.
  if (folder == folders.end() ||
      fs::equivalent(*folder / kFontconfig, LoadedPath(kFontconfig, "FcGetVersion"), failure)) {
    return {};
  }
  const std::optional<Versions> ours = LoadedVersions();
  const std::optional<Versions> theirs = VersionsIn(*folder);
  const bool newer =
      ours && theirs && theirs->fontconfig > ours->fontconfig && theirs->freetype >= ours->freetype;
  return newer ? (*folder / kFreetype).string() + ":" + (*folder / kFontconfig).string() : "";
}

void UseNewerFontLibraries(char** argv) {
  if (std::getenv(kPreloadBefore) != nullptr) {
    Put(kPreload, Get(kPreloadBefore));
    (void)::unsetenv(kPreloadBefore);
    return;
  }
  // Of Debian and its relatives, Fedora and its relatives, and Arch.
  const std::string libraries =
      NewerFontLibraries({"/usr/lib/" ZEPHIN_LIBRARY_ARCHITECTURE, "/usr/lib64", "/usr/lib"});
  std::error_code failure;
  const fs::path program = fs::read_symlink("/proc/self/exe", failure);
  if (libraries.empty() || failure) {
    return;
  }
  // A program can't replace libraries that it has loaded, only be started with others.
  const std::string before = Get(kPreload);
  (void)::setenv(kPreloadBefore, before.c_str(), 1);
  Put(kPreload, before.empty() ? libraries : libraries + ":" + before);
  (void)::execv(program.c_str(), argv);
  Put(kPreload, before);
  (void)::unsetenv(kPreloadBefore);
}

}  // namespace zephin
