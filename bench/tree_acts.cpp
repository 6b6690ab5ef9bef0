// tree_acts copy FROM TO, tree_acts delete PATH: what the installer does to a folder with all it
// holds, for bench/trees to time.
#include <iostream>
#include <string_view>

#include "files/files.h"
#include "files/folders.h"
#include "platform/framework/application.h"
#include "tests/support/quiet_desktop.h"

int main(int argc, char** argv) {
  using zephin::Utf8;
  namespace ViewConst = zephin::ViewConst;
  constexpr int kSlice = 10;
  zephin::QuietDesktop desktop;
  desktop.slice = kSlice;
  const zephin::Application application(desktop, zephin::Machine());
  const std::string_view act = argc > 2 ? argv[1] : "";
  if (act == "copy" && argc == 4) {
    return ViewConst::CopyFile(Utf8(argv[2]), Utf8(argv[3])) ? 0 : 1;
  }
  if (act == "delete" && argc == 3) {
    ViewConst::DeleteFolderOrApp(Utf8(argv[2]));
    return ViewConst::FileExists(Utf8(argv[2])) ? 1 : 0;
  }
  std::cerr << "usage: tree_acts copy FROM TO, tree_acts delete PATH\n";
  return 2;
}
