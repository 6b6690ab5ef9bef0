#include <cstdio>
#include <cstdlib>

#include "app/app.h"
#include "platform/framework/machine.h"
#include "platform/qt/qt_desktop.h"

int main(int argc, char** argv) {
  if (!zephin::QtDesktop::DisplayIsThere()) {
    std::fputs("This installer needs a desktop: there is no display to show its window on.\n",
               stderr);
    return EXIT_SUCCESS;
  }
  zephin::QtDesktop desktop(argc, argv);
  zephin::_Main(desktop, zephin::DetectMachine());
  return EXIT_SUCCESS;
}
