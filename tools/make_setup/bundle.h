#ifndef TOOLS_MAKE_SETUP_BUNDLE_H_
#define TOOLS_MAKE_SETUP_BUNDLE_H_

#include <filesystem>
#include <map>
#include <string>

namespace zephin::make_setup {

/// Makes the bundle `output` ("*.app") from a setup's folder and the stub's bundle, which is
/// copied. Beside it come the file that starts it on a Linux desktop, the further pieces of a split
/// payload and the archives of options that are to be downloaded. A bundle that stands at `output`
/// is replaced. `values` are those of
/// `${NAME}` in setup.json. Throws SetupError or a file system error, and everything is then as it
/// was.
void MakeBundle(const std::filesystem::path& folder, const std::filesystem::path& stub,
                const std::filesystem::path& output,
                const std::map<std::string, std::string>& values);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_BUNDLE_H_
