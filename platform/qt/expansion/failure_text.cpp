#include "platform/qt/expansion/failure_text.h"

#include <algorithm>
#include <array>

namespace zephin {
namespace {

using expander::Failure;
using expander::Job;
using expander::MissingEntry;
using expander::Reason;

constexpr std::size_t kNamesShown = 3;
/// In letters: a path in an archive may be as long as a page.
constexpr qsizetype kLongestShown = 60;

struct Advice {
  Word why;
  Word fix;
};

/// In the order of the enumeration.
constexpr std::array<Advice, static_cast<std::size_t>(expander::kLastReason) + 1> kAdvice{{
    {Word::Other, Word::TryAgain},
    {Word::NoSpace, Word::FreeSpace},
    {Word::NoFileSlots, Word::DeleteFiles},
    {Word::Quota, Word::DeleteFiles},
    {Word::TooLarge, Word::OtherDisk},
    {Word::Damaged, Word::GetAgain},
    {Word::NoArchive, Word::GetAgain},
    {Word::Unsupported, Word::AskPublisher},
    {Word::NoPermission, Word::OtherFolder},
    {Word::ReadOnly, Word::OtherDisk},
    {Word::TooManyOpen, Word::CloseOthers},
    {Word::NameRefused, Word::AskPublisher},
    {Word::InTheWay, Word::MoveAway},
    {Word::Gone, Word::TryAgain},
    {Word::DiskFault, Word::OtherDisk},
    {Word::NoMemory, Word::CloseOthers},
    {Word::BrokenOff, Word::TryAgain},
}};

const Advice& AdviceFor(Reason reason) {
  return kAdvice.at(static_cast<std::size_t>(reason));
}

/// A long name keeps its end, which is what tells files in one folder apart.
QString Shortened(const QString& name) {
  constexpr QChar kEllipsis(0x2026);
  return name.size() <= kLongestShown ? name : kEllipsis + name.right(kLongestShown - 1);
}

bool HasFigures(const Failure& failure) {
  return failure.needed > failure.free;
}

QString WhyWithoutFigures(const Words& words, Reason reason, const Failure& failure) {
  return words.Get(AdviceFor(reason).why, ShownName(failure.detail.empty() ? "?" : failure.detail));
}

QString Why(const Words& words, const Failure& failure) {
  if (failure.reason == Reason::NoSpace && HasFigures(failure)) {
    return words.Get(Word::NoSpaceFigures, words.SizeAtLeast(failure.needed),
                     words.Size(failure.free));
  }
  if (failure.reason == Reason::NoFileSlots && HasFigures(failure)) {
    return words.Get(Word::NoFileSlotsFigures, words.Number(failure.needed),
                     words.Number(failure.free));
  }
  return WhyWithoutFigures(words, failure.reason, failure);
}

QString WhatToDo(const Words& words, const Failure& failure) {
  if (failure.reason == Reason::NoSpace && HasFigures(failure)) {
    return words.Get(Word::FreeBytes, words.SizeAtLeast(failure.needed - failure.free));
  }
  return words.Get(AdviceFor(failure.reason).fix);
}

QString FirstMissing(const Words& words, std::uint64_t count,
                     const std::vector<MissingEntry>& missing) {
  QStringList names;
  for (std::size_t i = 0; i < std::min(missing.size(), kNamesShown); ++i) {
    names += words.Get(Word::Quoted, Shortened(ShownName(missing[i].name)));
  }
  const QString list = names.join(words.Get(Word::ListSeparator));
  const auto shown = static_cast<std::uint64_t>(names.size());
  return count > shown ? words.Count(Word::MissingMore, count - shown, list)
                       : words.Get(Word::Missing, list);
}

QString WhatIsLeft(const Words& words, const Job& job, const Failure& failure) {
  const QString name = ShownName(failure.placed.empty() ? job.name : failure.placed);
  if (failure.expanded > 0) {
    return words.Count(Word::Left, failure.expanded, name);
  }
  return failure.placed.empty() ? words.Get(Word::NothingLeft) : words.Get(Word::FolderLeft, name);
}

QString Details(const Words& words, const Failure& failure,
                const std::vector<MissingEntry>& missing) {
  QStringList lines;
  const auto differs = [&missing](const MissingEntry& entry) {
    return entry.reason != missing.front().reason;
  };
  const bool mixed = std::any_of(missing.begin(), missing.end(), differs);
  for (std::size_t reason = 0; reason < kAdvice.size(); ++reason) {
    bool headed = !mixed;
    for (const MissingEntry& entry : missing) {
      if (static_cast<std::size_t>(entry.reason) != reason) {
        continue;
      }
      if (!headed) {
        lines += WhyWithoutFigures(words, entry.reason, failure);
        headed = true;
      }
      lines += ShownName(entry.name);
    }
  }
  return lines.join(u'\n');
}

}  // namespace

FailureText TextOfFailure(const Words& words, const Job& job, const Failure& failure,
                          const std::vector<MissingEntry>& missing) {
  FailureText text;
  const bool nothing = failure.expanded == 0;
  text.heading = words.Get(nothing ? Word::Failed : Word::Incomplete, ShownName(job.name));
  text.paragraphs += words.Get(Word::Folder, ShownName(job.folder));
  text.paragraphs += Why(words, failure);
  if (!missing.empty()) {
    text.paragraphs +=
        FirstMissing(words, std::max<std::uint64_t>(failure.missing, missing.size()), missing);
  }
  // Of an expansion that was broken off nobody knows what it has left.
  if (failure.reason != Reason::BrokenOff) {
    text.paragraphs += WhatIsLeft(words, job, failure);
  }
  text.paragraphs += WhatToDo(words, failure);
  text.details = Details(words, failure, missing);
  return text;
}

QString ShownName(const std::string& bytes) {
  QString name = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
  for (QChar& letter : name) {
    const bool breaks = letter.category() == QChar::Other_Control ||
                        letter.category() == QChar::Other_Format ||
                        letter.category() == QChar::Separator_Line ||
                        letter.category() == QChar::Separator_Paragraph;
    // Joiners belong to words of some scripts.
    if (breaks && letter != QChar(0x200C) && letter != QChar(0x200D)) {
      letter = QChar::ReplacementCharacter;
    }
  }
  return name;
}

}  // namespace zephin
