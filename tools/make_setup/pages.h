#ifndef TOOLS_MAKE_SETUP_PAGES_H_
#define TOOLS_MAKE_SETUP_PAGES_H_

#include <filesystem>
#include <string>

#include "platform/framework/string.h"

/// The pages that a publisher writes as text files: agreement, information and both notes.
namespace zephin::make_setup {

/// How a page is stored in the record; see DecodePage (setup/record.h). The user sees no
/// difference. `Shortest` is Mac Roman if that can hold the page, else the digits of its UTF-16.
enum class PageForm { Shortest, MacRoman, Hex };

/// Whether a page is meant to be shown as HTML. The installer decides that by its text: it shows as
/// HTML what contains "<html>" in any letter case, in either form.
enum class PageKind { Plain, Html };

/// A page as the record holds it: labelled Mac Roman if it is to be stored so, else UTF-8. Line
/// ends of any kind become line feeds. Throws SetupError for text that is not UTF-8 or contains a
/// zero character, for a page that can't be stored in the form asked for, and for a page that the
/// installer would show as the other kind.
String MakePage(std::string utf8, PageKind kind, PageForm form = PageForm::Shortest);

/// Reads the page "*.txt" or "*.html" below `folder`, without a byte order mark and the line end at
/// its end. Throws SetupError as MakePage does, and for a file of another name or one that can't be
/// read.
String ReadPage(const std::filesystem::path& folder, const std::string& name, PageForm form);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PAGES_H_
