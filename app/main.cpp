#include <cstdlib>
#include <memory>

#include "app/app.h"
#include "platform/framework/desktop.h"
#include "platform/framework/machine.h"

int main(int argc, char** argv) {
  const std::unique_ptr<zephin::Desktop> desktop = zephin::OpenDesktop(argc, argv);
  if (desktop == nullptr) {
    return EXIT_SUCCESS;  // Every end of an installer has this status.
  }
  zephin::_Main(*desktop, zephin::DetectMachine());
  return EXIT_SUCCESS;
}
