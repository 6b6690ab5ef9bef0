// copy_file SOURCE DESTINATION [unscramble]: the two steps that bring a payload beside its target,
// on paths from the root. A program of its own, to be measured beside cp (see bench/copy).
#include <string_view>

#include "files/files.h"
#include "payload/scrambled_file.h"
#include "platform/framework/application.h"
#include "tests/support/quiet_desktop.h"

int main(int argc, char** argv) {
  using zephin::Utf8;
  if (argc < 3) {
    return 2;
  }
  zephin::QuietDesktop desktop;
  desktop.slice = 10;
  const zephin::Application application(desktop, zephin::Machine());
  if (!zephin::ViewConst::CopyFile(Utf8(argv[1]), Utf8(argv[2]))) {
    return 1;
  }
  if (argc > 3 && std::string_view(argv[3]) == "unscramble") {
    zephin::ViewConst::EncryptDecryptFileEnd(Utf8(argv[2]), false);
  }
  return 0;
}
