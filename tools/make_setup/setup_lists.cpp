#include "tools/make_setup/setup_lists.h"

#include <algorithm>

#include "platform/framework/text.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/lists.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

/// Each of the stub's two dialogs has this many rows.
constexpr std::size_t kMostEntries = 10;

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
    throw SetupError(archive.folder.string() + ": its archive would have the name of that of " +
                     other->folder.string());
  }
}

enum class Download { Allowed, Unknown };

Selection ReadEntry(Fields& entry, Download download, const fs::path& folder, Setup& made) {
  Selection selection{entry.NeededText("caption"), entry.NeededText("source"), entry.Text("folder"),
                      entry.Text("tip")};
  if (selection.folder.empty()) {
    selection.folder = made.record.fTargetFolder;
  } else if (!IsBelow(selection.folder)) {
    throw SetupError("folder: must be a folder in the target folder");
  }
  const bool isAddress = InStr(Utf8(selection.source), "http") == 1;
  if (isAddress && download == Download::Unknown) {
    throw SetupError("source: a choice can't be downloaded");
  }
  if (!isAddress) {
    fs::path source = (folder / selection.source).lexically_normal();
    if (!source.has_filename()) {
      source = source.parent_path();
    }
    selection.source = source.filename().string() + ".zip";
    if (download == Download::Allowed && InStr(Utf8(selection.source), "http") == 1) {
      throw SetupError("source: " + Quoted(selection.source) + " would be taken for an address");
    }
    AddArchive(made.archives, {selection.source, source, false});
    return selection;
  }
  const std::string name = selection.source.substr(selection.source.rfind('/') + 1);
  if (name.empty() || TextEquals(Utf8(name), ".zip")) {
    throw SetupError("source: an address must end in the name of a file");
  }
  if (entry.Has("content")) {
    AddArchive(made.archives, {name, folder / entry.NeededText("content"), true});
  }
  return selection;
}

std::string ReadSelection(Fields& setup, const std::string& field, Download download,
                          const fs::path& folder, Setup& made) {
  std::vector<Selection> entries;
  setup.ForEach(field, [&](Fields& entry) {
    const Selection selection = ReadEntry(entry, download, folder, made);
    (void)SelectionList({selection});
    for (const Selection& each : entries) {
      if (TextEquals(Utf8(each.caption), Utf8(selection.caption))) {
        throw SetupError("caption: is that of an entry before");
      }
    }
    entries.push_back(selection);
  });
  if (entries.size() > kMostEntries) {
    throw SetupError(field + ": has more than ten entries");
  }
  return SelectionList(entries);
}

CopyCommand ReadCommand(Fields& entry) {
  for (const auto& [name, verb] : {std::pair{"delete", CopyVerb::Delete},
                                   {"allUsersFullAccess", CopyVerb::AllUsersFullAccess},
                                   {"preInstallDelete", CopyVerb::PreInstallDelete}}) {
    if (entry.Has(name)) {
      return {verb, entry.Text(name), "", CopyCondition::None, ""};
    }
  }
  if (entry.Has("preInstallCopy")) {
    return {CopyVerb::PreInstallCopy, entry.Text("preInstallCopy"), entry.NeededText("to"),
            CopyCondition::None, ""};
  }
  CopyCommand copy{CopyVerb::Copy, entry.NeededText("copy"), entry.NeededText("to"),
                   CopyCondition::None, entry.Text("ifFolder")};
  if (entry.Flag("ifNothingThere")) {
    copy.condition = CopyCondition::NothingThere;
  } else if (!copy.conditionFolder.empty()) {
    copy.condition = CopyCondition::FolderExists;
  }
  return copy;
}

}  // namespace

std::vector<std::string> ReadNames(Fields& setup, const std::string& field) {
  std::vector<std::string> names;
  if (!setup.Has(field)) {
    return names;
  }
  const nlohmann::json& list = setup.Value(field);
  const bool isNames = list.is_array() && std::all_of(list.begin(), list.end(), [](const auto& n) {
                         return n.is_string() && !n.template get_ref<const std::string&>().empty();
                       });
  if (!isNames) {
    throw SetupError(field + ": must be a list of names");
  }
  return list.get<std::vector<std::string>>();
}

void ReadSelections(Fields& setup, const fs::path& folder, Setup& made) {
  SetupRecord& record = made.record;
  record.fInstallChoices = ReadSelection(setup, "fInstallChoices", Download::Unknown, folder, made);
  record.fInstallOptions = ReadSelection(setup, "fInstallOptions", Download::Allowed, folder, made);
}

std::string ReadCopyList(Fields& setup) {
  std::vector<CopyCommand> commands;
  setup.ForEach("fPostCopy", [&](Fields& entry) {
    commands.push_back(ReadCommand(entry));
    (void)CopyList({commands.back()});
  });
  return CopyList(commands);
}

}  // namespace zephin::make_setup
