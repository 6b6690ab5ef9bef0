#include "tests/faults/works.h"

#include "payload/scrambled_file.h"
#include "tests/support/loopback_server.h"
#include "tools/make_setup/zip_folder.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;

void MakePayload(const StubRun& run, const std::string& topName) {
  const ScratchFolder payload;
  WriteFile(payload / "a", "new");
  WriteFile(payload / "sub/b", "new");
  run.SetPayload(payload.Path(), topName);
}

void MakeArchive(const fs::path& archive, const std::string& content) {
  const ScratchFolder folder;
  WriteFile(folder / archive.stem(), content);
  make_setup::ZipFolder(folder.Path(), archive);
}

/// An install over an existing folder, with a copy list, a choice and an option.
Work Install() {
  return {"Install",
          [](StubRun& run) {
            MakePayload(run, "Tool");
            MakeArchive(run.Resources() / "choice.zip", "chosen");
            MakeArchive(run.Resources() / "option.zip", "extra");
            WriteFile(PlaceOf(run) / "Tool/old/x", "old");
            WriteFile(run.scratch / "before/x", "x");
          },
          [](StubRun& run, ZephinStubWindow& w) {
            const std::string place = PlaceOf(run);
            w.fTargetFolder = "Tool";
            w.fPostCopy = Utf8("preinstallcopy=" + (run.scratch / "before").string() + ";" + place +
                               "/pre|a=" + place + "/new/folder/a|sub=" + place + "/sub");
            w.fInstallChoices = "C,choice.zip,sub";
            w.fInstallOptions = "O,option.zip,Tool";
            w.ExpandFolder();
            w.ExpandChoiceAndOptions("C", "O");
          },
          {"mkdir Place/pre", "open Place/pre/x", "openat Place/Tool/sub/b",
           "write Place/Tool/sub/b", "mkdir Place/sub", "open Place/sub/b",
           "renameat2 Place/Tool/sub/choice", "renameat2 Place/Tool/option"}};
}

Work Patch() {
  return {"Patch",
          [](StubRun& run) {
            MakePayload(run, "ToolPatch");
            WriteFile(PlaceOf(run) / "Tool/a", "old");
            WriteFile(PlaceOf(run) / "Tool/keep", "old");
          },
          [](StubRun& /*run*/, ZephinStubWindow& w) {
            w.fTargetFolder = "Tool";
            w.fInstallationPatch = true;
            w.ExpandFolder();
          },
          {"mkdirat Place/ToolPatch/sub", "openat Place/ToolPatch/a", "write Place/ToolPatch/a",
           "openat Place/ToolPatch/sub/b", "write Place/ToolPatch/sub/b"}};
}

/// Pieces on a disc, joined and unscrambled.
Work Split() {
  return {"Split",
          [](StubRun& run) {
            WriteFile(run.Resources() / "Data#1", "one");
            WriteFile(run.scratch / "CD/Data#2", "two");
            WriteFile(run.scratch / "CD/Data#End", "end");
            run.desktop.clipboard = (run.scratch / "CD").string() + "/";
          },
          [](StubRun& run, ZephinStubWindow& w) {
            const String archive = Utf8(PlaceOf(run) / "Tool.zip");
            w.CombineSplitSetup(Utf8(run.Resources() / "Data#1"), archive);
            ViewConst::EncryptDecryptFileEnd(archive, false);
          },
          {"open Place/Tool.zip", "write Place/Tool.zip"}};
}

Work Download() {
  return {
      "Download",
      [](StubRun& run) { MakeArchive(run.scratch / "noise.zip", Noise(30'000)); },
      [](StubRun& run, ZephinStubWindow& w) {
        const LoopbackServer server(HttpResponse("200 OK", ReadFile(run.scratch / "noise.zip")));
        fs::create_directory(PlaceOf(run) / "Tool");
        w.fTargetFolder = Utf8(PlaceOf(run) / "Tool");
        w.fInstallOptions = Utf8("O," + server.Address("/noise.zip") + ",More");
        w.ExpandChoiceAndOptions("", "O");
      },
      {}};
}

}  // namespace

fs::path PlaceOf(const StubRun& run) {
  return run.scratch / "Place";
}

std::vector<Work> Works() {
  return {Install(), Patch(), Split(), Download()};
}

}  // namespace zephin::test
