#include "tools/make_setup/checks.h"

#include <algorithm>
#include <fstream>
#include <map>

#include "platform/framework/text.h"
#include "setup/limits.h"
#include "setup/lists.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

/// Whether the desktop would start a file of this content if only it were executable. Other
/// helpers may be documents, which it opens.
bool IsMeantToRun(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string head(4, '\0');
  stream.read(head.data(), static_cast<std::streamsize>(head.size()));
  // Other files, such as a page that is opened, need no right to run.
  return head.starts_with("#!") || head ==
                                       "\x7F"
                                       "ELF";
}

bool HasBlank(const String& text) {
  return text.View().find_first_of(" \t\r\n") != std::string_view::npos;
}

bool IsWebAddress(const String& address) {
  return !HasBlank(address) && (InStr(address, "http://") == 1 || InStr(address, "https://") == 1);
}

/// The main window's link may lack "http://", which the installer then puts in front, unless the
/// target contains "http" somewhere.
bool IsLinkTarget(const String& target) {
  const std::string_view host = target.View().substr(0, target.View().find('/'));
  return IsWebAddress(target) ||
         (!HasBlank(target) && InStr(target, kAddressBeginning) == 0 &&
          host.find('.') != std::string_view::npos && host.find('@') == std::string_view::npos);
}

std::string Size(std::int64_t width, std::int64_t height) {
  return std::to_string(width) + " x " + std::to_string(height);
}

class Checks {
 public:
  Checks(const Setup& setup, const std::vector<TreeItem>& payload, const Warn& warn)
      : setup_(setup), record_(setup.record), warn_(warn) {
    for (const TreeItem& item : payload) {
      payload_.emplace(item.path, item.kind);
    }
  }

  void Run() const {
    CheckProgram("fExecuteBeforeName", record_.fExecuteBeforeName);
    CheckProgram("fExecuteAfterName", record_.fExecuteAfterName);
    CheckPictures();
    CheckAddresses();
    CheckPayload();
    CheckNames();
    CheckCopies();
    CheckSelections("fInstallChoices", record_.fInstallChoices);
    CheckSelections("fInstallOptions", record_.fInstallOptions);
  }

 private:
  void CheckProgram(const char* field, const String& name) const {
    // Programs named by a token are on the user's machine and can't be looked at here.
    for (const fs::path& helper : setup_.helpers) {
      const bool executable =
          (fs::status(helper).permissions() & fs::perms::owner_exec) != fs::perms::none;
      if (helper.filename() == name.View() && fs::is_regular_file(helper) && !executable &&
          IsMeantToRun(helper)) {
        warn_(std::string(field) + ": " + helper.string() +
              ": must be executable (chmod +x), since the installer starts it");
      }
    }
  }

  void CheckPictures() const {
    // The sizes of the main window's two canvases and of the window itself. What is larger is drawn
    // from the top left corner and cut off.
    const auto check = [this](const char* field, std::int64_t width, std::int64_t height,
                              std::int64_t mostWidth, std::int64_t mostHeight) {
      if (width > mostWidth || height > mostHeight) {
        warn_(std::string(field) + ": must have at most " + Size(mostWidth, mostHeight) +
              " pixels to be shown in full, has " + Size(width, height));
      }
    };
    check("fLogoPixelStr", record_.fLogoWidth, record_.fLogoHeight, 64, 64);
    check("fPicturePixelStr", record_.fPictureWidth, record_.fPictureHeight, 64, 64);
    check("fBackgroundPixelStr", record_.fBackgroundWidth, record_.fBackgroundHeight, 396, 238);
  }

  void CheckAddresses() const {
    if (!record_.fURLActual.IsEmpty() && !IsLinkTarget(record_.fURLActual)) {
      warn_("fURLActual: " + Quoted(record_.fURLActual.Bytes()) +
            R"(: must be an address such as "https://a.example/page" or "a.example")");
    }
    // The link would be blue and do nothing.
    if (!record_.fURLDisplayed.IsEmpty() && record_.fURLActual.IsEmpty()) {
      warn_(R"(fURLDisplayed: must come with "fURLActual", which the link opens)");
    }
    // Nothing is put in front of this one, and a desktop opens no address without a scheme.
    if (!record_.fCompletionURL.IsEmpty() && !IsWebAddress(record_.fCompletionURL)) {
      warn_("fCompletionURL: " + Quoted(record_.fCompletionURL.Bytes()) +
            R"(: must be an address such as "https://a.example/page")");
    }
  }

  void CheckPayload() const {
    const bool hasFile = std::any_of(payload_.begin(), payload_.end(), [](const auto& item) {
      return item.second != ItemKind::Folder;
    });
    // A patch that only deletes a folder at the root contains no file.
    if (setup_.patch ? payload_.empty() : !hasFile) {
      warn_(setup_.patch ? "patch: must change something: both folders have the same contents"
                         : "payload: must contain a file");
    }
    if (setup_.pieceSize != 0) {
      warn_(
          "pieceSize: must be left out: the installer of a payload in pieces asks to be dragged "
          "out of the Downloads folder and ends");
    }
  }

  /// Names that a disk without letter case takes for one.
  void CheckNames() const {
    std::map<std::pair<std::string, std::string>, std::string> names;
    for (const auto& [path, kind] : payload_) {
      const fs::path item(path);
      const std::string name = Lowercase(Utf8(item.filename().string())).Bytes();
      const auto [other, isNew] = names.emplace(std::pair{item.parent_path().string(), name}, path);
      if (!isNew) {
        warn_("payload: " + Quoted(other->second) + " and " + Quoted(path) +
              ": names must differ in more than letter case, which many disks ignore");
      }
    }
  }

  void CheckCopies() const {
    int number = 0;
    for (const CopyCommand& command : ReadCopyList(record_.fPostCopy)) {
      const std::string place = "fPostCopy: entry " + std::to_string(++number) + ": ";
      if (command.verb != CopyVerb::Copy) {
        continue;
      }
      if (record_.fInstallationPatch) {
        warn_(place + "must not copy an item in a patch, whose own folder is deleted before");
      } else if (!Has(command.path.Bytes())) {
        warn_(place + Quoted(command.path.Bytes()) + ": must be an item of the payload");
      }
    }
  }

  void CheckSelections(const char* field, const String& list) const {
    if (record_.fInstallationPatch && !list.IsEmpty()) {
      warn_(std::string(field) +
            ": must be left out in a patch: it would be installed beside the folder");
      return;
    }
    int number = 0;
    for (const SelectionEntry& entry : ReadSelectionList(list)) {
      const std::string place = std::string(field) + ": entry " + std::to_string(++number) + ": ";
      if (InStr(entry.source, kAddressBeginning) == 1) {
        CheckDownload(place, entry);
      }
      CheckMerge(place, entry);
    }
  }

  void CheckDownload(const std::string& place, const SelectionEntry& entry) const {
    if (!IsWebAddress(entry.source)) {
      warn_(place + "source: " + Quoted(entry.source.Bytes()) +
            R"(: must begin with "http://" or "https://" and have no spaces (write "%20"))");
    }
    if (TextEquals(entry.folder, record_.fTargetFolder)) {
      return;  // The installer saves the download outside the target folder.
    }
    const fs::path saved =
        fs::path(entry.folder.Bytes()).parent_path() / fs::path(entry.source.Bytes()).filename();
    if (Has(saved.string())) {
      warn_(place + "source: must have another file name: the download replaces " +
            Quoted(saved.string()) + " of the payload and is deleted later");
    }
  }

  /// The installer moves the top level of the archive into a folder that exists. An item there
  /// makes way, but for a folder with contents.
  void CheckMerge(const std::string& place, const SelectionEntry& entry) const {
    const std::string name = fs::path(entry.source.Bytes()).filename().string();
    const bool atTop = TextEquals(entry.folder, record_.fTargetFolder);
    const fs::path into = atTop ? fs::path() : fs::path(entry.folder.Bytes());
    for (const ArchiveSource& archive : setup_.archives) {
      if (archive.name != name) {
        continue;
      }
      for (const fs::directory_entry& item : fs::directory_iterator(archive.folder)) {
        const std::string installed = (into / item.path().filename()).string();
        if (HasContents(installed)) {
          warn_(place + "source: must not contain " + Quoted(item.path().filename().string()) +
                ": the payload has a folder " + Quoted(installed) +
                " that is not empty, so it would not be installed");
        }
      }
    }
  }

  bool Has(const std::string& path) const {
    // "./a" and "a/" name the same item as "a".
    std::string normal = fs::path(path).lexically_normal().string();
    if (normal.ends_with('/')) {
      normal.pop_back();
    }
    return payload_.contains(normal);
  }

  bool HasContents(const std::string& folder) const {
    const auto below = payload_.lower_bound(folder + "/");
    return below != payload_.end() && below->first.starts_with(folder + "/");
  }

  const Setup& setup_;
  const SetupRecord& record_;
  const Warn& warn_;
  std::map<std::string, ItemKind> payload_;
};

}  // namespace

void CheckSetup(const Setup& setup, const std::vector<TreeItem>& payload, const Warn& warn) {
  Checks(setup, payload, warn).Run();
}

Contents ContentsOf(const std::vector<TreeItem>& tree) {
  Contents contents;
  for (const TreeItem& item : tree) {
    contents.files += item.kind == ItemKind::File ? 1 : 0;
    contents.bytes += item.size;
  }
  return contents;
}

void CheckExpansionTime(const Contents& contents, std::uint64_t archive, const Warn& warn) {
  // An assumption: what a slow computer reaches.
  constexpr std::uint64_t kBytesPerSecond = 100'000'000;
  constexpr std::uint64_t kFilesPerSecond = 10'000;
  constexpr std::int64_t kTicksPerSecond = 60;
  const std::int64_t given =
      ExpansionTicks(static_cast<std::int64_t>(archive), false) * 10 / kTicksPerSecond;
  const auto needed = static_cast<std::int64_t>(contents.bytes * 10 / kBytesPerSecond +
                                                contents.files * 10 / kFilesPerSecond);
  const auto seconds = [](std::int64_t tenths) {
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
  };
  if (needed > given) {
    warn("payload: must be smaller or less compressible: an archive of " + std::to_string(archive) +
         " bytes is given " + seconds(given) + " to be expanded, its contents need about " +
         seconds(needed));
  }
}

}  // namespace zephin::make_setup
