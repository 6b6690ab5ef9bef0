#include "platform/qt/session/session.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <QElapsedTimer>
#include <QFile>
#include <QFontDatabase>
#include <QRawFont>
#include <QSettings>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace zephin {
namespace {

constexpr int kWakeInterval = 5;  ///< Milliseconds.

extern "C" void EndWithStatus0() {
  _exit(0);
}

extern "C" void EndOnSignal(int /*signal*/) {
  _exit(0);
}

/// The toolkit's remarks on fonts, settings and the like are nothing to this program's users.
void TellGraveOnly(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
  if (type == QtCriticalMsg || type == QtFatalMsg) {
    std::fprintf(stderr, "%s\n", qPrintable(message));
  }
}

/// Takes variables out of the environment, or sets them, for as long as it lives.
class ChangedEnvironment {
 public:
  using Change = std::pair<const char*, const char*>;  ///< Name and value; null: none.

  explicit ChangedEnvironment(std::initializer_list<Change> changes) {
    for (const auto& [name, value] : changes) {
      const char* before = std::getenv(name);
      before_.emplace_back(name,
                           before == nullptr ? std::nullopt : std::optional<std::string>(before));
      Put(name, value);
    }
  }
  ~ChangedEnvironment() {
    for (const auto& [name, value] : before_) {
      Put(name, value ? value->c_str() : nullptr);
    }
  }
  ChangedEnvironment(const ChangedEnvironment&) = delete;
  ChangedEnvironment& operator=(const ChangedEnvironment&) = delete;

 private:
  static void Put(const char* name, const char* value) {
    if (value == nullptr) {
      unsetenv(name);
    } else {
      setenv(name, value, 1);
    }
  }

  std::vector<std::pair<const char*, std::optional<std::string>>> before_;
};

/// Where the bundle keeps what the program needs of other makers; not there in a mere build.
QString Frameworks() {
  std::error_code failure;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failure);
  return QFile::decodeName((program.parent_path().parent_path() / "Frameworks/").c_str());
}

/// Where the bundle brings plug-ins of its own, the toolkit takes no others: those of the user's
/// system may be of another version of it.
void UseOnlyOwnPlugins() {
  const QString plugins = Frameworks() + QStringLiteral("plugins");
  if (QFile::exists(plugins)) {
    QCoreApplication::setLibraryPaths({plugins});
  }
}

/// Without any font on the system, all texts would be rows of boxes. The toolkit names families
/// even then, but has no letters of them.
void UseOwnFontIfThereIsNone() {
  if (QRawFont::fromFont(QFont()).fontTable("cmap").isEmpty()) {
    QFontDatabase::addApplicationFont(Frameworks() + QStringLiteral("fonts/DejaVuSans.ttf"));
  }
}

}  // namespace

bool DisplayIsThere() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool there = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return there;
}

void EndAlwaysWithStatus0() {
  std::atexit(EndWithStatus0);
  for (const int signal : {SIGABRT, SIGHUP, SIGINT, SIGTERM}) {
    std::signal(signal, EndOnSignal);
  }
  // A file that may not grow and a pipe without a reader are failed writes, which are told as such.
  for (const int signal : {SIGXFSZ, SIGPIPE}) {
    std::signal(signal, SIG_IGN);
  }
}

std::unique_ptr<QApplication> MakeApplication(int& argc, char** argv) {
  const ChangedEnvironment ours({
      {"QT_QPA_PLATFORM", "xcb"},
      {"QT_QPA_PLATFORM_PLUGIN_PATH", nullptr},
      {"QT_QPA_PLATFORMTHEME", nullptr},
      {"QT_QPA_GENERIC_PLUGINS", nullptr},
      {"QT_PLUGIN_PATH", nullptr},
      {"QT_STYLE_OVERRIDE", nullptr},
      {"QT_XCB_GL_INTEGRATION", "none"},  // Nothing here is drawn by OpenGL; finding it takes time.
      // By the desktop's name the toolkit would choose its theme.
      {"XDG_CURRENT_DESKTOP", nullptr},
      {"DESKTOP_SESSION", nullptr},
      {"KDE_FULL_SESSION", nullptr},
      {"GNOME_DESKTOP_SESSION_ID", nullptr},
  });
  qInstallMessageHandler(TellGraveOnly);
  UseOnlyOwnPlugins();
  // The folder dialog would leave a file of settings in the user's home.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
  auto application = std::make_unique<QApplication>(argc, argv);
  UseOwnFontIfThereIsNone();
  return application;
}

void TalkToDisplay(int milliseconds, const std::function<bool()>& done) {
  QElapsedTimer waited;
  waited.start();
  QTimer wake;
  wake.start(kWakeInterval);
  while (!done() && waited.elapsed() < milliseconds) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                    QEventLoop::WaitForMoreEvents);
  }
}

void FlushDisplay() {
  if (const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) {
    xcb_flush(x11->connection());
  }
}

}  // namespace zephin
