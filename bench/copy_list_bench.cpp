#include <benchmark/benchmark.h>

#include "app/zephin_stub_window.h"
#include "platform/framework/application.h"
#include "tests/support/quiet_desktop.h"

// What it costs to read a copy list, without the work on files: each method steps over the entries
// that are the other's, after taking them apart.

namespace zephin {
namespace {

constexpr int kEntries = 10'000;
constexpr int kSlice = 10;

class UnstartedWindow : public ZephinStubWindow {
 private:
  void Event_Open() override {}
};

template <class Method>
void ReadList(benchmark::State& state, const char* entry, Method method) {
  QuietDesktop desktop;
  desktop.slice = kSlice;
  const Application application(desktop, Machine());
  const Ref<UnstartedWindow> window = MakeWindow<UnstartedWindow>();
  for (int i = 0; i < kEntries; ++i) {
    window->fPostCopy += i == 0 ? "" : "|";
    window->fPostCopy += entry;
  }
  for (auto pass : state) {
    (*window.*method)();
  }
}

void EntriesForAfterTheInstallBeforeIt(benchmark::State& state) {
  ReadList(state, "Docs/Readme first.txt=[UserAccount/Library]UserAccount/Library/Tool/Readme.txt",
           &ZephinStubWindow::PreInstallCopy);
}
BENCHMARK(EntriesForAfterTheInstallBeforeIt)->Unit(benchmark::kMillisecond);

void EntriesForBeforeTheInstallAfterIt(benchmark::State& state) {
  ReadList(state, "preinstallcopy=/Library/Widgets/Tool/settings.cfg;/Users/Shared/settings.cfg",
           &ZephinStubWindow::PostInstallCopy);
}
BENCHMARK(EntriesForBeforeTheInstallAfterIt)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zephin
