// Lets a user pick the first choice and all options from lists of any bytes: the choices and,
// behind a line end, the options. Finds entries that have lost a byte, picks that don't come back,
// and archives that would be expanded over what stands.
#include <algorithm>
#include <string>
#include <vector>

#include "files/files.h"
#include "platform/framework/exceptions.h"
#include "platform/framework/text.h"
#include "selection/placement.h"
#include "selection/selection_dialogs.h"
#include "setup/lists.h"
#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"
#include "util/texts.h"

namespace zephin::test {
namespace {

using Entries = std::vector<SelectionEntry>;

Entries ReadList(const String& list) {
  Entries entries = ReadSelectionList(list);
  const Array<String> texts = Split(list, "|");
  Require(std::ssize(entries) == texts.Count());
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const auto& [caption, source, folder, tip] = entries[i];
    const String fields = caption + "," + source + "," + folder + "," + tip + ",";
    const String text = texts(static_cast<std::int64_t>(i)) + ",,,,";
    Require(text.View().starts_with(fields.View()));
    // Folders of this machine, which are only looked at.
    const Placement place = PlaceOf("/usr", folder, "_Option");
    Require(place.mergeFolder.IsEmpty() ? !ViewConst::DirectoryExists(place.extractFolder)
                                        : place.extractFolder == place.mergeFolder + "_Option");
  }
  return entries;
}

}  // namespace

void TryInput(std::string_view input) {
  const std::size_t end = std::min(input.find('\n'), input.size());
  StubRun& run = BareStub();
  run.desktop.AgreeToAll("");
  ZephinStubWindow& w = run.BareWindow();
  w.fInstallChoices = Utf8(std::string(input.substr(0, end)));
  w.fInstallOptions = Utf8(std::string(input.substr(std::min(end + 1, input.size()))));
  const Entries choices = ReadList(w.fInstallChoices);
  const Entries options = ReadList(w.fInstallOptions);
  const bool fits = std::max(choices.size(), options.size()) <= kSelectionRows;
  if (!choices.empty() && choices.size() <= kSelectionRows) {
    run.desktop.ExpectWindow("Pick One Choice", "ContinueBtn");
  }
  if (!options.empty() && fits) {
    run.desktop.ExpectWindow("Select Options", [](Window& window) {
      for (int row = 0; row < kSelectionRows; ++row) {
        dynamic_cast<TOptionsDlg&>(window).OptionCheckBox(row)->SetValue(true);
      }
      ScriptedDesktop::Press(window, "ContinueBtn");
    });
  }
  String choice;
  String picked;
  try {
    Require(w.SelectChoiceAndOptions(choice, picked) && fits);
  } catch (const NilObjectException&) {
    Require(!fits);
    return;
  }
  Require(choices.empty() || choice == choices.front().caption);
  for (const SelectionEntry& entry : options) {
    // A row without a caption may get lost among the others.
    Require(entry.caption.IsEmpty() || ViewConst::FindField(picked, ",", entry.caption) != 0);
  }
}

}  // namespace zephin::test
