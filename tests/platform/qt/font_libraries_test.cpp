#include "platform/qt/session/font_libraries.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/scratch_folder.h"

namespace zephin {
namespace {

namespace fs = std::filesystem;

TEST(FontLibraries, AreTheSystemsIfTheseAreNewerAndCanBeLoaded) {
  const test::ScratchFolder scratch;
  for (const auto& [name, library] :
       {std::pair("newer", LATER_LIBRARIES), {"mixed", MIXED_LIBRARIES}}) {
    fs::create_directory(scratch / name);
    fs::create_symlink(library, scratch / name / "libfontconfig.so.1");
    fs::create_symlink(library, scratch / name / "libfreetype.so.6");
  }
  test::WriteFile(scratch / "damaged/libfontconfig.so.1", "no library");
  test::WriteFile(scratch / "damaged/libfreetype.so.6", "no library");
  test::WriteFile(scratch / "half/libfreetype.so.6", "no library");
  const fs::path newer = scratch / "newer";
  EXPECT_EQ(NewerFontLibraries({scratch / "none", scratch / "half", newer, scratch / "damaged"}),
            (newer / "libfreetype.so.6").string() + ":" + (newer / "libfontconfig.so.1").string());
  EXPECT_EQ(NewerFontLibraries({scratch / "mixed", newer}), "");
  EXPECT_EQ(NewerFontLibraries({scratch / "damaged"}), "");
  EXPECT_EQ(NewerFontLibraries({scratch / "none"}), "");
}

}  // namespace
}  // namespace zephin
