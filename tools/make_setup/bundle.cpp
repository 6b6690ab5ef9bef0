#include "tools/make_setup/bundle.h"

#include <algorithm>
#include <chrono>

#include "setup/bundle_files.h"
#include "setup/limits.h"
#include "tools/make_setup/checks.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/patch_tree.h"
#include "tools/make_setup/payload.h"
#include "tools/make_setup/publish.h"
#include "tools/make_setup/record_writer.h"
#include "tools/make_setup/setup_error.h"
#include "tools/make_setup/setup_file.h"
#include "tools/make_setup/tarball.h"

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
  // A payload that contained the bundle would grow with each run.
  const fs::path place = fs::weakly_canonical(output);
  if (IsBelow(place.lexically_relative(fs::canonical(folder)).string())) {
    throw SetupError(output.string() + ": must not be inside the setup's own folder");
  }
  if (place == fs::canonical(stub)) {
    throw SetupError(output.string() + ": must not be the stub itself");
  }
}

/// Makes the parts of a bundle that come from the setup: its resources, and what belongs beside it.
class Work {
 public:
  Work(const BundleRequest& request, Setup setup, const fs::path& scratch, Observer& observer)
      : request_(request),
        setup_(std::move(setup)),
        resources_(scratch / "bundle" / "Contents" / "Resources"),
        beside_(scratch / "beside"),
        patch_(scratch / "patch"),
        observer_(observer) {}

  /// Gives what has been packed.
  Contents Run() {
    fs::create_directories(resources_);
    fs::create_directories(beside_);
    // A patch is checked as what is packed of it, not as the two folders that it is made from.
    const fs::path tree = PayloadTree();
    const Contents payloadContents = CheckedPayload(tree);
    Contents all = payloadContents;
    for (const ArchiveSource& archive : setup_.archives) {
      const Contents contents = ContentsOf(ListTree(archive.folder));
      all.files += contents.files;
      all.bytes += contents.bytes;
    }
    // Before the record is written: an observer may end the run here without any work lost.
    observer_.BeginPacking(all);
    WriteRecord(setup_.record, resources_);
    AddPayload(tree, payloadContents);
    AddArchives();
    AddHelpers();
    RefuseWarnings();
    return all;
  }

 private:
  fs::path PayloadTree() const {
    if (!setup_.patch) {
      return setup_.payload;
    }
    At("patch", [&] { MakePatchTree(setup_.patch->oldFolder, setup_.patch->newFolder, patch_); });
    return patch_;
  }

  /// The list of all files is gone when they are packed: of many files it takes much memory.
  Contents CheckedPayload(const fs::path& tree) const {
    const std::vector<TreeItem> payload = At("payload", [&] { return ListTree(tree); });
    CheckSetup(setup_, payload, warn_);
    // At once, since packing may take long.
    RefuseWarnings();
    return ContentsOf(payload);
  }

  void AddPayload(const fs::path& tree, const Contents& contents) const {
    const std::string topName =
        setup_.record.fTargetFolder.Bytes() + (setup_.record.fInstallationPatch ? "Patch" : "");
    const fs::path payload = resources_ / kPayloadFile;
    At("payload", [&] { WritePayload(tree, topName, payload, setup_.compression, report_); });
    // Before the payload is cut: the installer joins the pieces and then looks at the whole length.
    CheckExpansionTime(contents, fs::file_size(payload), warn_);
    if (setup_.pieceSize != 0) {
      At("pieceSize", [&] { CutIntoPieces(payload, setup_.pieceSize, resources_, beside_); });
    }
  }

  void AddArchives() const {
    for (const ArchiveSource& archive : setup_.archives) {
      const fs::path path = (archive.download ? beside_ : resources_) / archive.name;
      // Without a top-level folder: the installer expands into one of the name in the record.
      ZipFolder(archive.folder, path, {.compression = setup_.compression, .report = report_});
      const auto size = static_cast<std::int64_t>(fs::file_size(path));
      if (archive.download && size < kSmallestDownload) {
        throw SetupError("fInstallOptions: " + archive.folder.string() +
                         ": its archive must have at least " + std::to_string(kSmallestDownload) +
                         " bytes to be downloaded, has " + std::to_string(size));
      }
    }
  }

  void AddHelpers() const {
    for (const fs::path& helper : setup_.helpers) {
      const fs::path to = resources_ / helper.filename();
      // A helper named "Data" would replace the record without a message.
      if (fs::exists(to)) {
        throw SetupError("helpers: " + helper.string() +
                         ": must have another name, which exists in the bundle already");
      }
      fs::copy(helper, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
      observer_.Packed({});
    }
  }

  void RefuseWarnings() const {
    if (request_.strict && warnings_ > 0) {
      throw SetupError("nothing is made, since warnings count as errors (--strict)");
    }
  }

  const BundleRequest& request_;
  Setup setup_;
  fs::path resources_;
  fs::path beside_;
  fs::path patch_;
  Observer& observer_;
  int warnings_ = 0;
  Warn warn_ = [this](const std::string& warning) {
    ++warnings_;
    observer_.Warn((request_.folder / "setup.json").string() + ": " + warning);
  };
  PackReport report_ = [this](std::uint64_t files, std::uint64_t bytes) {
    observer_.Packed({files, bytes});
  };
};

/// Writes what a publisher hands out, and only that: not the archives for the publisher's server.
void WriteArchive(const BundleRequest& request, const fs::path& scratch, Observer& observer) {
  const std::string name = request.output.stem().string();
  const fs::path beside = scratch / "beside";
  const fs::path readme = scratch / "README.txt";
  WriteFile(readme, "Unpack this archive into a folder of your own and open " + name +
                        ".desktop there by a double click.\n"
                        "If your desktop does not start it, run " +
                        name + ".app/Contents/MacOS/Setup in a terminal.\n");
  // The one time that stays the same when the same setup is packed again, also after a clone of
  // the stub.
  const auto time =
      fs::file_time_type::clock::to_sys(fs::last_write_time(request.folder / "setup.json"));
  // In one folder, since some programs unpack into the folder that they are started in.
  WriteTarball(beside / (name + ".tar.gz"),
               {{readme, name + "/README.txt"},
                {scratch / "bundle", name + "/" + name + ".app"},
                {beside / (name + ".desktop"), name + "/" + name + ".desktop"}},
               {.time = std::chrono::floor<std::chrono::seconds>(time).time_since_epoch().count(),
                .report = [&] { observer.Packed({}); }});
}

std::vector<std::string> NamesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  // The order of a directory differs between disks, and these names are shown.
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

BundleResult MakeBundle(const BundleRequest& request, Observer& observer) {
  Setup setup = ReadSetup(request.folder, request.values);
  CheckPlaces(request.folder, request.stub, request.output);
  if (request.archive && setup.pieceSize != 0) {
    throw SetupError(
        (request.folder / "setup.json").string() +
        ": pieceSize: must be left out for one archive (--archive): the pieces are for "
        "several discs");
  }
  const ScratchFolder scratch(request.output);
  const fs::path bundle = scratch.Path() / "bundle";
  const fs::path beside = scratch.Path() / "beside";
  CopyTree(request.stub, bundle);
  Work work(request, std::move(setup), scratch.Path(), observer);
  BundleResult result;
  result.packed = At((request.folder / "setup.json").string(), [&] { return work.Run(); });
  WriteDesktopEntry(request.output.stem().string(), beside);
  if (request.archive) {
    WriteArchive(request, scratch.Path(), observer);
  }
  // Counted before the bundle is in its place, so that no error can follow.
  result.size = ContentsOf(ListTree(bundle)).bytes;
  result.beside = NamesIn(beside);
  observer.Packed({});
  Publish(bundle, beside, request.output, scratch.Path() / "replaced");
  return result;
}

void CheckBundle(const BundleRequest& request, Observer& observer) {
  // It packs, too: the length of an archive decides about two of the checks.
  Setup setup = ReadSetup(request.folder, request.values);
  const ScratchFolder scratch(fs::temp_directory_path() / "check");
  Work work(request, std::move(setup), scratch.Path(), observer);
  At((request.folder / "setup.json").string(), [&] { return work.Run(); });
}

}  // namespace zephin::make_setup
