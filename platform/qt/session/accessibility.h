#ifndef PLATFORM_QT_ACCESSIBILITY_H_
#define PLATFORM_QT_ACCESSIBILITY_H_

namespace zephin {

/// Gives screen readers the roles of this program's own widgets: texts, links, pictures and
/// messages. The toolkit's own widgets have theirs. Called once, before the first window is made.
void SetUpAccessibility();

}  // namespace zephin

#endif  // PLATFORM_QT_ACCESSIBILITY_H_
