#include "tools/make_setup/lists.h"

#include <algorithm>

#include "platform/framework/text.h"
#include "setup/path_tokens.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

bool IsAtHome(const String& path) {
  return InStr(path, kUserAccountToken) == 1;
}

enum class Home { Allowed, Unknown };

/// Checks a path outside the target folder. The token of the home folder is unknown before the
/// install.
void CheckFullPath(const String& path, Home home) {
  if (path.View().starts_with('/') || (home == Home::Allowed && IsAtHome(path))) {
    return;
  }
  throw SetupError(Quoted(path.Bytes()) + R"(: must begin with "/")" +
                   (home == Home::Allowed ? " or " + Quoted(kUserAccountToken) : ""));
}

void CheckPaths(const CopyCommand& command) {
  switch (command.verb) {
    case CopyVerb::Copy:
      // The installer puts the target folder in front of it.
      if (command.path.IsEmpty() || command.path.View().starts_with('/')) {
        throw SetupError(Quoted(command.path.Bytes()) +
                         ": must be the path of an item below the target folder");
      }
      CheckFullPath(command.destination, Home::Allowed);
      if (command.condition == CopyCondition::FolderExists) {
        CheckFullPath(command.conditionFolder, Home::Allowed);
      }
      break;
    case CopyVerb::PreInstallCopy:
      CheckFullPath(command.path, Home::Unknown);
      CheckFullPath(command.destination, Home::Unknown);
      break;
    case CopyVerb::PreInstallDelete:
      CheckFullPath(command.path, Home::Unknown);
      break;
    default:
      CheckFullPath(command.path, Home::Allowed);
  }
}

std::string CopyEntry(const CopyCommand& command) {
  std::string destination = command.destination.Bytes();
  switch (command.condition) {
    case CopyCondition::FolderExists:
      return "[" + command.conditionFolder.Bytes() + "]" + destination;
    case CopyCondition::NothingThere:
      return "{" + destination + "}";
    default:
      return destination;
  }
}

std::string Entry(const CopyCommand& command) {
  const std::string path = command.path.Bytes();
  if (command.verb == CopyVerb::Copy) {
    return path + kCopyValueSeparator + CopyEntry(command);
  }
  const auto* const keyword =
      std::find_if(kCopyKeywords.begin(), kCopyKeywords.end(),
                   [&](const CopyKeyword& each) { return each.verb == command.verb; });
  const std::string entry = std::string(keyword->text) + kCopyValueSeparator + path;
  return command.verb == CopyVerb::PreInstallCopy
             ? entry + kCopyPairSeparator + command.destination.Bytes()
             : entry;
}

bool AreTheSame(const CopyCommand& a, const CopyCommand& b) {
  return a.verb == b.verb && a.path == b.path && a.destination == b.destination &&
         a.condition == b.condition && a.conditionFolder == b.conditionFolder;
}

bool AreTheSame(const SelectionEntry& a, const SelectionEntry& b) {
  return a.caption == b.caption && a.source == b.source && a.folder == b.folder && a.tip == b.tip;
}

/// Joins the texts of entries. Has each one read again by the installer's own reader, which finds
/// every separator and keyword in a publisher's text.
template <class Entry, class Write, class Read>
std::string JoinChecked(const std::vector<Entry>& entries, const std::string& separator,
                        Write write, Read read, const char* allowed) {
  std::string list;
  for (const Entry& entry : entries) {
    const std::string text = write(entry);
    // The installer's reader decides what can be written, so that no rule is stated twice.
    const std::vector<Entry> again = read(Utf8(text));
    if (again.size() != 1 || !AreTheSame(again.front(), entry)) {
      throw SetupError(Quoted(text) + " would be read as something else: " + allowed);
    }
    list += (&entry == entries.data() ? "" : separator) + text;
  }
  return list;
}

}  // namespace

std::string SelectionList(const std::vector<SelectionEntry>& entries) {
  const auto write = [](const SelectionEntry& entry) {
    const std::string separator = kSelectionPartSeparator;
    return entry.caption.Bytes() + separator + entry.source.Bytes() + separator +
           entry.folder.Bytes() + separator + entry.tip.Bytes();
  };
  return JoinChecked(entries, kSelectionSeparator, write, ReadSelectionList,
                     R"(no part may contain "," or "|")");
}

std::string CopyList(const std::vector<CopyCommand>& commands) {
  // Before the entries are joined: the message about a path is clearer than the one about an entry.
  std::for_each(commands.begin(), commands.end(), CheckPaths);
  return JoinChecked(commands, kCopySeparator, Entry, ReadCopyList,
                     R"(no path may contain "|", "=" or, where it has a meaning there, ";", "]" )"
                     R"(or "}", and no item may have the name of a command)");
}

}  // namespace zephin::make_setup
