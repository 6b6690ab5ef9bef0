#include "platform/qt/session/session.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <QElapsedTimer>
#include <QFile>
#include <QFontDatabase>
#include <QIcon>
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

/// In milliseconds. The wait for events must end now and then, to ask whether it is over.
constexpr int kWakeInterval = 5;

extern "C" void EndWithStatus0() {
  _exit(0);
}

extern "C" void EndOnSignal(int /*signal*/) {
  _exit(0);
}

/// The toolkit's warnings, about fonts and settings for example, don't help users of an installer.
void PrintErrorsOnly(QtMsgType type, const QMessageLogContext& /*context*/,
                     const QString& message) {
  if (type == QtCriticalMsg || type == QtFatalMsg) {
    std::fprintf(stderr, "%s\n", qPrintable(message));
  }
}

/// Changes environment variables, and restores them when it is destroyed.
class ChangedEnvironment {
 public:
  using Change = std::pair<const char*, const char*>;  ///< Name and value; null removes it.

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

/// The bundle's folder for libraries, plug-ins and fonts. A build that isn't installed has none.
QString Frameworks() {
  return BundleContents() + QStringLiteral("Frameworks/");
}

/// Plug-ins of the user's system may belong to another version of the toolkit than the bundle's.
void UseOnlyOwnPlugins() {
  const QString plugins = Frameworks() + QStringLiteral("plugins");
  if (QFile::exists(plugins)) {
    QCoreApplication::setLibraryPaths({plugins});
  }
}

/// On a system without any font, all letters would be boxes. The toolkit lists families even then,
/// so that only a look at a font's table of letters shows whether there is one.
void UseOwnFontIfThereIsNone() {
  if (QRawFont::fromFont(QFont()).fontTable("cmap").isEmpty()) {
    QFontDatabase::addApplicationFont(Frameworks() + QStringLiteral("fonts/DejaVuSans.ttf"));
  }
}

/// Frame, task bar and window switcher show the publisher's icon.
void UseBundleIcon() {
  const QString path = BundleContents() + QStringLiteral("Resources/Setup.png");
  if (QFile::exists(path)) {
    QApplication::setWindowIcon(QIcon(path));
  }
}

}  // namespace

QString BundleContents() {
  std::error_code failure;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failure);
  return QFile::decodeName((program.parent_path().parent_path() / "").c_str());
}

bool DisplayIsThere() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool there = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return there;
}

void EndAlwaysWithStatus0() {
  // `_exit` in this handler replaces the status that the toolkit has passed to `exit`.
  std::atexit(EndWithStatus0);
  for (const int signal : {SIGABRT, SIGHUP, SIGINT, SIGTERM}) {
    std::signal(signal, EndOnSignal);
  }
  // A write to a full file or to a pipe without a reader then fails, and its caller reports it.
  for (const int signal : {SIGXFSZ, SIGPIPE}) {
    std::signal(signal, SIG_IGN);
  }
}

std::unique_ptr<QApplication> MakeApplication(int& argc, char** argv) {
  const ChangedEnvironment ours({
      // The X display is also there in sessions of Wayland, and its windows can be placed.
      {"QT_QPA_PLATFORM", "xcb"},
      {"QT_QPA_PLATFORM_PLUGIN_PATH", nullptr},
      {"QT_QPA_PLATFORMTHEME", nullptr},
      {"QT_QPA_GENERIC_PLUGINS", nullptr},
      {"QT_PLUGIN_PATH", nullptr},
      {"QT_STYLE_OVERRIDE", nullptr},
      {"QT_XCB_GL_INTEGRATION", "none"},  // Not used, and loading OpenGL takes time.
      // The toolkit chooses a theme by the desktop's name.
      {"XDG_CURRENT_DESKTOP", nullptr},
      {"DESKTOP_SESSION", nullptr},
      {"KDE_FULL_SESSION", nullptr},
      {"GNOME_DESKTOP_SESSION_ID", nullptr},
      // A session that is restored later would start the installer again.
      {"SESSION_MANAGER", nullptr},
  });
  qInstallMessageHandler(PrintErrorsOnly);
  UseOnlyOwnPlugins();
  // Otherwise the folder dialog would write a file of settings to the user's home.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
  auto application = std::make_unique<QApplication>(argc, argv);
  UseOwnFontIfThereIsNone();
  UseBundleIcon();
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
