#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "platform/qt/expansion/failure_text.h"
#include "platform/qt/expansion/screen_place.h"
#include "platform/qt/expansion/time_left.h"
#include "platform/qt/expansion/words.h"

namespace zephin {
namespace {

using expander::Failure;
using expander::Job;
using expander::MissingEntry;
using expander::Reason;

bool IsPlural(Word word) {
  static const std::set<Word> kPlurals{Word::SecondsLeft, Word::MinutesLeft, Word::HoursLeft,
                                       Word::ItemsFail,   Word::MissingMore, Word::Left};
  return kPlurals.contains(word);
}

std::set<QString> PlaceholdersOf(const QString& text) {
  std::set<QString> found;
  for (const char* placeholder : {"%1", "%2", "%3"}) {
    if (text.contains(QLatin1String(placeholder))) {
      found.insert(QLatin1String(placeholder));
    }
  }
  return found;
}

TEST(Words, EveryLanguageHasEveryTextWithItsPlaceholders) {
  for (std::size_t number = 0; number <= static_cast<std::size_t>(kLastWord); ++number) {
    const auto word = static_cast<Word>(number);
    const std::set<QString> expected = PlaceholdersOf(TextOf(word, 0));
    for (std::size_t language = 0; language < kLanguages.size(); ++language) {
      const QString text = QString::fromUtf8(TextOf(word, language));
      SCOPED_TRACE(text.toStdString() + " in " + kLanguages.at(language));
      const QStringList forms = text.split(u'|');
      EXPECT_EQ(forms.size(), IsPlural(word) ? FormCount(language) : 1U);
      EXPECT_FALSE(forms.contains(QString()));
      // "One second" may be a word without a figure; the form for other numbers has all of them.
      EXPECT_EQ(PlaceholdersOf(forms.back()), expected);
    }
  }
}

TEST(Words, PluralFormFollowsTheLanguage) {
  struct Case {
    const char* tag;
    std::uint64_t number;
    const char* text;
  };
  for (const Case& test : {
           Case{"en-US", 1, "About 1 second left"},
           Case{"en-US", 0, "About 0 seconds left"},
           Case{"fr-FR", 0, "Environ 0 seconde restante"},
           Case{"fr-FR", 2, "Environ 2 secondes restantes"},
           Case{"de-DE", 1, "Noch etwa 1 Sekunde"},
           Case{"ja-JP", 1, "残り約 1 秒"},
           Case{"ar-MA", 2, "بقيت ثانيتان تقريبًا"},
           Case{"ar-MA", 10, "بقيت \u206810\u2069 ثوانٍ تقريبًا"},
           Case{"ar-MA", 11, "بقيت \u206811\u2069 ثانيةً تقريبًا"},
           Case{"ar-MA", 102, "بقيت \u2068102\u2069 ثانية تقريبًا"},
       }) {
    EXPECT_EQ(Words({test.tag}).Count(Word::SecondsLeft, test.number), QString::fromUtf8(test.text))
        << test.tag << " " << test.number;
  }
}

TEST(Words, FirstKnownLanguageOfTheUserIsChosen) {
  EXPECT_EQ(Words({"pt-BR", "de-CH", "fr"}).Get(Word::Close), QString::fromUtf8("Schließen"));
  EXPECT_EQ(Words({"C"}).Get(Word::Close), "Close");
  EXPECT_EQ(Words(QStringList()).Get(Word::Close), "Close");
  EXPECT_EQ(Words({"ar"}).Direction(), Qt::RightToLeft);
}

TEST(Words, SizeIsRoundedUpWhereTheUserMustFreeIt) {
  struct Case {
    std::uint64_t bytes;
    const char* size;
    const char* atLeast;
  };
  for (const Case& test :
       {Case{1'200'000'000, "1.2 GB", "1.2 GB"}, Case{1'200'000'001, "1.2 GB", "1.3 GB"},
        Case{130'400'000, "130 MB", "131 MB"}, Case{~0ULL, "9.2 EB", "9.2 EB"}}) {
    const Words words({"en"});
    EXPECT_EQ(words.Size(test.bytes).replace(QChar(0xA0), u' '), test.size);
    EXPECT_EQ(words.SizeAtLeast(test.bytes).replace(QChar(0xA0), u' '), test.atLeast);
  }
}

TEST(FailureText, SaysWhatIsMissingAndWhatToDo) {
  const Job job{"/a/Tool.zip", "/a", "Tool", true};
  Failure failure;
  failure.reason = Reason::NoSpace;
  failure.needed = 2'000'000'000;
  failure.free = 800'000'000;
  failure.placed = "Tool 2";
  failure.expanded = 1;
  failure.missing = 6;
  const std::vector<MissingEntry> missing{{Reason::NoSpace, "a\nb"},
                                          {Reason::Damaged, std::string(70, 'x')},
                                          {Reason::NoSpace, "c %1"},
                                          {Reason::NoSpace, "d"},
                                          {Reason::Other, "e"}};
  failure.detail = "Protocol error";
  FailureText text = TextOfFailure(Words({"en"}), job, failure, missing);
  for (QString& paragraph : text.paragraphs) {
    paragraph.replace(QChar(0xA0), u' ');
  }
  EXPECT_EQ(text.heading, QString::fromUtf8("“Tool” was not unpacked completely."));
  EXPECT_EQ(text.paragraphs.join(u'\n').toStdString(),
            "Folder: /a\n"
            "There is not enough space on the disk: 2.0 GB are needed, 800 MB are free.\n"
            "Missing: “a\uFFFDb”, “…" +
                std::string(59, 'x') +
                "”, “c %1” and 3 others.\n"
                "1 item was unpacked and left in “Tool 2”.\n"
                "Free 1.2 GB on the disk and open the installer again.");
  EXPECT_EQ(text.details.toStdString(),
            "The system reports an error: Protocol error.\ne\n"
            "There is not enough space on the disk.\na\uFFFDb\nc %1\nd\n"
            "The data in the archive are damaged.\n" +
                std::string(70, 'x'));
}

TEST(TimeLeft, IsEstimatedOnlyFromASteadySpeed) {
  constexpr std::uint64_t kTotal = 1000;
  struct Case {
    const char* name;
    std::vector<std::pair<double, std::uint64_t>> samples;
    std::optional<std::uint64_t> left;
  };
  const std::vector<Case> cases{
      {"too early", {{0, 0}, {1, 100}}, std::nullopt},
      {"too little", {{0, 0}, {2, 10}, {4, 19}}, std::nullopt},
      {"steady", {{0, 0}, {1, 50}, {2, 100}, {3, 150}}, 20},
      {"a minute and more", {{0, 0}, {2, 20}, {4, 40}}, 120},
      {"hours", {{0, 0}, {500, 20}, {1000, 40}}, 25200},
      {"nothing moves", {{0, 0}, {1, 100}, {2, 200}, {5, 200}, {6, 200}}, std::nullopt},
      {"much faster now", {{0, 0}, {50, 30}, {51, 200}, {55, 800}, {59, 900}}, std::nullopt},
      {"done", {{0, 0}, {2, 500}, {4, 1000}}, std::nullopt},
  };
  for (const Case& test : cases) {
    TimeLeft time;
    for (const auto& [seconds, done] : test.samples) {
      time.Add(seconds, done, kTotal);
    }
    EXPECT_EQ(time.Seconds(), test.left) << test.name;
  }
}

TEST(ScreenPlace, CoversNoInstallerIfThereIsRoom) {
  const QRect room(0, 0, 1000, 800);
  const QSize size(300, 200);
  const QRect middle(350, 300, 300, 200);
  EXPECT_EQ(PlaceBeside(size, room, {middle}), QPoint(662, 300));
  EXPECT_EQ(PlaceBeside(size, room, {middle.translated(300, 0)}), QPoint(338, 300));
  EXPECT_EQ(PlaceBeside(size, room, {QRect(50, 100, 900, 300)}), QPoint(349, 412));
  EXPECT_EQ(PlaceBeside(size, room, {}), QPoint(350, 300));
  for (const std::vector<QRect>& obstacles :
       {std::vector{middle, QRect(662, 300, 300, 200)}, std::vector{QRect(0, 0, 1000, 800)}}) {
    const QRect place(PlaceBeside(size, room, obstacles), size);
    EXPECT_TRUE(room.contains(place));
    EXPECT_EQ(obstacles.size() == 1, place.intersects(obstacles.front()));
  }
}

}  // namespace
}  // namespace zephin
