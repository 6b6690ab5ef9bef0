#ifndef PLATFORM_QT_PEERS_ACCESSIBILITY_H_
#define PLATFORM_QT_PEERS_ACCESSIBILITY_H_

namespace zephin {

/// Gives screen readers the roles of this program's own widgets: texts, links, radio buttons, check
/// boxes, pictures, messages and the main window. The toolkit knows the roles of its own widgets.
/// Called once, before the first window is made.
void SetUpAccessibility();

}  // namespace zephin

#endif  // PLATFORM_QT_PEERS_ACCESSIBILITY_H_
