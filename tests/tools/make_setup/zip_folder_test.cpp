#include "tools/make_setup/zip_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <zip.h>

#include <array>
#include <chrono>
#include <string>

#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

struct Entry {
  std::string name;
  unsigned mode = 0;
  std::string content;
  time_t time = 0;
  bool operator==(const Entry&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const Entry& entry) {
    return out << std::oct << entry.name << ' ' << entry.mode << ' ' << entry.content << ' '
               << std::dec << entry.time;
  }
};

/// From the field that holds it to the second; 0 if there is none.
time_t UnixTime(zip_t* zip, zip_uint64_t index) {
  zip_uint16_t size = 0;
  const zip_uint8_t* field =
      zip_file_extra_field_get_by_id(zip, index, 0x5455, 0, &size, ZIP_FL_CENTRAL);
  return size == 5 ? field[1] | field[2] << 8 | field[3] << 16 | field[4] << 24 : 0;
}

std::vector<Entry> Entries(const fs::path& archive) {
  std::vector<Entry> entries;
  zip_t* zip = zip_open(archive.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
  if (zip == nullptr) {
    return entries;
  }
  for (zip_int64_t i = 0; i < zip_get_num_entries(zip, 0); ++i) {
    const auto index = static_cast<zip_uint64_t>(i);
    zip_stat_t stat;
    zip_stat_index(zip, index, ZIP_FL_ENC_STRICT, &stat);
    Entry entry{stat.name, 0, std::string(stat.size, '\0'), UnixTime(zip, index)};
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    zip_file_get_external_attributes(zip, index, 0, &system, &attributes);
    entry.mode = system == ZIP_OPSYS_UNIX ? attributes >> 16 : 0;
    zip_file_t* file = zip_fopen_index(zip, index, 0);
    zip_fread(file, entry.content.data(), stat.size);
    zip_fclose(file);
    entries.push_back(entry);
  }
  zip_discard(zip);
  return entries;
}

TEST(ZipFolder, ArchiveHoldsTheTreeInOrderWithModesLinksAndTimes) {
  const test::ScratchFolder folder;
  const fs::path tree = folder / "tree";
  MakeTree(tree, "b=bytes a/tool=run a/deep/\u00FC\u65E5= empty/ link->a/nothing");
  fs::permissions(tree / "a/tool", fs::perms{06751});
  fs::permissions(tree / "b", fs::perms{0604});
  constexpr time_t kTime = 1600000001;
  const auto time =
      fs::file_time_type::clock::from_sys(std::chrono::sys_seconds(std::chrono::seconds(kTime)));
  for (const char* path : {"b", "a/tool", "a/deep/\u00FC\u65E5", "a/deep", "a", "empty", ""}) {
    fs::last_write_time(tree / path, time);
  }
  ZipFolder(tree, "Top", folder / "a.zip");
  EXPECT_EQ(Entries(folder / "a.zip"),
            (std::vector<Entry>{{"Top/", 040755, "", kTime},
                                {"Top/a/", 040755, "", kTime},
                                {"Top/a/deep/", 040755, "", kTime},
                                {"Top/a/deep/\u00FC\u65E5", 0100644, "", kTime},
                                {"Top/a/tool", 0100751, "run", kTime},
                                {"Top/b", 0100604, "bytes", kTime},
                                {"Top/empty/", 040755, "", kTime},
                                {"Top/link", 0120777, "a/nothing", kTime}}));
  ZipFolder(tree / "a", "", folder / "b.zip");
  EXPECT_EQ(Entries(folder / "b.zip").at(2).name, "tool");
}

TEST(ZipFolder, WhatNoArchiveCanHoldIsRefusedByNameAndNoArchiveStays) {
  const test::ScratchFolder folder;
  MakeTree(folder.Path(), "pipe/in/ latin/\xFC= companions/__MACOSX/x= empty/");
  ASSERT_EQ(mkfifo((folder / "pipe/in/it").c_str(), 0600), 0);
  const std::vector<std::pair<std::string, std::string>> rows{{"pipe", "pipe/in/it"},
                                                              {"latin", "\xFC"},
                                                              {"companions", "__MACOSX"},
                                                              {"empty", "empty"},
                                                              {"missing", "missing"}};
  for (const auto& [tree, name] : rows) {
    const std::string refusal = Refusal([&] { ZipFolder(folder / tree, "", folder / "a.zip"); });
    EXPECT_NE(refusal.find(name), std::string::npos) << tree << ": " << refusal;
    EXPECT_FALSE(fs::exists(folder / "a.zip")) << tree;
  }
}

}  // namespace
}  // namespace zephin::make_setup
