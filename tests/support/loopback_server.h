#ifndef TESTS_SUPPORT_LOOPBACK_SERVER_H_
#define TESTS_SUPPORT_LOOPBACK_SERVER_H_

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace zephin::test {

/// A response with that body and its length.
std::string HttpResponse(const std::string& status, const std::string& body);

/// A server on the loopback device with its own thread. It sends the same bytes in answer to each
/// request.
class LoopbackServer {
 public:
  enum class Then { Close, KeepOpen };

  explicit LoopbackServer(std::string answer, Then then = Then::Close);
  ~LoopbackServer();
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  std::string Address(const std::string& path = "/") const {
    return "http://127.0.0.1:" + std::to_string(port_) + path;
  }
  /// The requests so far.
  std::vector<std::string> Requests() const;
  /// Whether the whole answer to the last request has been sent.
  bool HasAnswered() const { return answered_; }
  /// Sends more bytes on the connection that was kept open.
  void SendMore(const std::string& bytes) const;

 private:
  void Serve();

  std::string answer_;
  Then then_;
  int port_ = 0;
  int listener_ = -1;
  int kept_ = -1;
  std::atomic<bool> answered_ = false;
  mutable std::mutex mutex_;
  std::vector<std::string> requests_;
  std::thread thread_;
};

/// A port of the loopback device without a listener.
int UnusedPort();

}  // namespace zephin::test

#endif  // TESTS_SUPPORT_LOOPBACK_SERVER_H_
