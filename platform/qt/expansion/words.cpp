#include "platform/qt/expansion/words.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zephin {
namespace {

enum Language : std::size_t { English, German, French, Spanish, Japanese, Arabic };

/// From one unit of sizes to the next.
constexpr std::uint64_t kStep = 1000;

/// Arabic has forms for zero, one, two, a few, many, and all other numbers.
std::size_t ArabicForm(std::uint64_t number) {
  const std::uint64_t rest = number % 100;
  if (number <= 2) {
    return static_cast<std::size_t>(number);
  }
  if (rest >= 3 && rest <= 10) {
    return 3;
  }
  return rest >= 11 ? 4 : 5;
}

qint64 AsSize(std::uint64_t bytes) {
  constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<qint64>::max());
  return static_cast<qint64>(std::min(bytes, kMost));
}

/// A name or number in a text of the other direction must not change the order of what is beside
/// it.
QString Isolated(const QString& text) {
  constexpr QChar kFirstStrong(0x2068);
  constexpr QChar kEnd(0x2069);
  // A list of names has isolated names, and the direction of the text.
  return text.isEmpty() || text.contains(kEnd) ? text : kFirstStrong + text + kEnd;
}

}  // namespace

std::size_t FormCount(std::size_t language) {
  switch (language) {
    case Arabic:
      return 6;
    case Japanese:
      return 1;
    default:
      return 2;
  }
}

std::size_t FormOf(std::size_t language, std::uint64_t number) {
  switch (language) {
    case Arabic:
      return ArabicForm(number);
    case Japanese:
      return 0;
    case French:
      return number < 2 ? 0 : 1;
    default:
      return number == 1 ? 0 : 1;
  }
}

Words::Words(const QStringList& tags) : locale_(QLocale::English, QLocale::UnitedStates) {
  for (const QString& tag : tags) {
    const QString code = tag.section(u'-', 0, 0).section(u'_', 0, 0).toLower();
    const auto* const found =
        std::find_if(kLanguages.begin(), kLanguages.end(),
                     [&code](const char* known) { return code == QLatin1String(known); });
    if (found != kLanguages.end()) {
      language_ = static_cast<std::size_t>(found - kLanguages.begin());
      locale_ = QLocale(tag);
      return;
    }
  }
}

QString Words::Fill(const QString& form, const QString& first, const QString& second) const {
  const bool turned = Direction() == Qt::RightToLeft;
  if (form.contains(QLatin1String("%2"))) {
    return form.arg(turned ? Isolated(first) : first, turned ? Isolated(second) : second);
  }
  return form.contains(QLatin1String("%1")) ? form.arg(turned ? Isolated(first) : first) : form;
}

QString Words::Get(Word word, const QString& first, const QString& second) const {
  return Fill(QString::fromUtf8(TextOf(word, language_)), first, second);
}

QString Words::Count(Word word, std::uint64_t number, const QString& second) const {
  const QStringList forms = QString::fromUtf8(TextOf(word, language_)).split(u'|');
  return Fill(forms.value(static_cast<qsizetype>(FormOf(language_, number))), Number(number),
              second);
}

QString Words::Size(std::uint64_t bytes) const {
  // Three digits are enough: "1.3 GB", "131 MB".
  std::uint64_t figure = bytes;
  while (figure >= kStep) {
    figure /= kStep;
  }
  const int digits = figure >= 100 ? 0 : 1;
  QString size = locale_.formattedDataSize(AsSize(bytes), digits, QLocale::DataSizeSIFormat);
  constexpr QChar kNoBreakSpace(0xA0);
  return size.replace(u' ', kNoBreakSpace);
}

QString Words::SizeAtLeast(std::uint64_t bytes) const {
  // One more in the last digit that is shown.
  std::uint64_t step = 1;
  while (bytes / step >= kStep) {
    step *= kStep;
  }
  step = bytes / step >= 100 ? step : std::max<std::uint64_t>(step / 10, 1);
  const std::uint64_t rest = bytes % step;
  const bool fits = bytes <= std::numeric_limits<std::uint64_t>::max() - step;
  return Size(rest == 0 || !fits ? bytes : bytes - rest + step);
}

QString Words::Number(std::uint64_t number) const {
  return locale_.toString(static_cast<qulonglong>(number));
}

Qt::LayoutDirection Words::Direction() const {
  return language_ == Arabic ? Qt::RightToLeft : Qt::LeftToRight;
}

}  // namespace zephin
