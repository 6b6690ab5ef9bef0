#include <curl/curl.h>

#include <memory>
#include <string>

#include "platform/framework/application.h"
#include "platform/framework/http_socket.h"
#include "platform/framework/net/host_facts.h"
#include "platform/framework/net/response_body.h"

namespace zephin {
namespace {

constexpr std::int64_t kTicksPerSecond = 60;
/// The longest that the window's events wait for the network.
constexpr int kPollMilliseconds = 10;

struct EasyEnd {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct MultiEnd {
  void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};

extern "C" std::size_t TakeBytes(char* data, std::size_t size, std::size_t count, void* user) {
  auto& body = *static_cast<ResponseBody*>(user);
  return body.Add({data, size * count}) ? size * count : 0;
}

/// One request, from its start to the end of its connection, which goes with it at once.
class Transfer {
 public:
  Transfer(const String& url, const char* protocol) {
    Set(CURLOPT_URL, url.CString());
    Set(CURLOPT_PROTOCOLS_STR, protocol);
    Set(CURLOPT_WRITEFUNCTION, &TakeBytes);
    Set(CURLOPT_WRITEDATA, &body_);
    // A name that nobody answers for is looked up by a thread, which is not to be waited for.
    Set(CURLOPT_QUICK_EXIT, 1L);
    const std::string store = SystemTrustStore();
    if (!store.empty()) {
      Set(CURLOPT_CAINFO, store.c_str());
    }
    curl_multi_add_handle(multi_.get(), easy_.get());
  }
  ~Transfer() { curl_multi_remove_handle(multi_.get(), easy_.get()); }
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;

  /// Returns when the transfer has ended by itself or has shown no sign for so long. A Quit in one
  /// of the events that run meanwhile leaves it like any other exception.
  void Run(std::int64_t mostSilence) {
    std::int64_t lastSign = Ticks();
    while (Proceed()) {
      // The events first: they may take long, and what arrives meanwhile is seen by the poll.
      RuntimeBackgroundTask();
      int signs = 0;
      curl_multi_poll(multi_.get(), nullptr, 0, kPollMilliseconds, &signs);
      if (signs > 0) {
        lastSign = Ticks();
      } else if (Ticks() - lastSign > mostSilence) {
        return;
      }
    }
  }

  std::string TakeBody() { return body_.Join(); }

 private:
  template <class Value>
  void Set(CURLoption option, Value value) {
    curl_easy_setopt(easy_.get(), option, value);
  }

  /// Does what can be done without waiting. False: the transfer has ended, well or not.
  bool Proceed() {
    int running = 0;
    return curl_multi_perform(multi_.get(), &running) == CURLM_OK && running > 0;
  }

  ResponseBody body_;
  std::unique_ptr<CURLM, MultiEnd> multi_{curl_multi_init()};
  std::unique_ptr<CURL, EasyEnd> easy_{curl_easy_init()};
};

void StartLibrary() {
  // For the whole process, and never ended: a look-up may still be under way.
  static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
  static_cast<void>(started);
}

}  // namespace

String HTTPSocket::Get(const String& url, int timeoutSeconds) {
  StartLibrary();
  Transfer transfer(url, Kind() == Security::TLS ? "https" : "http");
  transfer.Run(timeoutSeconds * kTicksPerSecond);
  return {transfer.TakeBody(), Encoding::None};
}

}  // namespace zephin
