// How long programs take from their start to a painted window, as the display sees it.
//
//   startup_clock RUNS PROGRAM...
//
// Starts the programs in turn, RUNS times each, and prints the median of each in milliseconds, of
// the time that passed and of the processor's time, with their ratios to the first one's. The
// latter holds on a busy machine too. Wants a display of its own, without a window manager.

#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kNarrowestWindow = 200;
/// A window that shows a text has more colours than that.
constexpr std::size_t kFewColours = 8;
constexpr auto kTooLong = std::chrono::seconds(20);
constexpr auto kRest = std::chrono::milliseconds(300);
constexpr auto kPause = std::chrono::microseconds(300);

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Reply = std::unique_ptr<T, FreeReply>;

/// The display, watched for windows that appear.
class Watch {
 public:
  Watch() : display_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(display_) != 0) {
      std::cerr << "There is no display.\n";
      std::exit(1);
    }
    root_ = xcb_setup_roots_iterator(xcb_get_setup(display_)).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(display_, root_, XCB_CW_EVENT_MASK, &events);
    xcb_flush(display_);
  }
  ~Watch() { xcb_disconnect(display_); }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  /// Returns when a window has been painted that was not there before. False: it took too long.
  bool AwaitPaintedWindow() {
    const Clock::time_point end = Clock::now() + kTooLong;
    xcb_window_t window = XCB_NONE;
    while (Clock::now() < end) {
      while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(display_)}) {
        if ((event->response_type & 0x7FU) == XCB_MAP_NOTIFY) {
          const auto& mapped = reinterpret_cast<const xcb_map_notify_event_t&>(*event);
          if (WidthOf(mapped.window) >= kNarrowestWindow) {
            window = mapped.window;
          }
        }
      }
      if (window != XCB_NONE && IsPainted(window)) {
        return true;
      }
      std::this_thread::sleep_for(kPause);
    }
    return false;
  }

  /// Forgets what has appeared so far.
  void Drain() {
    Sync();
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(display_)}) {
    }
  }

 private:
  void Sync() {
    const Reply<xcb_get_input_focus_reply_t> answered(
        xcb_get_input_focus_reply(display_, xcb_get_input_focus(display_), nullptr));
  }

  Reply<xcb_get_geometry_reply_t> GeometryOf(xcb_window_t window) {
    return Reply<xcb_get_geometry_reply_t>(
        xcb_get_geometry_reply(display_, xcb_get_geometry(display_, window), nullptr));
  }
  int WidthOf(xcb_window_t window) {
    const auto geometry = GeometryOf(window);
    return geometry ? geometry->width : 0;
  }

  bool IsPainted(xcb_window_t window) {
    const auto geometry = GeometryOf(window);
    if (!geometry) {
      return false;
    }
    const auto cookie = xcb_get_image(display_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0,
                                      geometry->width, geometry->height, ~0U);
    const Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(display_, cookie, nullptr));
    if (!image) {
      return false;
    }
    const auto* first = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
    const std::size_t count = static_cast<std::size_t>(xcb_get_image_data_length(image.get())) / 4;
    std::set<std::uint32_t> colours;
    for (std::size_t i = 0; i < count && colours.size() <= kFewColours; ++i) {
      colours.insert(first[i]);
    }
    return colours.size() > kFewColours;
  }

  xcb_connection_t* display_;
  xcb_window_t root_ = XCB_NONE;
};

struct Times {
  double passed;
  double processor;
};

double Milliseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
}

Times TimeToPaint(Watch& watch, const std::string& program) {
  watch.Drain();
  std::string name = program;
  char* arguments[] = {name.data(), nullptr};
  pid_t child = 0;
  const Clock::time_point start = Clock::now();
  if (posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ) != 0) {
    std::cerr << "Can't start " << program << "\n";
    std::exit(1);
  }
  const bool painted = watch.AwaitPaintedWindow();
  const std::chrono::duration<double, std::milli> took = Clock::now() - start;
  kill(child, SIGKILL);
  rusage usage{};
  wait4(child, nullptr, 0, &usage);
  if (!painted) {
    std::cerr << program << " shows no window.\n";
    std::exit(1);
  }
  std::this_thread::sleep_for(kRest);
  return {took.count(), Milliseconds(usage.ru_utime) + Milliseconds(usage.ru_stime)};
}

double Median(std::vector<Times> times, double Times::*which) {
  std::sort(times.begin(), times.end(),
            [&](const Times& a, const Times& b) { return a.*which < b.*which; });
  return times[times.size() / 2].*which;
}

void Print(const std::string& program, const std::vector<Times>& times,
           const std::vector<Times>& first) {
  const auto figure = [&](double Times::*which) {
    const double median = Median(times, which);
    std::cout << median << " ms (" << median / Median(first, which) << ")";
  };
  std::cout << std::fixed << std::setprecision(2) << program << ": ";
  figure(&Times::passed);
  std::cout << ", processor ";
  figure(&Times::processor);
  std::cout << "\n";
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> programs(argv + std::min(argc, 2), argv + argc);
  const int runs = argc > 1 ? std::atoi(argv[1]) : 0;
  if (programs.empty() || runs <= 0) {
    std::cerr << "Usage: startup_clock RUNS PROGRAM...\n";
    return 2;
  }
  Watch watch;
  std::vector<std::vector<Times>> times(programs.size());
  for (int run = -1; run < runs; ++run) {
    for (std::size_t i = 0; i < programs.size(); ++i) {
      const Times time = TimeToPaint(watch, programs[i]);
      if (run >= 0) {  // The first one only warms up the disk's cache.
        times[i].push_back(time);
      }
    }
  }
  for (std::size_t i = 0; i < programs.size(); ++i) {
    Print(programs[i], times[i], times[0]);
  }
  return 0;
}
