#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "platform/framework/text.h"
#include "setup/lists.h"
#include "tests/support/scratch_folder.h"
#include "tests/tools/make_setup/trees.h"
#include "tests/tools/make_setup/warnings.h"
#include "tools/make_setup/bundle.h"
#include "tools/make_setup/lists.h"

/// Runs the examples of the documents, so that a publisher can copy them.
namespace zephin::make_setup {
namespace {

using nlohmann::json;

std::vector<std::string> LinesOf(const std::string& document) {
  std::istringstream text(test::ReadFile(std::string(SOURCES "/") + document));
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) {
    lines.push_back(line);
  }
  return lines;
}

TEST(Examples, EntriesOfTheReadmeMakeASetupWithoutWarnings) {
  const test::ScratchFolder folder;
  MakeTree(folder.Path(),
           "payload/Tools/t=t payload/a.cfg=a choices/light/l=l version-1/a=1 version-2/a=2");
  test::WriteFile(folder / "options/fonts/noise", test::Noise(30000));
  json setup = {{"fTargetFolder", "Tool"}, {"payload", "payload"}};
  json patch;
  for (const std::string& line : LinesOf("tools/make_setup/README.md")) {
    if (line.starts_with("    {")) {
      const json entry = json::parse(line);
      const bool download = entry.contains("content");
      setup[!entry.contains("caption") ? "fPostCopy"
            : download                 ? "fInstallOptions"
                                       : "fInstallChoices"]
          .push_back(entry);
    } else if (line.starts_with("    \"patch\"")) {
      patch = json::parse("{" + line + "}");
    }
  }
  EXPECT_EQ(setup["fPostCopy"].size(), 6);
  ASSERT_TRUE(setup.contains("fInstallChoices") && setup.contains("fInstallOptions"));
  ASSERT_TRUE(patch.is_object());
  patch["fTargetFolder"] = "Tool";
  Warnings warnings;
  for (const json& each : {setup, patch}) {
    test::WriteFile(folder / "setup.json", each.dump());
    EXPECT_EQ(Refusal([&] { CheckBundle({.folder = folder.Path()}, warnings); }), "");
  }
  EXPECT_EQ(warnings.list, std::vector<std::string>());
}

/// The text between the first two backquotes of a line of a table.
std::string FirstCode(const std::string& line) {
  const std::size_t begin = line.find('`') + 1;
  return line.substr(begin, line.find('`', begin) - begin);
}

TEST(Examples, ListsOfThePublishersGuideAreReadAsTheyWouldBeWritten) {
  int commands = 0;
  int choices = 0;
  for (const std::string& line : LinesOf("docs/publishing.md")) {
    if (line.starts_with("| `") && FirstCode(line).find('=') != std::string::npos) {
      const auto read = ReadCopyList(Utf8(FirstCode(line)));
      EXPECT_EQ(read.size(), 1) << line;
      EXPECT_EQ(CopyList(read), FirstCode(line));
      ++commands;
    } else if (line.starts_with("    ") && line.find(".zip,") != std::string::npos) {
      const auto read = ReadSelectionList(Utf8(line.substr(4)));
      ASSERT_EQ(read.size(), 2) << line;
      EXPECT_EQ(SelectionList(read), line.substr(4) + ",");
      ++choices;
    }
  }
  EXPECT_EQ(commands, 7);
  EXPECT_EQ(choices, 1);
}

}  // namespace
}  // namespace zephin::make_setup
