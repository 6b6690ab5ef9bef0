#include "tools/make_setup/zip_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <zip.h>

#include <chrono>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

/// From the field that holds it to the second; 0 if there is none.
time_t UnixTime(zip_t* zip, zip_uint64_t index) {
  zip_uint16_t size = 0;
  const zip_uint8_t* field =
      zip_file_extra_field_get_by_id(zip, index, 0x5455, 0, &size, ZIP_FL_CENTRAL);
  return size == 5 ? field[1] | field[2] << 8 | field[3] << 16 | field[4] << 24 : 0;
}

/// "name mode content" of each entry, and its time where that isn't `time`.
std::vector<std::string> Entries(const fs::path& archive, time_t time) {
  std::vector<std::string> entries;
  zip_t* zip = zip_open(archive.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
  for (zip_int64_t i = 0; zip != nullptr && i < zip_get_num_entries(zip, 0); ++i) {
    const auto index = static_cast<zip_uint64_t>(i);
    zip_stat_t stat;
    zip_stat_index(zip, index, ZIP_FL_ENC_STRICT, &stat);
    std::string content(stat.size, '\0');
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    zip_file_get_external_attributes(zip, index, 0, &system, &attributes);
    zip_file_t* file = zip_fopen_index(zip, index, 0);
    zip_fread(file, content.data(), stat.size);
    zip_fclose(file);
    std::ostringstream entry;
    entry << stat.name << ' ' << std::oct << (attributes >> 16) << ' ' << content;
    if (system != ZIP_OPSYS_UNIX || UnixTime(zip, index) != time) {
      entry << " wrong time or system: " << std::dec << UnixTime(zip, index);
    }
    entries.push_back(entry.str());
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
  EXPECT_EQ(Entries(folder / "a.zip", kTime),
            (std::vector<std::string>{"Top/ 40755 ", "Top/a/ 40755 ", "Top/a/deep/ 40755 ",
                                      "Top/a/deep/\u00FC\u65E5 100644 ", "Top/a/tool 100751 run",
                                      "Top/b 100604 bytes", "Top/empty/ 40755 ",
                                      "Top/link 120777 a/nothing"}));
  ZipFolder(tree / "a", "", folder / "b.zip");
  EXPECT_EQ(Entries(folder / "b.zip", kTime).at(2), "tool 100751 run");
}

TEST(ZipFolder, WhatNoArchiveCanHoldIsRefusedByNameAndNoArchiveStays) {
  const test::ScratchFolder folder;
  MakeTree(folder.Path(), "pipe/in/ latin/\xFC= companions/__MACOSX/x= empty/");
  ASSERT_EQ(mkfifo((folder / "pipe/in/it").c_str(), 0600), 0);
  using Row = std::pair<const char*, const char*>;
  for (const Row& row :
       {Row{"pipe", "pipe/in/it"}, Row{"latin", "\xFC"}, Row{"companions", "__MACOSX"},
        Row{"empty", "empty"}, Row{"none", "none"}}) {
    const std::string refusal =
        Refusal([&] { ZipFolder(folder / row.first, "", folder / "a.zip"); });
    EXPECT_NE(refusal.find(row.second), std::string::npos) << row.first << ": " << refusal;
    EXPECT_FALSE(fs::exists(folder / "a.zip")) << row.first;
  }
}

}  // namespace
}  // namespace zephin::make_setup
