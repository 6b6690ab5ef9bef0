#include "platform/framework/http_socket.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "platform/framework/application.h"
#include "platform/framework/files/system_paths.h"
#include "platform/framework/net/host_facts.h"
#include "platform/framework/net/response_body.h"

namespace zephin {
namespace {

constexpr std::int64_t kTicksPerSecond = 60;
/// Limit for the time that events of the window wait for the network.
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

/// The address as it can be sent: behind the host, each byte that a request line can't hold (space,
/// control, not ASCII) becomes "%" and two digits of its UTF-8 form. All others stay, a "%" of the
/// publisher's too, so that an address that is encoded already is sent as it is.
std::string AddressOnTheWire(const String& url) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const std::string bytes = PathBytes(url);
  const std::size_t scheme = bytes.find("://");
  const std::size_t host = scheme == std::string::npos ? 0 : scheme + 3;
  const std::size_t path = std::min(bytes.find_first_of("/?#", host), bytes.size());
  std::string address = bytes.substr(0, path);
  for (const char character : std::string_view(bytes).substr(path)) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte > ' ' && byte < 0x7F) {
      address += character;
    } else {
      address += {'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    }
  }
  return address;
}

/// One request. Its connection is closed with the object, without waiting for the server.
class Transfer {
 public:
  Transfer(const String& url, const char* protocol) {
    Set(CURLOPT_URL, AddressOnTheWire(url).c_str());
    // The library knows other protocols, file: among them, that no address may reach.
    Set(CURLOPT_PROTOCOLS_STR, protocol);
    Set(CURLOPT_WRITEFUNCTION, &TakeBytes);
    Set(CURLOPT_WRITEDATA, &body_);
    // The library resolves names in a thread. The end of the request must not wait for it when no
    // name server answers.
    Set(CURLOPT_QUICK_EXIT, 1L);
    SetTrust(SystemTrustStore());
    curl_multi_add_handle(multi_.get(), easy_.get());
  }
  ~Transfer() { curl_multi_remove_handle(multi_.get(), easy_.get()); }
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;

  /// Returns when the transfer has ended, or when nothing has arrived for this many ticks. A Quit
  /// in an event unwinds through it.
  void Run(std::int64_t mostSilence) {
    std::int64_t lastSign = Ticks();
    while (Proceed()) {
      // Before the poll: an event may take long, and the poll then sees what arrived meanwhile,
      // which counts as a sign of life.
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
  void SetTrust(const TrustStore& store) {
    // Both or neither: the default of the other one is a place of the system that the library was
    // built on, and a file that is missing there makes every connection fail.
    if (!store.file.empty() || !store.folder.empty()) {
      Set(CURLOPT_CAINFO, store.file.empty() ? nullptr : store.file.c_str());
      Set(CURLOPT_CAPATH, store.folder.empty() ? nullptr : store.folder.c_str());
    }
  }

  template <class Value>
  void Set(CURLoption option, Value value) {
    curl_easy_setopt(easy_.get(), option, value);
  }

  /// Continues the transfer without waiting. False if it has ended, with or without an error.
  bool Proceed() {
    int running = 0;
    return curl_multi_perform(multi_.get(), &running) == CURLM_OK && running > 0;
  }

  ResponseBody body_;
  std::unique_ptr<CURLM, MultiEnd> multi_{curl_multi_init()};
  std::unique_ptr<CURL, EasyEnd> easy_{curl_easy_init()};
};

void StartLibrary() {
  // Once per process and without clean-up at its end, since a thread may still resolve a name.
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
