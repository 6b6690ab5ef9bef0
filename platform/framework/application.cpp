#include "platform/framework/application.h"

#include <exception>
#include <new>
#include <stdexcept>
#include <typeinfo>
#include <utility>

#include "platform/framework/clipboard.h"
#include "platform/framework/select_folder_dialog.h"

namespace zephin {
namespace {

Application* current = nullptr;

/// The name under which the failure that is being handled is reported.
String KindOfFailure() {
  try {
    throw;
  } catch (const FrameworkException& failure) {
    return failure.Kind();
  } catch (const std::bad_alloc&) {
    return OutOfMemoryException().Kind();
  } catch (const std::length_error&) {
    return OutOfMemoryException().Kind();
  } catch (const std::exception& failure) {
    return Utf8(typeid(failure).name());
  }
}

}  // namespace

Application::Application(Desktop& desktop, Machine machine)
    : desktop_(desktop), machine_(std::move(machine)) {
  if (current != nullptr) {
    throw std::logic_error("a second application object");
  }
  current = this;
  MakeYieldDue();
}

Application::~Application() {
  current = nullptr;
}

Application& Application::Current() {
  if (current == nullptr) {
    throw std::logic_error("no application object");
  }
  return *current;
}

bool Application::Exists() {
  return current != nullptr;
}

Ref<FolderItem> Application::ExecutableFile() const {
  return machine_.executable.empty() ? nullptr : MakeRef<FolderItem>(machine_.executable);
}

void Application::DoEvents(int milliseconds) {
  desktop_.LetEventsRun(milliseconds);
}

void Application::SetMouseCursor(MouseCursor cursor) {
  desktop_.SetMouseCursor(cursor);
}

void Application::CallHandler(const std::function<void()>& handler) {
  try {
    handler();
  } catch (const QuitUnwinding& quit) {
    desktop_.EndRun(quit.Status());
  } catch (const std::exception&) {
    desktop_.ReportFailure(KindOfFailure());
    desktop_.EndRun(0);
  }
}

void Quit(int status) {
  throw QuitUnwinding(status);
}

void MsgBox(const String& text) {
  Application::Current().Session().ShowMessage(text);
}

void ShowURL(const String& address) {
  Application::Current().Session().OpenAddress(address);
}

std::int64_t Ticks() {
  return Application::Current().Session().Ticks();
}

String Clipboard::Text() const {
  return Application::Current().Session().ClipboardText();
}

void Clipboard::SetText(const String& text) {
  Application::Current().Session().SetClipboardText(text);
}

Ref<FolderItem> SelectFolderDialog::ShowModal() const {
  return Application::Current().Session().SelectFolder(*this);
}

}  // namespace zephin
