#ifndef TOOLS_MAKE_SETUP_BUNDLE_H_
#define TOOLS_MAKE_SETUP_BUNDLE_H_

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tools/make_setup/files.h"

namespace zephin::make_setup {

/// Receives what a run reports. An exception that a function throws ends the run.
class Observer {
 public:
  Observer() = default;
  virtual ~Observer() = default;
  Observer(const Observer&) = delete;
  Observer& operator=(const Observer&) = delete;

  /// A fault from which every user would suffer; the bundle is made all the same.
  virtual void Warn(const std::string& warning) = 0;
  /// Packing begins, of so many files with so many bytes of content.
  virtual void BeginPacking(const Contents& all) = 0;
  /// So much more has been packed. Also called, with nothing, between the steps of a run.
  virtual void Packed(const Contents& more) = 0;
};

struct BundleRequest {
  std::filesystem::path folder = {};  ///< With the file setup.json.
  std::filesystem::path stub = {};    ///< The stub's bundle, which is copied.
  std::filesystem::path output = {};  ///< The bundle to make, "*.app". An existing one is replaced.
  std::map<std::string, std::string> values = {};  ///< They replace `${NAME}` in setup.json.
  bool strict = false;                             ///< Warnings are errors.
  /// Also makes "NAME.tar.gz" beside the bundle: a folder "NAME" with the bundle, its desktop entry
  /// and a file README.txt. Everything in it has the time of setup.json.
  bool archive = false;
};

struct BundleResult {
  Contents packed;                  ///< The contents of the payload and of the archives.
  std::uint64_t size = 0;           ///< Of the bundle, in bytes.
  std::vector<std::string> beside;  ///< Names of the files beside the bundle, sorted.
};

/// Makes a bundle, and beside it the file that starts it on a Linux desktop, the further pieces of
/// a split payload, the archives of options that are downloaded and, if asked for, the archive of
/// everything that a user needs.
///
/// Everything is made in a folder beside `output` first and moved at the end. Throws SetupError or
/// a file system error, and leaves everything as it was.
BundleResult MakeBundle(const BundleRequest& request, Observer& observer);

/// Does the same in the temporary folder, without a stub, and keeps nothing: `folder`, `values` and
/// `strict` are all that the request needs.
void CheckBundle(const BundleRequest& request, Observer& observer);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_BUNDLE_H_
