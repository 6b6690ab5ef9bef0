#include "setup/lists.h"

#include <algorithm>

#include "platform/framework/text.h"

namespace zephin {

std::vector<SelectionEntry> ReadSelectionList(const String& list) {
  std::vector<SelectionEntry> entries;
  for (const String& entry : Split(list, kSelectionSeparator)) {
    const auto part = [&entry](std::int64_t number) {
      // Missing parts are empty, so a list with fewer commas needs no case of its own.
      return NthField(entry, kSelectionPartSeparator, number);
    };
    entries.push_back({part(1), part(2), part(3), part(4)});
  }
  return entries;
}

namespace {

CopyVerb VerbOf(const String& key) {
  const auto* const keyword =
      std::find_if(kCopyKeywords.begin(), kCopyKeywords.end(),
                   [&key](const CopyKeyword& each) { return TextEquals(key, each.text); });
  return keyword == kCopyKeywords.end() ? CopyVerb::Copy : keyword->verb;
}

/// A copy of an item, "[folder]destination", "{destination}" or "destination".
CopyCommand ReadCopy(const String& item, const String& value) {
  CopyCommand command{CopyVerb::Copy, item, value};
  if (Left(command.destination, 1) == "[") {
    const String opened = Mid(command.destination, 2);
    command.condition = CopyCondition::FolderExists;
    command.conditionFolder = NthField(opened, "]", 1);
    command.destination = NthField(opened, "]", 2);
  }
  if (Left(command.destination, 1) == "{") {
    // Behind a folder in brackets this condition replaces that one.
    command.condition = CopyCondition::NothingThere;
    command.destination = NthField(Mid(command.destination, 2), "}", 1);
  }
  return command;
}

CopyCommand ReadCommand(const String& text) {
  // Fields, not the first "=": what follows a second one has never counted.
  const String key = NthField(text, kCopyValueSeparator, 1);
  const String value = NthField(text, kCopyValueSeparator, 2);
  switch (const CopyVerb verb = VerbOf(key)) {
    // The commands before the install do nothing for an empty path, so they are never malformed.
    case CopyVerb::PreInstallDelete:
      return {verb, value};
    case CopyVerb::PreInstallCopy:
      return {verb, NthField(value, kCopyPairSeparator, 1), NthField(value, kCopyPairSeparator, 2)};
    case CopyVerb::Copy:
      return key.IsEmpty() || value.IsEmpty() ? CopyCommand{CopyVerb::Malformed, key}
                                              : ReadCopy(key, value);
    default:
      return {value.IsEmpty() ? CopyVerb::Malformed : verb, value};
  }
}

}  // namespace

std::vector<CopyCommand> ReadCopyList(const String& list) {
  std::vector<CopyCommand> commands;
  for (const String& text : Split(list, kCopySeparator)) {
    commands.push_back(ReadCommand(text));
  }
  return commands;
}

}  // namespace zephin
