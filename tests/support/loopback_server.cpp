#include "tests/support/loopback_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

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
  auto* address = reinterpret_cast<sockaddr*>(&place);
  EXPECT_EQ(bind(socket, address, size), 0);
  EXPECT_EQ(getsockname(socket, address, &size), 0);
  port = ntohs(place.sin_port);
  return socket;
}

/// The request of a client. It is short and arrives in one piece.
std::string Receive(int connection) {
  std::string request(65536, '\0');
  const ssize_t size = recv(connection, request.data(), request.size(), 0);
  return request.substr(0, size < 0 ? 0 : static_cast<std::size_t>(size));
}

}  // namespace

std::string HttpResponse(const std::string& status, const std::string& body) {
  return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
         body;
}

LoopbackServer::LoopbackServer(std::string answer, Then then)
    : answer_(std::move(answer)), then_(then), listener_(BoundSocket(port_)) {
  // A proxy of this machine can't reach its loopback device.
  setenv("no_proxy", "127.0.0.1", 1);
  EXPECT_EQ(listen(listener_, 8), 0);
  thread_ = std::thread([this] { Serve(); });
}

LoopbackServer::~LoopbackServer() {
  shutdown(listener_, SHUT_RDWR);
  thread_.join();
  close(listener_);
  close(kept_);
}

std::vector<std::string> LoopbackServer::Requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void LoopbackServer::SendMore(const std::string& bytes) const {
  send(kept_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

void LoopbackServer::Serve() {
  for (int client = 0; (client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0;) {
    const std::string request = Receive(client);
    {
      const std::lock_guard lock(mutex_);
      requests_.push_back(request);
    }
    // Waits until the client has read everything or has closed the connection.
    send(client, answer_.data(), answer_.size(), MSG_NOSIGNAL);
    if (then_ == Then::KeepOpen) {
      kept_ = client;
    } else {
      close(client);
    }
    answered_ = true;
  }
}

int UnusedPort() {
  int port = 0;
  close(BoundSocket(port));
  return port;
}

}  // namespace zephin::test
