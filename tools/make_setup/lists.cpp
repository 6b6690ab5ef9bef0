#include "tools/make_setup/lists.h"

#include "platform/framework/text.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

void Refuse(const std::string& text, const char* separators) {
  const std::size_t at = text.find_first_of(separators);
  if (at != std::string::npos) {
    throw SetupError(Quoted(text) + " holds a '" + text[at] + "', which the list can't hold");
  }
}

enum class Home { Allowed, Unknown };

/// A full path of the copy list; with `Home::Allowed` it may be in the user's home folder.
const std::string& FullPath(const std::string& path, Home home, const char* separators) {
  const bool atHome = home == Home::Allowed && InStr(Utf8(path), "UserAccount/") == 1;
  if (!atHome && !path.starts_with('/')) {
    throw SetupError(Quoted(path) + R"( must begin with "/")" +
                     (home == Home::Allowed ? R"( or "UserAccount/")" : ""));
  }
  Refuse(path, separators);
  return path;
}

const std::string& ItemPath(const std::string& path) {
  for (const char* keyword :
       {"delete", "allusersfullaccess", "preinstalldelete", "preinstallcopy"}) {
    if (TextEquals(Utf8(path), keyword)) {
      throw SetupError(Quoted(path) + " is a command, so no item can be copied by that name");
    }
  }
  if (path.empty() || path.starts_with('/')) {
    throw SetupError(Quoted(path) + " must be the path of an item below the target folder");
  }
  Refuse(path, "|=");
  return path;
}

std::string CopyEntry(const CopyCommand& command) {
  const std::string key = ItemPath(command.path) + "=";
  switch (command.condition) {
    case CopyCondition::FolderExists:
      return key + "[" + FullPath(command.conditionFolder, Home::Allowed, "|=]") + "]" +
             FullPath(command.destination, Home::Allowed, "|=]");
    case CopyCondition::NothingThere:
      return key + "{" + FullPath(command.destination, Home::Allowed, "|=}") + "}";
    case CopyCondition::None:
      break;
  }
  return key + FullPath(command.destination, Home::Allowed, "|=");
}

std::string Entry(const CopyCommand& command) {
  switch (command.verb) {
    case CopyVerb::Delete:
      return "delete=" + FullPath(command.path, Home::Allowed, "|=");
    case CopyVerb::AllUsersFullAccess:
      return "allusersfullaccess=" + FullPath(command.path, Home::Allowed, "|=");
    case CopyVerb::PreInstallDelete:
      return "preinstalldelete=" + FullPath(command.path, Home::Unknown, "|=");
    case CopyVerb::PreInstallCopy:
      return "preinstallcopy=" + FullPath(command.path, Home::Unknown, "|=;") + ";" +
             FullPath(command.destination, Home::Unknown, "|=;");
    case CopyVerb::Copy:
      break;
  }
  return CopyEntry(command);
}

}  // namespace

std::string SelectionList(const std::vector<Selection>& entries) {
  std::string list;
  for (const Selection& entry : entries) {
    for (const std::string* text : {&entry.caption, &entry.source, &entry.folder, &entry.tip}) {
      Refuse(*text, "|,");
    }
    list += (&entry == entries.data() ? "" : "|") + entry.caption + "," + entry.source + "," +
            entry.folder + "," + entry.tip;
  }
  return list;
}

std::string CopyList(const std::vector<CopyCommand>& commands) {
  std::string list;
  for (const CopyCommand& command : commands) {
    list += (&command == commands.data() ? "" : "|") + Entry(command);
  }
  return list;
}

}  // namespace zephin::make_setup
