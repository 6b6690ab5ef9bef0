#ifndef PLATFORM_QT_SESSION_FONT_LIBRARIES_H_
#define PLATFORM_QT_SESSION_FONT_LIBRARIES_H_

#include <filesystem>
#include <string>
#include <vector>

// Which libraries find and read the user's fonts: the bundle's or the system's. A newer system
// keeps its list of fonts in a form that the bundle's can't read. They would read every font at the
// first start, which takes a third of a second, and leave a list of their own in the user's home.

namespace zephin {

/// What to load before the program's own libraries, as the loader wants it: the font libraries in
/// the first of these folders that has both, if what lists the fonts is newer there than what is
/// loaded now, what reads them is not older, and both can be loaded together with the bundle's
/// libraries. Else empty.
std::string NewerFontLibraries(const std::vector<std::filesystem::path>& folders);

/// Starts this program again, as the same process, with the system's font libraries if they are
/// newer. Returns if they are not, and in the second start. Programs that this one starts don't get
/// them. To be called before there is a thread, with the arguments of `main`.
void UseNewerFontLibraries(char** argv);

}  // namespace zephin

#endif  // PLATFORM_QT_SESSION_FONT_LIBRARIES_H_
