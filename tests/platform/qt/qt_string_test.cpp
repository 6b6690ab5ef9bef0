#include "platform/qt/qt_string.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QWidget>
#include <vector>

namespace zephin {
namespace {

TEST(ToQString, ShowsEveryEncodingAndUnknownBytes) {
  const std::vector<std::pair<String, const char16_t*>> rows{
      {{"caf\x8E", Encoding::MacRoman}, u"café"},
      {{"caf\xC3\xA9", Encoding::None}, u"café"},
      {{"caf\x8E", Encoding::None}, u"café"},
      {{std::string("c\0\x4F\x53", 4), Encoding::UTF16}, u"c\u534F"},
      // Only the invalid bytes are replaced, not their neighbours.
      {{"a\xFF\xFE z", Encoding::UTF8}, u"a\uFFFD\uFFFD z"},
  };
  for (const auto& [text, shown] : rows) {
    EXPECT_EQ(ToQString(text).toStdU16String(), shown) << text.Bytes();
  }
}

/// The accessible name is the title as the title bar shows it.
TEST(AsWindowTitle, IsShownWithoutMarkup) {
  for (const char* title : {"[*]", "a [*] b [*]", "[*][*]", "& <b>"}) {
    QWidget window;
    window.setWindowTitle(AsWindowTitle(QString::fromUtf8(title)));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&window)->text(QAccessible::Name).toStdString(),
              title);
  }
}

}  // namespace
}  // namespace zephin
