#include <QKeyEvent>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QUrl>
#include <optional>

#include "platform/framework/application.h"
#include "platform/framework/controls.h"
#include "platform/framework/window.h"
#include "platform/qt/peers/control_peer.h"
#include "platform/qt/qt_string.h"
#include "platform/qt/widgets/text_widget.h"

namespace zephin {
namespace {

constexpr qreal kMargin = 12;

/// Removes the `link` tags. Style sheets aren't fetched anyway, and the toolkit shows nothing of
/// what follows a `link` tag that isn't closed.
QString WithoutLinkTags(QString source) {
  static const QRegularExpression kLinkTag(QStringLiteral("</?link\\b[^>]*>"),
                                           QRegularExpression::CaseInsensitiveOption);
  return source.remove(kLinkTag);
}

/// Shows a page from memory. Pictures and style sheets that it refers to are not loaded, neither
/// from the network nor from the disk.
class PageView final : public QTextBrowser {
 public:
  explicit PageView(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);  // The browser opens them, not this view.
    document()->setDocumentMargin(kMargin);
    setTextInteractionFlags(Qt::TextBrowserInteraction | ReadOnlyFlags());
  }

  QVariant loadResource(int /*type*/, const QUrl& /*name*/) override { return {}; }

 protected:
  // Return presses the default button, so Space follows a link that has the focus.
  void keyPressEvent(QKeyEvent* event) override {
    const QTextCursor cursor = textCursor();
    if (event->key() == Qt::Key_Space && cursor.hasSelection() && cursor.charFormat().isAnchor()) {
      emit anchorClicked(QUrl(cursor.charFormat().anchorHref()));
    } else {
      QTextBrowser::keyPressEvent(event);
    }
  }
};

class PagePeer final : public ControlPeer {
 public:
  PagePeer(HTMLViewer& model, PageView* view)
      : ControlPeer(model, view), model_(model), view_(view) {
    connect(view, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { Follow(link); });
  }

 protected:
  void Apply() override {
    // Setting the same page again would scroll back to its top.
    if (!shown_ || !(*shown_ == model_.Source())) {
      shown_ = model_.Source();
      view_->setHtml(WithoutLinkTags(ToQString(model_.Source())));
    }
    view_->setAccessibleName(ToQString(model_.Owner()->Title()));
  }

 private:
  void Follow(const QUrl& link) {
    if (link.scheme().isEmpty()) {
      // A relative link can only be a place in this page, since the page has no address.
      view_->scrollToAnchor(link.fragment());
      return;
    }
    Application::Current().CallHandler([&] { ShowURL(Utf8(link.toEncoded().toStdString())); });
  }

  HTMLViewer& model_;
  PageView* view_;
  std::optional<String> shown_;
};

}  // namespace

std::unique_ptr<ControlPeer> MakePagePeer(Control& control, QWidget& window) {
  auto* model = dynamic_cast<HTMLViewer*>(&control);
  if (model == nullptr) {
    return nullptr;
  }
  return std::make_unique<PagePeer>(*model, new PageView(&window));
}

}  // namespace zephin
