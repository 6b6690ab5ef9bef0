#ifndef TOOLS_MAKE_SETUP_BUNDLE_H_
#define TOOLS_MAKE_SETUP_BUNDLE_H_

#include <filesystem>
#include <map>
#include <string>

namespace zephin::make_setup {

/// Makes the bundle `output` ("*.app") from a setup's folder and the stub's bundle, which is
/// copied. Writes beside it the file that starts it on a Linux desktop, the further pieces of a
/// split payload, and the archives of options that are downloaded. An existing bundle `output` is
/// replaced. `values` replace `${NAME}` in setup.json.
///
/// Everything is made in a folder beside `output` first and moved at the end. Throws SetupError or
/// a file system error, and leaves everything as it was.
void MakeBundle(const std::filesystem::path& folder, const std::filesystem::path& stub,
                const std::filesystem::path& output,
                const std::map<std::string, std::string>& values);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_BUNDLE_H_
