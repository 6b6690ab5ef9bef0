#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryFile>

namespace {

/// Two screens, of which the first one is the primary one.
constexpr const char* kScreens = R"({"screens": [
  {"name": "left", "x": 0, "y": 0, "width": 800, "height": 800},
  {"name": "right", "x": 800, "y": 0, "width": 1000, "height": 600}]})";

}  // namespace

int main(int argc, char** argv) {
  QTemporaryFile screens;
  if (!screens.open() || screens.write(kScreens) < 0 || !screens.flush()) {
    return 1;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toUtf8());
  const QApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
