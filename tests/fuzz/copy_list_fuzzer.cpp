// Obeys copy lists of any bytes on an imagined disk, of which the first character is the salt.
// Finds deeds that an entry doesn't ask for, and those left out.
#include <string>
#include <vector>

#include "actions/user_account.h"
#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/imagined_disk.h"
#include "util/my_get_folder_item.h"
#include "util/paths.h"

namespace zephin::test {
namespace {

using Acts = std::vector<Act>;

constexpr const char* kTarget = "/Applications/My Folder";

struct Entry {
  explicit Entry(const std::string& text)
      : key(FieldAt(PlainCut(text, "="), 0)), value(FieldAt(PlainCut(text, "="), 1)) {}

  bool HasKey(const char* keyword) const { return TextEquals(Utf8(key), keyword); }

  std::string key;
  std::string value;
};

std::string AtHome(const std::string& path) {
  return WithUserAccount(Utf8(path)).Bytes();
}

bool IsCopy(const Act& act, const std::string& source, const std::string& destination) {
  return act.deed == Deed::Copy && act.path == source && act.destination == destination;
}

void CheckDelete(const Acts& acts, const std::string& path) {
  Require(acts.size() == (Disk().HasAnything(path) ? 1 : 0));
  Require(acts.empty() || (acts[0].deed == Deed::Delete && acts[0].path == path));
}

void CheckBeforeInstall(const Entry& entry, const Acts& acts) {
  if (entry.HasKey("preinstalldelete")) {
    CheckDelete(acts, entry.value);
  } else if (entry.HasKey("preinstallcopy")) {
    const std::vector<std::string> paths = PlainCut(entry.value, ";");
    const std::string source = FieldAt(paths, 0);
    const std::string destination = FieldAt(paths, 1);
    const bool copies = Disk().HasAnything(source) && !Disk().HasAnything(destination);
    Require(acts.size() == (copies ? 1 : 0));
    Require(acts.empty() || IsCopy(acts[0], source, destination));
  } else {
    Require(acts.empty());
  }
}

void CheckCopyOut(const Entry& entry, const Acts& acts) {
  std::string path = entry.value;
  bool isAllowed = true;
  if (path.starts_with('[')) {
    const std::vector<std::string> parts = PlainCut(path.substr(1), "]");
    isAllowed = Disk().HasFolder(AtHome(FieldAt(parts, 0)));
    path = FieldAt(parts, 1);
  }
  if (path.starts_with('{')) {
    path = FieldAt(PlainCut(path.substr(1), "}"), 0);
    isAllowed = !Disk().HasAnything(AtHome(path));
  }
  const std::string source = std::string(kTarget) + "/" + entry.key;
  const std::string destination = AtHome(path);
  if (!isAllowed || !Disk().HasAnything(source)) {
    Require(acts.empty());
    return;
  }
  Require(!acts.empty() && IsCopy(acts.back(), source, destination));
  const String parent = ViewConst::MyExtractFilePath(Utf8(destination));
  bool isDeleted = false;
  for (std::size_t i = 0; i + 1 < acts.size(); ++i) {
    isDeleted = isDeleted || acts[i].deed == Deed::Delete;
    Require(acts[i].path == (acts[i].deed == Deed::Delete ? destination : parent.Bytes()));
    Require(acts[i].deed == Deed::Delete || acts[i].deed == Deed::MakeFolder);
  }
  Require(isDeleted == Disk().HasAnything(destination) && acts.size() <= 3);
}

void CheckAfterInstall(const Entry& entry, const Acts& acts) {
  const bool isOfBefore = entry.HasKey("preinstalldelete") || entry.HasKey("preinstallcopy");
  if (entry.key.empty() || entry.value.empty() || isOfBefore) {
    Require(acts.empty());
  } else if (entry.HasKey("delete")) {
    CheckDelete(acts, AtHome(entry.value));
  } else if (entry.HasKey("allusersfullaccess")) {
    const Ref<FolderItem> item = GlobalsVk::MyGetFolderItem(Utf8(AtHome(entry.value)));
    Require(acts.size() == (item.IsNil() ? 0 : 1));
    Require(acts.empty() ||
            (acts[0].deed == Deed::OpenToAll && acts[0].path == item->NativePath().Bytes()));
  } else {
    CheckCopyOut(entry, acts);
  }
}

/// Obeys the list and looks at what each entry has done: events run behind each.
template <class Obey, class Check>
void ObeyAndCheck(QuietDesktop& desktop, const std::string& list, Obey obey, Check check) {
  const std::vector<std::string> entries = PlainCut(list, "|");
  std::size_t done = 0;
  desktop.atYield = [&] {
    Require(done < entries.size());
    check(Entry(entries[done]), Disk().acts);
    Disk().acts.clear();
    ++done;
  };
  obey();
  desktop.atYield = nullptr;
  Require(done == entries.size() && Disk().acts.empty());
}

Machine Home() {
  Machine machine;
  machine.userHome = "/home/user";
  return machine;
}

void ObeyList(std::string_view input) {
  static BareStub<> stub(Home());
  if (input.empty()) {
    return;
  }
  Disk().salt = static_cast<unsigned char>(input[0]);
  const std::string list(input.substr(1));
  ZephinStubWindow& w = stub.Window();
  w.fPostCopy = Utf8(list);
  w.fTargetFolder = kTarget;
  ObeyAndCheck(
      stub.desktop, list, [&w] { w.PreInstallCopy(); }, CheckBeforeInstall);
  ObeyAndCheck(
      stub.desktop, list, [&w] { w.PostInstallCopy(); }, CheckAfterInstall);
}

}  // namespace
}  // namespace zephin::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  zephin::test::ObeyList(zephin::test::AsText(bytes, size));
  return 0;
}
