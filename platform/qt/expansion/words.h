// The words of the window program in the user's language. They are in one table (words_table.cpp);
// a language is added as a further column there and a rule for its plurals in words.cpp.
#ifndef PLATFORM_QT_EXPANSION_WORDS_H_
#define PLATFORM_QT_EXPANSION_WORDS_H_

#include <QLocale>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

#include "platform/expander/report/reason.h"

namespace zephin {

/// "(n)" marks words with plural forms; their %1 is the number. Others say what %1 and %2 are.
enum class Word : std::uint8_t {
  Quoted,         ///< %1: a name.
  ListSeparator,  ///< Between names, with its space.
  // The window while the expansion runs.
  Unpacking,    ///< %1: the name.
  DoneOf,       ///< %1: bytes done, %2: all bytes.
  SecondsLeft,  ///< (n)
  MinutesLeft,  ///< (n)
  HoursLeft,    ///< (n)
  ItemsFail,    ///< (n)
  InstallerEnded,
  Hide,
  // The window of a failure.
  FailureTitle,
  Failed,       ///< %1: the name.
  Incomplete,   ///< %1: the name.
  Folder,       ///< %1: a path.
  Missing,      ///< %1: names.
  MissingMore,  ///< (n) of the names that are left out; %2: names.
  Left,         ///< (n) %2: the name of the folder.
  FolderLeft,   ///< %1: the name of the folder.
  NothingLeft,
  Details,
  Close,
  MissingItems,
  Warning,
  // Why.
  NoSpaceFigures,      ///< %1: bytes needed, %2: bytes free.
  NoFileSlotsFigures,  ///< %1: items needed, %2: items possible.
  Other,               ///< %1: the system's text.
  NoSpace,
  NoFileSlots,
  Quota,
  TooLarge,
  Damaged,
  NoArchive,
  Unsupported,
  NoPermission,
  ReadOnly,
  TooManyOpen,
  NameRefused,
  InTheWay,
  Gone,
  DiskFault,
  NoMemory,
  BrokenOff,
  // What to do. The user knows the installer, not the program that unpacks.
  FreeBytes,  ///< %1: bytes.
  FreeSpace,
  DeleteFiles,
  OtherDisk,
  GetAgain,
  AskPublisher,
  OtherFolder,
  CloseOthers,
  MoveAway,
  TryAgain,
};

constexpr Word kLastWord = Word::TryAgain;

/// The languages of the table, by their codes. The first one is used where none fits.
constexpr std::array<const char*, 6> kLanguages{"en", "de", "fr", "es", "ja", "ar"};

/// The table's text, in UTF-8: with placeholders, plural forms separated by "|". `language` is an
/// index in kLanguages.
const char* TextOf(Word word, std::size_t language);

/// The number of plural forms that a language has, and the index of the one for `number`.
std::size_t FormCount(std::size_t language);
std::size_t FormOf(std::size_t language, std::uint64_t number);

class Words {
 public:
  /// `tags` are names of languages as "pt-BR", the user's favourite first. Numbers are written as
  /// in the country of the one that is chosen.
  explicit Words(const QStringList& tags);

  /// The text with its arguments. A text without placeholders ignores them.
  QString Get(Word word, const QString& first = {}, const QString& second = {}) const;
  /// The plural form for the number.
  QString Count(Word word, std::uint64_t number, const QString& second = {}) const;
  /// An amount of bytes, rounded to one digit behind the point.
  QString Size(std::uint64_t bytes) const;
  /// The same, but never less than `bytes`.
  QString SizeAtLeast(std::uint64_t bytes) const;
  QString Number(std::uint64_t number) const;
  Qt::LayoutDirection Direction() const;

 private:
  QString Fill(const QString& form, const QString& first, const QString& second) const;

  std::size_t language_ = 0;
  QLocale locale_;
};

}  // namespace zephin

#endif  // PLATFORM_QT_EXPANSION_WORDS_H_
