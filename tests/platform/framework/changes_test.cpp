#include <sys/stat.h>

#include <vector>

#include "platform/framework/streams.h"
#include "tests/platform/framework/on_disk.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

/// More than two of the blocks in which a file is copied.
const std::string kLong = [] {
  std::string bytes;
  for (int i = 0; bytes.size() < 9'000'000; ++i) {
    bytes += std::to_string(i);
  }
  return bytes;
}();

/// Acts that change the disk, each on the first of two names.
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
  /// The pipe stands apart: who looks at all files would wait for it.
  fs::path Place(const fs::path& name) const {
    return (name == "pipe" ? apart.Path() : base) / name;
  }

  int Copy(const std::string& from, const std::string& to) const { return Do("copy", from, to); }
  int Move(const std::string& from, const std::string& to) const { return Do("move", from, to); }
  /// The code that the act leaves.
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
  std::string Content(const fs::path& name) const {
    return At(name)->OpenAsBinaryFile(false)->Read(INT64_MAX).Bytes();
  }
  /// "ok" or "error", and what has changed on the disk.
  std::string Outcome(const std::string& act, const std::string& from,
                      const std::string& to) const {
    Reset();
    const auto before = Tree(base);
    std::string text = Do(act, from, to) == 0 ? "ok" : "error";
    const auto after = Tree(base);
    for (const auto& [name, content] : before) {
      text += after.contains(name) ? "" : " -" + name;
    }
    for (const auto& [name, content] : after) {
      const auto old = before.find(name);
      if (old == before.end() || old->second != content) {
        text.append(" +").append(name).append("=").append(content);
      }
    }
    return text;
  }

  const ScratchFolder apart;
};

TEST_F(Changes, MeetWhatStandsInTheirWay) {
  const std::string zero("new\0x", 5);
  const std::vector<std::tuple<const char*, std::string, std::string, const char*>> rows = {
      {"copy", "new", "none", "ok +none=new"},
      {"copy", "new", "file", "ok +file=new"},
      {"copy", "to new", "none", "ok +none=new"},
      // A link is replaced: what it points to isn't touched.
      {"copy", "new", "to file", "ok +to file=new"},
      {"copy", "new", "dangling", "ok +dangling=new"},
      {"copy", "new", "new", "ok"},
      {"copy", "new", "to new", "ok"},
      {"copy", "to new", "new", "ok"},
      {"copy", "new", "empty", "error"},
      {"copy", "new", "to tree", "error"},
      {"copy", "new", "pipe", "error"},
      {"copy", "new", "none/new", "error"},
      {"copy", "new", zero, "error"},
      {"copy", "dangling", "file", "error"},
      {"copy", "pipe", "file", "error"},
      // Of a folder, only the folder.
      {"copy", "tree", "none", "ok +none=/"},
      {"copy", "tree", "file", "error"},
      {"copy", "tree", "empty", "error"},
      {"move", "new", "none", "ok -new +none=new"},
      {"move", "new", "file", "ok -new +file=new"},
      {"move", "new", "to file", "ok -new +to file=new"},
      {"move", "dangling", "file", "ok -dangling +file=-> none"},
      {"move", "new", "new", "ok"},
      {"move", "new", "empty", "error"},
      {"move", "new", "to tree", "error"},
      {"move", "new", "none/new", "error"},
      {"move", "none", "file", "error"},
      {"move", "tree/a", "b",
       "ok -tree/a -tree/a/deep -tree/a/link +b=/ +b/deep=deep +b/link=-> deep"},
      {"move", "tree", "empty", "error"},
      {"move", "tree", "file", "error"},
      {"move", "tree", "tree/a/b", "error"},
      {"name", "to tree", "none", "ok -to tree +none=-> tree"},
      {"name", "new", "new", "ok"},
      {"name", "new", "file", "error"},
      {"name", "tree", "empty", "error"},
      {"name", "new", "dangling", "error"},
      {"name", "new", "empty/new", "error"},
      {"name", "new", zero, "error"},
      {"name", "new", "", "error"},
      {"name", "new", "..", "error"},
      {"delete", "empty", "", "ok -empty"},
      {"delete", "tree", "", "error"},
      {"delete", "to tree", "", "ok -to tree"},
      {"delete", "dangling", "", "ok -dangling"},
      {"delete", "none", "", "error"},
      {"delete", zero, "", "error"},
      {"make", "none", "", "ok +none=/"},
      {"make", "empty", "", "error"},
      {"make", "file", "", "error"},
      {"make", "dangling", "", "error"},
      {"make", "none/new", "", "error"},
  };
  for (const auto& [act, from, to, expected] : rows) {
    EXPECT_EQ(Outcome(act, from, to), expected) << act << " " << from << " to " << to;
  }
}

TEST_F(Changes, CopyHasTheRightsButNoSetIdBits) {
  const std::vector<std::tuple<const char*, unsigned, unsigned>> rows = {
      {"new", 06755, 0755},   {"new", 0666, 0666},
      {"new", 0400, 0400},    {"tree", 0555, 0755},  // It is going to be filled.
      {"tree", 01777, 01777},
  };
  for (const auto& [from, rights, expected] : rows) {
    SetRights(from, rights);
    EXPECT_EQ(Copy(from, "copy"), 0);
    EXPECT_EQ(Rights("copy"), expected) << from << " " << rights;
    fs::remove(base / "copy");
  }
}

TEST_F(Changes, LongFileIsCopiedWithAYieldForEachBlockAndAfterItsDeletion) {
  WriteFile(base / "long", kLong);
  int yields = 0;
  desktop.atYield = [this, &yields] {
    ++yields;
    fs::remove(base / "long");
  };
  EXPECT_EQ(Copy("long", "copy"), 0);
  EXPECT_EQ(yields, 3);
  EXPECT_TRUE(Content("copy") == kLong);
  // The system says that this one has no length.
  EXPECT_EQ(Copy("/proc/version", "version"), 0);
  EXPECT_EQ(ReadFile(base / "version"), ReadFile("/proc/version"));
}

TEST_F(Changes, FullDiskLeavesNoPartOfACopy) {
  WriteFile(base / "long", kLong);
  const FullDisk full(5'000'000);
  EXPECT_EQ(Copy("long", "copy"), EFBIG);
  EXPECT_FALSE(At("copy")->Exists());
}

/// Copies and moves to another file system than that of the scratch folders.
class FileSystems : public Changes {
 protected:
  void SetUp() override {
    struct stat here {};
    struct stat there {};
    std::string folder = "/dev/shm/zephin-test-XXXXXX";
    if (stat(base.c_str(), &here) != 0 || stat("/dev/shm", &there) != 0 ||
        here.st_dev == there.st_dev || mkdtemp(folder.data()) == nullptr) {
      GTEST_SKIP() << "no second file system";
    }
    other = folder;
    WriteFile(other / "file", "old");
    WriteFile(other / "full/old", "");
    fs::create_symlink(base / "file", other / "to file");
  }
  void TearDown() override { fs::remove_all(other); }

  fs::path other;
};

TEST_F(FileSystems, MoveMeetsWhatStandsAtTheDestination) {
  const std::vector<std::tuple<const char*, const char*, bool>> rows = {
      {"new", "full", false},  {"tree", "full", false},    {"tree", "file", false},
      {"pipe", "file", false}, {"new", "none/new", false}, {"new", "to file", true},
      {"file", "file", true},  {"dangling", "link", true},
  };
  for (const auto& [from, to, succeeds] : rows) {
    EXPECT_EQ(Move(from, other / to) == 0, succeeds) << from << " to " << to;
    EXPECT_NE(At(Place(from))->Exists(), succeeds) << from;
  }
  const std::map<std::string, std::string> expected{
      {"file", "old"}, {"full", "/"}, {"full/old", ""}, {"link", "-> none"}, {"to file", "new"}};
  EXPECT_EQ(Tree(other), expected);
}

TEST_F(FileSystems, MovedTreeKeepsLinksRightsAndTimes) {
  const fs::file_time_type time{std::chrono::hours(24)};
  SetRights("tree/a/deep", 0640);
  SetRights("tree/a", 0770);
  fs::last_write_time(base / "tree/a/deep", time);
  fs::last_write_time(base / "tree/a", time);
  const auto before = Tree(base / "tree");
  EXPECT_EQ(Move("tree", other / "moved"), 0);
  EXPECT_FALSE(At("tree")->Exists());
  EXPECT_EQ(Tree(other / "moved"), before);
  EXPECT_EQ(Rights(other / "moved/a"), 0770U);
  EXPECT_EQ(Rights(other / "moved/a/deep"), 0640U);
  EXPECT_TRUE(fs::last_write_time(other / "moved/a") == time);
  EXPECT_TRUE(fs::last_write_time(other / "moved/a/deep") == time);
}

TEST_F(FileSystems, FailedMoveTakesBackItsCopy) {
  mkfifo((base / "tree/pipe").c_str(), 0600);
  EXPECT_NE(Move("tree", other / "moved"), 0);
  WriteFile(base / "long", kLong);
  const FullDisk full(5'000'000);
  EXPECT_EQ(Move("long", other / "moved"), EFBIG);
  EXPECT_EQ(Tree(other).size(), 4U);
  EXPECT_EQ(Tree(base / "tree/a").size(), 2U);
  EXPECT_TRUE(Content("long") == kLong);
}

TEST_F(FileSystems, WhatIsAddedDuringAMoveIsNotLost) {
  desktop.atYield = [this] {
    if (fs::is_symlink(fs::symlink_status(other / "moved/a/link"))) {
      WriteFile(base / "tree/a/late", "late");
    }
  };
  EXPECT_NE(Move("tree", other / "moved"), 0);
  EXPECT_EQ(ReadFile(base / "tree/a/late"), "late");
  EXPECT_EQ(ReadFile(other / "moved/a/deep"), "deep");
}

}  // namespace
}  // namespace zephin::test
