#include "platform/expander/report/report.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/expander/report/message.h"

namespace zephin::expander {
namespace {

TEST(Message, SurvivesItsLineWithAnyBytes) {
  const std::string odd = "a\tb\nc\\d\\n\xff\r ";
  const std::vector<Message> messages{
      Job{"/a/" + odd, "/a", "", false},
      Progress{1, std::numeric_limits<std::uint64_t>::max(), 3, 4, 5, odd},
      MissingEntry{kLastReason, odd},
      Failure{Reason::Quota, 1, 2, odd, "", 3, 4},
      Done{},
  };
  for (const Message& message : messages) {
    const std::string line = Encode(message);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    const auto read = Decode(line.substr(0, line.size() - 1));
    ASSERT_TRUE(read) << line;
    EXPECT_EQ(read->index(), message.index());
    EXPECT_EQ(Encode(*read), line);
  }
  EXPECT_EQ(std::get<MissingEntry>(*Decode("missing\t5\ta\\tb\\\\n")).name, "a\tb\\n");
}

TEST(Message, LineOfAnotherFormIsRefused) {
  for (const char* line : {"", "done\t", "gone", "missing\t5", "missing\t99\ta", "missing\t5\ta\tb",
                           "progress\t1\t2\t3\t-4\t0\ta", "job\ta\tb\tc\t", "failed\t1\t2"}) {
    EXPECT_FALSE(Decode(line)) << line;
  }
}

TEST(Report, NamesTheReasonOfMostEntriesInTheArchivesOrder) {
  Report report;
  report.AddFault(7, Reason::NoSpace, "late", "no space");
  report.AddFault(2, Reason::Damaged, "early", "damaged");
  report.AddFault(5, Reason::NoSpace, "middle", "no space");
  report.AddFault(8, Reason::Other, "odd", "Protocol error");
  EXPECT_TRUE(report.Failed());
  EXPECT_EQ(report.Summary().reason, Reason::NoSpace);
  EXPECT_EQ(report.Summary().missing, 4U);
  EXPECT_EQ(report.Summary().detail, "Protocol error");
  std::string names;
  for (const MissingEntry& entry : report.MissingEntries()) {
    names += entry.name + " ";
  }
  EXPECT_EQ(names, "early middle late odd ");
  report.AddFault(Report::kWholeArchive, Reason::NoArchive, "a.zip", "breaks off");
  EXPECT_EQ(report.Summary().reason, Reason::NoArchive);
}

TEST(Report, WhatTheUserTookAwayIsNoFailure) {
  Report gone;
  gone.AddFault(1, Reason::Gone, "a", "no such file");
  EXPECT_FALSE(gone.Failed());
  gone.AddFault(2, Reason::Damaged, "b", "damaged");
  EXPECT_TRUE(gone.Failed());
  gone.SetTakenAway();
  EXPECT_FALSE(gone.Failed());
}

TEST(Report, CountsNamesThatItDoesNotKeep) {
  Report report;
  for (std::size_t i = 0; i <= Report::kMostNames; ++i) {
    report.AddFault(static_cast<std::uint32_t>(i + 1), Reason::NoSpace, "a", "no space");
  }
  EXPECT_EQ(report.MissingEntries().size(), Report::kMostNames);
  EXPECT_EQ(report.Summary().missing, Report::kMostNames + 1);
}

}  // namespace
}  // namespace zephin::expander
