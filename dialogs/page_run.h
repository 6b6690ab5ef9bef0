#ifndef DIALOGS_PAGE_RUN_H_
#define DIALOGS_PAGE_RUN_H_

#include "platform/framework/string.h"

namespace zephin {

enum class QuitButton { Shown, Hidden };

/// A publisher's page and the words around it. It is shown as HTML if "<HTML>" stands anywhere in
/// the text, in any letter case, else as plain text.
struct Page {
  String text;
  String title;
  QuitButton quitButton = QuitButton::Shown;
  String quitCaption = {};  ///< Empty: the button's own.
  String acceptCaptionInHtml;
  String acceptCaptionInPlain;
};

/// Shows the page modally. True if its accept button closed it.
bool ShowPage(const Page& page);

}  // namespace zephin

#endif  // DIALOGS_PAGE_RUN_H_
