#ifndef DIALOGS_CONFLICT_H_
#define DIALOGS_CONFLICT_H_

#include <cstdint>

#include "platform/framework/string.h"

namespace zephin {
class Window;
}

/// The message windows' entry points: a question, and an error message that waits in one slot until
/// it is shown.
namespace zephin::GlobalsVk {

/// Code of the pending message: 0 none, 999 the text in gErrorString, else one of MyGetString's.
extern std::int64_t gConflictType;
extern String gErrorString;

inline constexpr std::int64_t kConflictTextGiven = 999;
inline constexpr std::int64_t kUnknownMessage = -1;
inline constexpr std::int64_t kVolumeMessage = 34;
inline constexpr std::int64_t kFileExistsMessage = 36;
inline constexpr std::int64_t kPictureMemoryMessage = 39;

/// The fixed message of that code; empty for an unknown one.
String MyGetString(std::int64_t code);

/// Asks a question with Yes and No in a window fitted to the text. True for yes.
[[nodiscard]] bool YesNoDlg(const String& text);

/// Shows the pending message, if there is one, in a window of fixed size, and clears the slot.
void PoseConflictDialog();

}  // namespace zephin::GlobalsVk

namespace zephin::ViewConst {

/// Asks the message of that code (999: gErrorString) as a question. An empty text is asked as the
/// unknown error. True for yes.
[[nodiscard]] bool YesNoDialog(std::int64_t code);

/// Runs the window modally.
void ModalScriptShow(Window& window);
/// The same, but at the top left of the screen if gPresentTopLeft says so.
void DoShowModal(Window& window);

}  // namespace zephin::ViewConst

#endif  // DIALOGS_CONFLICT_H_
