// expansion_window: the window of an expansion. An expander starts it, and writes to its standard
// input what there is to show (platform/expander/report/message.h). It ends with status 0, by
// itself after a complete expansion, and when its user closes the message of a failure.

#include <sys/resource.h>
#include <unistd.h>

#include <QApplication>
#include <QLocale>

#include "platform/qt/expansion/expansion_view.h"
#include "platform/qt/expansion/window_parts.h"
#include "platform/qt/session/font_libraries.h"
#include "platform/qt/session/session.h"
#include "platform/qt/widgets/look.h"

namespace {

/// An expansion that failed for want of descriptors passes its limit on to this program.
void AllowManyFiles() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) == 0) {
    limit.rlim_cur = limit.rlim_max;
    (void)::setrlimit(RLIMIT_NOFILE, &limit);
  }
}

}  // namespace

int main(int argc, char** argv) {
  zephin::EndAlwaysWithStatus0();
  AllowManyFiles();
  if (!zephin::DisplayIsThere()) {
    return 0;
  }
  zephin::UseNewerFontLibraries(argv);
  const auto application = zephin::MakeApplication(argc, argv);
  zephin::SetUpLook();
  zephin::SetUpRoles();
  const zephin::Words words(QLocale::system().uiLanguages());
  zephin::ExpansionView view(words, STDIN_FILENO);
  return QApplication::exec();
}
