#include "tests/support/loopback_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace zephin::test {
namespace {

/// A socket on an unused port, and that port.
int BoundSocket(int& port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof place;
  auto* address = reinterpret_cast<sockaddr*>(&place);  // NOLINT: the form of these calls
  EXPECT_EQ(bind(socket, address, size), 0);
  EXPECT_EQ(getsockname(socket, address, &size), 0);
  port = ntohs(place.sin_port);
  return socket;
}

void SendAll(int connection, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) {
      return;  // The client has gone.
    }
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
}

std::string ReceiveHead(int connection) {
  std::string head;
  std::array<char, 4096> block{};
  // What doesn't begin like a GET is another protocol.
  while (!head.ends_with("\r\n\r\n") && (head.empty() || head.starts_with('G'))) {
    const ssize_t got = recv(connection, block.data(), block.size(), 0);
    if (got <= 0) {
      break;
    }
    head.append(block.data(), static_cast<std::size_t>(got));
  }
  return head;
}

}  // namespace

std::string HttpResponse(const std::string& status, const std::string& body) {
  return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
         body;
}

LoopbackServer::LoopbackServer(std::string answer, Then then)
    : answer_(std::move(answer)), then_(then), listener_(BoundSocket(port_)) {
  // Whatever proxy this machine has, it can't reach the loopback device.
  setenv("no_proxy", "127.0.0.1", 1);
  EXPECT_EQ(listen(listener_, 8), 0);
  thread_ = std::thread([this] { Serve(); });
}

LoopbackServer::~LoopbackServer() {
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
  if (kept_ >= 0) {
    close(kept_);
  }
}

std::string LoopbackServer::Address(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(port_) + path;
}

std::vector<std::string> LoopbackServer::Requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void LoopbackServer::SendMore(const std::string& bytes) const {
  SendAll(kept_, bytes);
}

bool LoopbackServer::ClientCloses() const {
  char byte = 0;
  return recv(kept_, &byte, 1, 0) <= 0;
}

void LoopbackServer::Serve() {
  for (;;) {
    const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) {
      return;
    }
    Answer(connection);
  }
}

void LoopbackServer::Answer(int connection) {
  {
    const std::string head = ReceiveHead(connection);
    const std::lock_guard lock(mutex_);
    requests_.push_back(head);
  }
  SendAll(connection, answer_);
  if (then_ == Then::KeepOpen) {
    kept_ = connection;
  } else {
    close(connection);
  }
  answered_ = true;
}

int UnusedPort() {
  int port = 0;
  close(BoundSocket(port));
  return port;
}

}  // namespace zephin::test
