#include "tools/make_setup/lists.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/make_setup/trees.h"

namespace zephin::make_setup {
namespace {

TEST(CopyList, EachCommandHasItsForm) {
  using enum CopyVerb;
  using enum CopyCondition;
  EXPECT_EQ(CopyList({{Copy, "a/b", "UserAccount/b", None, ""},
                      {Copy, "a", "/x/a", FolderExists, "userACCOUNT/f"},
                      {Copy, "a", "/x/a;b", NothingThere, ""},
                      {Delete, "/x", "", None, ""},
                      {AllUsersFullAccess, "UserAccount/x", "", None, ""},
                      {PreInstallDelete, "/y", "", None, ""},
                      {PreInstallCopy, "/y", "/z", None, ""}}),
            "a/b=UserAccount/b|a=[userACCOUNT/f]/x/a|a={/x/a;b}|delete=/x|"
            "allusersfullaccess=UserAccount/x|preinstalldelete=/y|preinstallcopy=/y;/z");
}

TEST(CopyList, WhatTheStubWouldReadOtherwiseIsRefused) {
  using enum CopyVerb;
  using enum CopyCondition;
  const std::vector<CopyCommand> commands{
      {Copy, "", "/x", None, ""},
      {Copy, "a=b", "/x", None, ""},
      {Copy, "a|b", "/x", None, ""},
      {Copy, "/a", "/x", None, ""},
      {Copy, "Delete", "/x", None, ""},
      {Copy, "preinstallCopy", "/x", None, ""},
      {Copy, "a", "", None, ""},
      {Copy, "a", "[/x]/y", None, ""},
      {Copy, "a", "x/UserAccount/", None, ""},
      {Copy, "a", "/x=", None, ""},
      {Copy, "a", "/x}y", NothingThere, ""},
      {Copy, "a", "/x", FolderExists, "/f]g"},
      {Copy, "a", "/x]", FolderExists, "/f"},
      {Copy, "a", "{/x}", FolderExists, "/f"},
      {Copy, "a", "/x", FolderExists, ""},
      {Delete, "", "", None, ""},
      {Delete, "relative", "", None, ""},
      {PreInstallDelete, "UserAccount/x", "", None, ""},
      {PreInstallCopy, "/a;b", "/x", None, ""},
      {PreInstallCopy, "/a", "/x;y", None, ""},
      {PreInstallCopy, "/a", "", None, ""},
  };
  for (const CopyCommand& command : commands) {
    EXPECT_NE(Refusal([&] { (void)CopyList({command}); }), "")
        << command.path << " to " << command.destination;
  }
}

}  // namespace
}  // namespace zephin::make_setup
