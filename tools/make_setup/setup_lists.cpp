#include "tools/make_setup/setup_lists.h"

#include <algorithm>

#include "platform/framework/text.h"
#include "setup/limits.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/lists.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

bool IsAddress(const String& source) {
  return InStr(source, kAddressBeginning) == 1;
}

/// Entries may share a folder and its archive.
void AddArchive(std::vector<ArchiveSource>& archives, const ArchiveSource& archive) {
  if (!fs::is_directory(archive.folder)) {
    throw SetupError(archive.folder.string() + ": no such folder");
  }
  const auto other = std::find_if(archives.begin(), archives.end(), [&](const ArchiveSource& each) {
    return each.name == archive.name && each.download == archive.download;
  });
  if (other == archives.end()) {
    archives.push_back(archive);
  } else if (other->folder != archive.folder) {
    throw SetupError(archive.folder.string() + " and " + other->folder.string() +
                     ": folders must have different names, which those of their archives are");
  }
}

/// Adds the archive of a folder, and gives the archive's name.
std::string PackSource(const fs::path& folder, Setup& setup) {
  fs::path source = folder.lexically_normal();
  // "options/fonts/" is the folder "fonts", too.
  if (!source.has_filename()) {
    source = source.parent_path();
  }
  std::string name = source.filename().string() + ".zip";
  if (IsAddress(Utf8(name))) {
    throw SetupError("source: " + Quoted(name) + ": must not begin with " +
                     Quoted(kAddressBeginning) + ", as an address does");
  }
  AddArchive(setup.archives, {name, source, false});
  return name;
}

/// The file name at the end of an address, under which the installer saves the archive.
std::string NameInAddress(const std::string& address) {
  std::string name = address.substr(address.rfind('/') + 1);
  // Without a name the installer would save the archive as the folder itself.
  if (name.empty() || TextEquals(Utf8(name), ".zip")) {
    throw SetupError("source: " + Quoted(address) + ": must end in the name of a file");
  }
  return name;
}

enum class Download { Allowed, Unknown };

SelectionEntry ReadEntry(Fields& entry, Download download, const fs::path& folder, Setup& setup) {
  SelectionEntry selection{Utf8(entry.NeededText("caption")), Utf8(entry.NeededText("source")),
                           Utf8(entry.Text("folder")), Utf8(entry.Text("tip"))};
  const std::string& source = selection.source.Bytes();
  if (selection.folder.IsEmpty()) {
    // The target folder's own name means the target folder itself.
    selection.folder = setup.record.fTargetFolder;
  } else if (!IsBelow(selection.folder.Bytes())) {
    throw SetupError("folder: " + Quoted(selection.folder.Bytes()) +
                     ": must be a folder below the target folder");
  }
  // By the same test as the installer, which knows no other sign of an address.
  if (!IsAddress(selection.source)) {
    selection.source = Utf8(PackSource(folder / source, setup));
    return selection;
  }
  if (download == Download::Unknown) {
    throw SetupError("source: must be a folder: only an option can be downloaded");
  }
  const std::string name = NameInAddress(source);
  // Without it the archive is on the server already.
  if (entry.Has("content")) {
    AddArchive(setup.archives, {name, folder / entry.NeededText("content"), true});
  }
  return selection;
}

String ReadSelection(Fields& fields, const std::string& field, Download download,
                     const fs::path& folder, Setup& setup) {
  std::vector<SelectionEntry> entries;
  fields.ForEach(field, [&](Fields& entry) {
    const SelectionEntry selection = ReadEntry(entry, download, folder, setup);
    // Checked here, where an error gets the number of the entry.
    (void)SelectionList({selection});
    for (const SelectionEntry& each : entries) {
      // The installer finds a picked entry by its caption, and ignores letter case.
      if (TextEquals(each.caption, selection.caption)) {
        throw SetupError("caption: " + Quoted(selection.caption.Bytes()) +
                         ": must differ from those of the other entries");
      }
    }
    entries.push_back(selection);
  });
  if (std::ssize(entries) > kSelectionRows) {
    throw SetupError(field + ": must have at most " + std::to_string(kSelectionRows) + " entries");
  }
  return Utf8(SelectionList(entries));
}

CopyCommand ReadCommand(Fields& entry) {
  for (const auto& [name, verb] : {std::pair{"delete", CopyVerb::Delete},
                                   {"allUsersFullAccess", CopyVerb::AllUsersFullAccess},
                                   {"preInstallDelete", CopyVerb::PreInstallDelete}}) {
    if (entry.Has(name)) {
      return {verb, Utf8(entry.Text(name))};
    }
  }
  if (entry.Has("preInstallCopy")) {
    return {CopyVerb::PreInstallCopy, Utf8(entry.Text("preInstallCopy")),
            Utf8(entry.NeededText("to"))};
  }
  CopyCommand copy{CopyVerb::Copy, Utf8(entry.NeededText("copy")), Utf8(entry.NeededText("to"))};
  const String folder = Utf8(entry.Text("ifFolder"));
  const bool ifNothingThere = entry.Flag("ifNothingThere");
  // A command of the record has room for one condition.
  if (ifNothingThere && !folder.IsEmpty()) {
    throw SetupError(R"(ifFolder: must not come together with "ifNothingThere")");
  }
  if (ifNothingThere) {
    copy.condition = CopyCondition::NothingThere;
  } else if (!folder.IsEmpty()) {
    copy.condition = CopyCondition::FolderExists;
    copy.conditionFolder = folder;
  }
  return copy;
}

}  // namespace

std::vector<std::string> ReadNames(Fields& fields, const std::string& field) {
  if (!fields.Has(field)) {
    return {};
  }
  const nlohmann::json& list = fields.Value(field);
  const bool isNames = list.is_array() && std::all_of(list.begin(), list.end(), [](const auto& n) {
                         return n.is_string() && !n.template get_ref<const std::string&>().empty();
                       });
  if (!isNames) {
    throw SetupError(field + ": must be a list of names, in brackets");
  }
  return list.get<std::vector<std::string>>();
}

void ReadSelections(Fields& fields, const fs::path& folder, Setup& setup) {
  SetupRecord& record = setup.record;
  record.fInstallChoices =
      ReadSelection(fields, "fInstallChoices", Download::Unknown, folder, setup);
  record.fInstallOptions =
      ReadSelection(fields, "fInstallOptions", Download::Allowed, folder, setup);
}

String ReadCommands(Fields& fields) {
  std::vector<CopyCommand> commands;
  fields.ForEach("fPostCopy", [&](Fields& entry) {
    commands.push_back(ReadCommand(entry));
    // Checked here, where an error gets the number of the entry.
    (void)CopyList({commands.back()});
  });
  return Utf8(CopyList(commands));
}

}  // namespace zephin::make_setup
