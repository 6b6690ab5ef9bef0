#include "tools/make_setup/bundle.h"

#include "setup/bundle_files.h"
#include "setup/limits.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/patch_tree.h"
#include "tools/make_setup/payload.h"
#include "tools/make_setup/publish.h"
#include "tools/make_setup/record_writer.h"
#include "tools/make_setup/setup_error.h"
#include "tools/make_setup/setup_file.h"
#include "tools/make_setup/zip_folder.h"

namespace zephin::make_setup {
namespace {

namespace fs = std::filesystem;

bool IsBundle(const fs::path& path) {
  return fs::is_directory(path / "Contents" / "MacOS");
}

void CheckPlaces(const fs::path& folder, const fs::path& stub, const fs::path& output) {
  if (!IsBundle(stub)) {
    throw SetupError(stub.string() + ": must be the stub's bundle, with a folder Contents/MacOS");
  }
  if (output.extension() != ".app") {
    throw SetupError(output.string() + R"(: must end in ".app")");
  }
  if (fs::exists(fs::symlink_status(output)) && !IsBundle(output)) {
    throw SetupError(output.string() + ": exists and is no bundle, so it is not replaced");
  }
  const fs::path place = fs::weakly_canonical(output);
  if (IsBelow(place.lexically_relative(fs::canonical(folder)).string())) {
    throw SetupError(output.string() + ": must not be inside the setup's own folder");
  }
  if (place == fs::canonical(stub)) {
    throw SetupError(output.string() + ": must not be the stub itself");
  }
}

void MakePayload(const Setup& setup, const fs::path& scratch, const fs::path& resources,
                 const fs::path& beside) {
  fs::path tree = setup.payload;
  if (setup.patch) {
    tree = scratch / "patch";
    At("patch", [&] { MakePatchTree(setup.patch->oldFolder, setup.patch->newFolder, tree); });
  }
  const std::string topName =
      setup.record.fTargetFolder.Bytes() + (setup.record.fInstallationPatch ? "Patch" : "");
  At("payload", [&] { WritePayload(tree, topName, resources / kPayloadFile); });
  if (setup.pieceSize != 0) {
    At("pieceSize",
       [&] { CutIntoPieces(resources / kPayloadFile, setup.pieceSize, resources, beside); });
  }
}

void AddArchives(const Setup& setup, const fs::path& resources, const fs::path& beside) {
  for (const ArchiveSource& archive : setup.archives) {
    const fs::path path = (archive.download ? beside : resources) / archive.name;
    ZipFolder(archive.folder, path);
    const auto size = static_cast<std::int64_t>(fs::file_size(path));
    if (archive.download && size < kSmallestDownload) {
      throw SetupError(archive.folder.string() + ": its archive must have at least " +
                       std::to_string(kSmallestDownload) + " bytes to be downloaded, has " +
                       std::to_string(size));
    }
  }
}

void AddHelpers(const Setup& setup, const fs::path& resources) {
  for (const fs::path& helper : setup.helpers) {
    const fs::path to = resources / helper.filename();
    if (fs::exists(to)) {
      throw SetupError("helpers: " + helper.string() +
                       ": must have another name, which exists in the bundle already");
    }
    fs::copy(helper, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  }
}

}  // namespace

void MakeBundle(const fs::path& folder, const fs::path& stub, const fs::path& output,
                const std::map<std::string, std::string>& values) {
  const Setup setup = ReadSetup(folder, values);
  CheckPlaces(folder, stub, output);
  const ScratchFolder scratch(output);
  const fs::path bundle = scratch.Path() / "bundle";
  const fs::path resources = bundle / "Contents" / "Resources";
  const fs::path beside = scratch.Path() / "beside";
  CopyTree(stub, bundle);
  fs::create_directories(resources);
  fs::create_directory(beside);
  WriteDesktopEntry(output.stem().string(), beside);
  At((folder / "setup.json").string(), [&] {
    WriteRecord(setup.record, resources);
    MakePayload(setup, scratch.Path(), resources, beside);
    AddArchives(setup, resources, beside);
    AddHelpers(setup, resources);
  });
  Publish(bundle, beside, output, scratch.Path() / "replaced");
}

}  // namespace zephin::make_setup
