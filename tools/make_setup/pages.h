#ifndef TOOLS_MAKE_SETUP_PAGES_H_
#define TOOLS_MAKE_SETUP_PAGES_H_

#include <string>

// The record's form of a page (agreement, information, notes): either Mac Roman with "|" for each
// line end, or "$HTML$" and the page's UTF-16, low byte first, as hexadecimal digits in capitals.
// Which of the two it is has nothing to do with whether the page is HTML: the stub shows as HTML
// what holds "<html>" in any letter case.
//
//   "Café\nOpen"  ->  43 61 66 8E 7C 4F 70 65 6E ("Caf\x8E|Open")
//   "Ω"           ->  "$HTML$A903"

namespace zephin::make_setup {

/// `Fitting` is Mac Roman where the page can be held in it, else the digits.
enum class PageForm { Fitting, MacRoman, Hex };
enum class PageKind { Plain, Html };

/// `utf8` may end lines in any way. Empty gives empty. Throws SetupError for invalid UTF-8, a zero
/// character, a page that the form can't hold, a plain page that would be shown as HTML and an HTML
/// page that would be shown as plain text.
std::string PageText(std::string utf8, PageKind kind, PageForm form = PageForm::Fitting);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_PAGES_H_
