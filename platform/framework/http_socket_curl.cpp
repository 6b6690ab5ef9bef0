#include <curl/curl.h>

#include <array>
#include <memory>
#include <new>
#include <string>

#include "platform/framework/application.h"
#include "platform/framework/http_socket.h"

namespace zephin {
namespace {

constexpr int kTicksPerSecond = 60;
constexpr int kPollMilliseconds = 10;

struct EasyEnd {
  void operator()(CURL* easy) const { curl_easy_cleanup(easy); }
};
struct MultiEnd {
  void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
};
using Easy = std::unique_ptr<CURL, EasyEnd>;
using Multi = std::unique_ptr<CURLM, MultiEnd>;

/// What has arrived so far.
struct Body {
  std::string bytes;
  bool outOfMemory = false;
};

std::size_t TakeBytes(char* data, std::size_t size, std::size_t count, void* user) {
  auto& body = *static_cast<Body*>(user);
  try {
    body.bytes.append(data, size * count);
    return size * count;
  } catch (const std::bad_alloc&) {
    body.outOfMemory = true;
    return 0;
  }
}

/// A value that changes whenever bytes arrive or the connection gets a step further.
using Progress = std::array<curl_off_t, 6>;

Progress ProgressOf(CURL* easy) {
  Progress progress{};
  curl_easy_getinfo(easy, CURLINFO_SIZE_DOWNLOAD_T, &progress[0]);
  curl_easy_getinfo(easy, CURLINFO_NAMELOOKUP_TIME_T, &progress[1]);
  curl_easy_getinfo(easy, CURLINFO_CONNECT_TIME_T, &progress[2]);
  curl_easy_getinfo(easy, CURLINFO_APPCONNECT_TIME_T, &progress[3]);
  curl_easy_getinfo(easy, CURLINFO_PRETRANSFER_TIME_T, &progress[4]);
  curl_easy_getinfo(easy, CURLINFO_STARTTRANSFER_TIME_T, &progress[5]);
  return progress;
}

/// Runs the transfer until it ends by itself or has been silent for too long.
void Run(CURLM* multi, CURL* easy, int silenceSeconds) {
  Progress seen = ProgressOf(easy);
  std::int64_t lastChange = Ticks();
  int running = 1;
  while (curl_multi_perform(multi, &running) == CURLM_OK && running > 0) {
    const Progress now = ProgressOf(easy);
    if (now != seen) {
      seen = now;
      lastChange = Ticks();
    } else if (Ticks() - lastChange > std::int64_t{silenceSeconds} * kTicksPerSecond) {
      return;
    }
    curl_multi_poll(multi, nullptr, 0, kPollMilliseconds, nullptr);
    RuntimeBackgroundTask();
  }
}

}  // namespace

String HTTPSocket::Get(const String& url, int timeoutSeconds) {
  Body body;
  const Multi multi(curl_multi_init());
  const Easy easy(curl_easy_init());
  curl_easy_setopt(easy.get(), CURLOPT_URL, url.CString());
  curl_easy_setopt(easy.get(), CURLOPT_PROTOCOLS_STR, Kind() == Security::TLS ? "https" : "http");
  curl_easy_setopt(easy.get(), CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy.get(), CURLOPT_WRITEFUNCTION, TakeBytes);
  curl_easy_setopt(easy.get(), CURLOPT_WRITEDATA, &body);
  curl_multi_add_handle(multi.get(), easy.get());
  Run(multi.get(), easy.get(), timeoutSeconds);
  curl_multi_remove_handle(multi.get(), easy.get());
  if (body.outOfMemory) {
    return {"", Encoding::None};
  }
  return {std::move(body.bytes), Encoding::None};
}

}  // namespace zephin
