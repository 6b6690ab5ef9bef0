#include <sys/stat.h>

#include <optional>
#include <vector>

#include "tests/platform/framework/on_disk.h"
#include "tests/support/limits.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

/// Larger than two of the blocks in which a file is copied.
constexpr std::size_t kLong = 9'000'000;

/// Operation, its two names, and the changes on the disk.
const std::vector<std::tuple<const char*, const char*, const char*, const char*>> kDone = {
    {"copy", "new", "none", " +none=new"},
    {"copy", "new", "file", " +file=new"},
    {"copy", "to new", "none", " +none=new"},
    // A link is replaced; its target is unchanged.
    {"copy", "new", "to file", " +to file=new"},
    {"copy", "new", "dangling", " +dangling=new"},
    {"copy", "new", "to new", ""},
    {"copy", "to new", "new", ""},
    // Only the folder itself is copied, not its contents.
    {"copy", "tree", "none", " +none=/"},
    {"move", "new", "none", " +none=new -new"},
    {"move", "new", "file", " +file=new -new"},
    {"move", "new", "to file", " +to file=new -new"},
    {"move", "dangling", "file", " +file=-> none -dangling"},
    {"move", "new", "new", ""},
    {"move", "tree", "b",
     " +b=/ +b/a=/ +b/a/deep=deep +b/a/link=-> deep -tree -tree/a -tree/a/deep -tree/a/link"},
    {"name", "to tree", "none", " +none=-> tree -to tree"},
    {"name", "new", "new", ""},
    {"delete", "empty", "", " -empty"},
    {"delete", "to tree", "", " -to tree"},
    {"delete", "dangling", "", " -dangling"},
    {"make", "none", "", " +none=/"},
};

/// Operations that fail and change nothing.
const std::vector<std::tuple<const char*, const char*, std::string>> kRefused = {
    {"copy", "new", "empty"},     {"copy", "new", "to tree"},  {"copy", "new", "pipe"},
    {"copy", "new", "none/new"},  {"copy", "new", "new\0x"s},  {"copy", "dangling", "file"},
    {"copy", "pipe", "file"},     {"copy", "tree", "empty"},   {"move", "new", "empty"},
    {"move", "new", "to tree"},   {"move", "new", "none/new"}, {"move", "none", "file"},
    {"move", "tree", "empty"},    {"move", "tree", "file"},    {"move", "tree", "tree/a/b"},
    {"name", "new", "file"},      {"name", "tree", "empty"},   {"name", "new", "dangling"},
    {"name", "new", "empty/new"}, {"name", "new", "new\0x"s},  {"name", "new", ""},
    {"name", "new", ".."},        {"delete", "tree", ""},      {"delete", "none", ""},
    {"make", "empty", ""},        {"make", "dangling", ""},    {"make", "none/new", ""}};

class Changes : public OnDisk {
 protected:
  Changes() {
    mkfifo(Place("pipe").c_str(), 0600);
    Reset();
  }
  void Reset() const {
    for (const auto& item : fs::directory_iterator(base)) {
      fs::remove_all(item.path());
    }
    WriteFile(base / "new", "new");
    WriteFile(base / "tree/a/deep", "deep");
    fs::create_symlink("deep", base / "tree/a/link");
    WriteFile(base / "file", "old");
    fs::create_directory(base / "empty");
    fs::create_symlink("file", base / "to file");
    fs::create_symlink("new", base / "to new");
    fs::create_symlink("tree", base / "to tree");
    fs::create_symlink("none", base / "dangling");
  }
  /// The pipe is in another folder, as reading all files here would block on it.
  fs::path Place(const fs::path& name) const {
    return (name == "pipe" ? apart.Path() : base) / name;
  }
  /// Returns the error code of the operation.
  int Do(const std::string& act, const std::string& from, const std::string& to) const {
    const Ref<FolderItem> item = At(Place(from));
    if (act == "copy") {
      item->CopyFileTo(At(Place(to)));
    } else if (act == "move") {
      item->MoveFileTo(At(Place(to)));
    } else if (act == "name") {
      item->SetName(Utf8(to));
      EXPECT_EQ(item->Name().Bytes(), item->LastErrorCode() == 0 ? to : from);
    } else if (act == "delete") {
      item->Delete();
    } else {
      item->CreateAsFolder();
    }
    return item->LastErrorCode();
  }

  const ScratchFolder apart;
};

TEST_F(Changes, OverwriteFilesAndLinksOnly) {
  for (const auto& [act, from, to, expected] : kDone) {
    SCOPED_TRACE(std::string(act) + " " + from + " to " + to);
    Reset();
    auto before = Tree(base);
    EXPECT_EQ(Do(act, from, to), 0);
    std::string changes;
    for (const auto& [name, content] : Tree(base)) {
      if (before[name] != content) {
        changes.append(" +").append(name).append("=").append(content);
      }
      before.erase(name);
    }
    for (const auto& [name, content] : before) {
      changes += " -" + name;
    }
    EXPECT_EQ(changes, expected);
  }
}

TEST_F(Changes, ChangeNothingWhenTheyFail) {
  const auto before = Tree(base);
  for (const auto& [act, from, to] : kRefused) {
    EXPECT_NE(Do(act, from, to), 0) << act << " " << from << " to " << to;
    EXPECT_EQ(Tree(base), before) << act << " " << from << " to " << to;
  }
}

TEST_F(Changes, FolderWithoutWritePermissionMovesAndKeepsItsMode) {
  WriteFile(base / "full/old", "");
  SetRights("tree", 0555);
  const PlainUser user(base);
  EXPECT_NE(Do("move", "tree", "full"), 0);
  EXPECT_EQ(Rights("tree"), 0555U);
  EXPECT_EQ(Do("move", "tree", "empty/tree"), 0);
  EXPECT_EQ(Rights("empty/tree"), 0555U);
  EXPECT_EQ(ReadFile(base / "empty/tree/a/deep"), "deep");
  EXPECT_FALSE(At("tree")->Exists());
}

TEST_F(Changes, CopyKeepsPermissionsWithoutSetIdBits) {
  const std::vector<std::tuple<const char*, unsigned, unsigned>> rows = {
      {"new", 06755, 0755},   {"new", 0666, 0666},
      {"new", 0400, 0400},    {"tree", 0555, 0755},  // It is going to be filled.
      {"tree", 01777, 01777},
  };
  for (const auto& [from, rights, expected] : rows) {
    SetRights(from, rights);
    EXPECT_EQ(Do("copy", from, "copy"), 0);
    EXPECT_EQ(Rights("copy"), expected) << from << " " << rights;
    fs::remove(base / "copy");
  }
}

TEST_F(Changes, LargeFileIsCopiedInBlocksAlsoWhenDeletedMeanwhile) {
  WriteFile(base / "long", Noise(kLong));
  int yields = 0;
  desktop.atYield = [this, &yields] {
    ++yields;
    fs::remove(base / "long");
  };
  EXPECT_EQ(Do("copy", "long", "copy"), 0);
  EXPECT_EQ(yields, 3);
  EXPECT_TRUE(ReadFile(base / "copy") == Noise(kLong));
  // The system reports a length of 0 for this file.
  EXPECT_EQ(Do("copy", "/proc/version", "version"), 0);
  EXPECT_EQ(ReadFile(base / "version"), ReadFile("/proc/version"));
}

TEST_F(Changes, FullDiskLeavesNoPartialCopy) {
  WriteFile(base / "long", std::string(kLong, 'x'));
  const FullDisk full(5'000'000);
  EXPECT_EQ(Do("copy", "long", "copy"), EFBIG);
  EXPECT_FALSE(At("copy")->Exists());
}

/// Moves to another file system than that of the scratch folders.
class FileSystems : public Changes {
 protected:
  void SetUp() override {
    std::error_code failure;
    if (fs::is_directory("/dev/shm")) {
      inMemory.emplace("/dev/shm");
      other = inMemory->Path();
      fs::rename(base / "new", other / "new", failure);
    }
    if (failure != std::errc::cross_device_link) {
      // A container may keep everything on one, and an ordinary user can't mount another.
      GTEST_SKIP() << "no second file system";
    }
  }
  int Move(const std::string& from, const fs::path& to) const {
    return Do("move", from, other / to);
  }

  std::optional<ScratchFolder> inMemory;
  fs::path other;
};

TEST_F(FileSystems, MoveReplacesFilesAndLinksOnly) {
  WriteFile(other / "file", "old");
  WriteFile(other / "full/old", "");
  fs::create_symlink(base / "file", other / "to file");
  const std::vector<std::tuple<const char*, const char*, bool>> rows = {
      {"new", "full", false},  {"tree", "full", false},    {"tree", "file", false},
      {"pipe", "file", false}, {"new", "none/new", false}, {"new", "to file", true},
      {"file", "file", true},  {"dangling", "link", true},
  };
  for (const auto& [from, to, succeeds] : rows) {
    EXPECT_EQ(Move(from, to) == 0, succeeds) << from << " to " << to;
    EXPECT_NE(At(Place(from))->Exists(), succeeds) << from;
  }
  const std::map<std::string, std::string> expected{
      {"file", "old"}, {"full", "/"}, {"full/old", ""}, {"link", "-> none"}, {"to file", "new"}};
  EXPECT_EQ(Tree(other), expected);
}

TEST_F(FileSystems, MovedTreeKeepsLinksPermissionsAndTimes) {
  const fs::file_time_type time{std::chrono::hours(24)};
  const auto before = Tree(base / "tree");
  for (const char* name : {"a/deep", "a"}) {
    SetRights(base / "tree" / name, 0750);
    fs::last_write_time(base / "tree" / name, time);
  }
  EXPECT_EQ(Move("tree", "moved"), 0);
  EXPECT_FALSE(At("tree")->Exists());
  EXPECT_EQ(Tree(other / "moved"), before);
  for (const char* name : {"a/deep", "a"}) {
    EXPECT_EQ(Rights(other / "moved" / name), 0750U);
    EXPECT_TRUE(fs::last_write_time(other / "moved" / name) == time);
  }
}

TEST_F(FileSystems, FailedMoveDeletesItsCopy) {
  mkfifo((base / "tree/pipe").c_str(), 0600);
  EXPECT_NE(Move("tree", "moved"), 0);
  EXPECT_TRUE(fs::is_empty(other));
  EXPECT_EQ(Tree(base / "tree/a").size(), 2U);
}

TEST_F(FileSystems, FileAddedDuringAMoveIsKept) {
  desktop.atYield = [this] {
    if (fs::is_symlink(fs::symlink_status(other / "moved/a/link"))) {
      WriteFile(base / "tree/a/late", "late");
    }
  };
  EXPECT_NE(Move("tree", "moved"), 0);
  EXPECT_EQ(ReadFile(base / "tree/a/late"), "late");
  EXPECT_EQ(ReadFile(other / "moved/a/deep"), "deep");
}

}  // namespace
}  // namespace zephin::test
