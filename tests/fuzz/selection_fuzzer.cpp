// Lets a user pick from lists of any bytes: a first character says what is picked, then come the
// choices and, behind a line end, the options. Finds rows that aren't the entries, picks that don't
// come back, and archives that would be expanded over what stands.
#include <algorithm>
#include <string>
#include <vector>

#include "platform/framework/exceptions.h"
#include "selection/placement.h"
#include "selection/selection_dialogs.h"
#include "selection/selection_list.h"
#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/imagined_disk.h"
#include "util/text_search.h"

namespace zephin::test {
namespace {

using Entries = std::vector<SelectionEntry>;

/// Picks one choice and some of the options, and goes on.
class PickingDesktop : public QuietDesktop {
 public:
  unsigned taste = 0;

  bool Picks(int row) const { return (taste * 0x9E3779B1U >> (8 + row) & 1U) != 0; }

  void RunModal(Window& window) override {
    if (auto* choices = dynamic_cast<TChoiceDlg*>(&window)) {
      for (int row = 0; row < kSelectionRows; ++row) {
        choices->ChoiceRadio(row)->SetValue(row == static_cast<int>(taste) % kSelectionRows);
      }
      choices->ContinueBtn()->Action(*choices->ContinueBtn());
    } else if (auto* options = dynamic_cast<TOptionsDlg*>(&window)) {
      for (int row = 0; row < kSelectionRows; ++row) {
        options->OptionCheckBox(row)->SetValue(Picks(row));
      }
      options->ContinueBtn()->Action(*options->ContinueBtn());
    }
  }
};

Entries ReadList(const std::string& list) {
  Entries entries = ReadSelectionList(Utf8(list));
  const std::vector<std::string> texts = PlainCut(list, "|");
  Require(entries.size() == texts.size());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const std::vector<std::string> fields = PlainCut(texts[i], ",");
    Require(entries[i].caption.Bytes() == FieldAt(fields, 0));
    Require(entries[i].source.Bytes() == FieldAt(fields, 1));
    Require(entries[i].folder.Bytes() == FieldAt(fields, 2));
    Require(entries[i].tip.Bytes() == FieldAt(fields, 3));
  }
  return entries;
}

void CheckPlaces(const Entries& entries) {
  const String target = "/Applications/My Folder";
  for (const SelectionEntry& entry : entries) {
    const Placement place = PlaceOf(target, entry.folder, "_Option");
    Require(place.extractFolder.View().starts_with(target.View()));
    if (place.mergeFolder.IsEmpty()) {
      Require(!Disk().HasFolder(place.extractFolder.Bytes()));
    } else {
      Require(place.extractFolder == place.mergeFolder + "_Option");
    }
  }
}

void CheckOptions(const Entries& entries, const String& options, const PickingDesktop& user) {
  int ticked = 0;
  for (int row = 0; row < std::ssize(entries); ++row) {
    ticked += user.Picks(row) ? 1 : 0;
  }
  Require(Split(options, ",").Count() <= ticked);
  for (const SelectionEntry& entry : entries) {
    bool isTicked = false;
    for (std::size_t i = 0; i < entries.size(); ++i) {
      isTicked = isTicked || (user.Picks(static_cast<int>(i)) &&
                              ViewConst::NonCaseMatch(entries[i].caption, entry.caption));
    }
    // A row without a caption may get lost among the others.
    Require(entry.caption.IsEmpty() ||
            (ViewConst::FindField(options, ",", entry.caption) != 0) == isTicked);
  }
}

void Pick(std::string_view input) {
  static BareStub<PickingDesktop> stub;
  const std::size_t end = std::min(input.find('\n'), input.size());
  if (end == 0) {
    return;
  }
  const std::string choiceList(input.substr(1, end - 1));
  const std::string optionList(input.substr(std::min(end + 1, input.size())));
  Disk().salt = stub.desktop.taste = static_cast<unsigned char>(input[0]);
  ZephinStubWindow& w = stub.Window();
  w.fInstallChoices = Utf8(choiceList);
  w.fInstallOptions = Utf8(optionList);
  const Entries choices = ReadList(choiceList);
  const Entries options = ReadList(optionList);
  CheckPlaces(options);
  String choice;
  String picked;
  const bool fits = std::max(choices.size(), options.size()) <= kSelectionRows;
  try {
    Require(w.SelectChoiceAndOptions(choice, picked) && fits);
  } catch (const NilObjectException&) {
    Require(!fits);
    return;
  }
  const std::size_t row = stub.desktop.taste % kSelectionRows;
  Require(choice == (row < choices.size() ? choices[row].caption : String()));
  CheckOptions(options, picked, stub.desktop);
}

}  // namespace
}  // namespace zephin::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  zephin::test::Pick(zephin::test::AsText(bytes, size));
  return 0;
}
