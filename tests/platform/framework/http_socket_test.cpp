#include "platform/framework/http_socket.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/framework/application.h"
#include "platform/framework/response_body.h"
#include "tests/support/loopback_server.h"
#include "tests/support/scripted_desktop.h"

namespace zephin::test {
namespace {

constexpr int kSilenceSeconds = 20;

class HTTPSocketTest : public testing::Test {
 protected:
  std::string Get(const std::string& url) {
    HTTPSocket socket;
    return socket.Get(Utf8(url), kSilenceSeconds).Bytes();
  }

  /// Calls each act in turn, one at each yield, once the server has given its answer.
  void OnceAnswered(LoopbackServer& server, std::vector<std::function<void()>> acts) {
    desktop_.After(1, [this, &server, acts = std::move(acts)]() mutable {
      if (server.HasAnswered()) {
        acts.front()();
        acts.erase(acts.begin());
      }
      if (!acts.empty()) {
        OnceAnswered(server, std::move(acts));
      }
    });
  }
  void Jump(double seconds) { desktop_.milliseconds += static_cast<std::int64_t>(seconds * 1000); }

  ScriptedDesktop desktop_;
  Application application_{desktop_, Machine()};
};

TEST_F(HTTPSocketTest, GivesTheBodyThatArrivesWhateverTheStatusAndTheEnd) {
  const std::string chunked =
      "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nfirst\r\n7\r\n, then ";
  struct Row {
    std::string answer;
    std::string body;
  };
  const std::vector<Row> rows{
      {HttpResponse("200 OK", std::string("a\0\r\n\xFF", 5)), std::string("a\0\r\n\xFF", 5)},
      {HttpResponse("404 Not Found", "no such page"), "no such page"},
      {HttpResponse("302 Found\r\nLocation: /elsewhere", "it is elsewhere"), "it is elsewhere"},
      {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\ncut", "cut"},
      {chunked + "\r\n0\r\n\r\n", "first, then "},
      {chunked, "first, then "},
      {"HTTP/1.0 200 OK\r\n\r\nto the end", "to the end"},
      {"not a response at all", ""},
      {"", ""},
  };
  for (const Row& row : rows) {
    const LoopbackServer server(row.answer);
    EXPECT_EQ(Get(server.Address()), row.body) << row.answer;
    EXPECT_EQ(server.Requests().size(), 1U) << row.answer;
  }
}

TEST_F(HTTPSocketTest, SendsNoHeaderOfItsOwn) {
  const LoopbackServer server(HttpResponse("200 OK", ""));
  Get(server.Address("/a/b.zip?c=d"));
  const std::string host = server.Address("").substr(std::string("http://").size());
  EXPECT_EQ(server.Requests().at(0),
            "GET /a/b.zip?c=d HTTP/1.1\r\nHost: " + host + "\r\nAccept: */*\r\n\r\n");
}

TEST_F(HTTPSocketTest, NobodyThereIsAnEmptyBody) {
  const std::string port = std::to_string(UnusedPort());
  const std::vector<std::string> urls{
      "http://127.0.0.1:" + port + "/", "",        "https",
      "file:///etc/hostname",           "http://", "http://[::::]/"};
  for (const std::string& url : urls) {
    EXPECT_EQ(Get(url), "") << url;
  }
}

TEST_F(HTTPSocketTest, SilenceBeyondTheLimitGivesWhatHasArrived) {
  LoopbackServer server("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\npart",
                        LoopbackServer::Then::KeepOpen);
  bool wasStillWaiting = false;
  OnceAnswered(server, {[] {}, [] {}, [&] { Jump(kSilenceSeconds - 0.5); },
                        [&] {
                          wasStillWaiting = true;
                          Jump(1);
                        }});
  EXPECT_EQ(Get(server.Address()), "part");
  EXPECT_TRUE(wasStillWaiting);
  EXPECT_LT(desktop_.milliseconds, 1000 * (kSilenceSeconds + 2));
}

TEST_F(HTTPSocketTest, TrickleThatLastsLongerThanTheLimitIsTakenWhole) {
  LoopbackServer server("HTTP/1.1 200 OK\r\n", LoopbackServer::Then::KeepOpen);
  std::vector<std::function<void()>> acts{[] {}, [] {}};
  // The bytes of a header are a sign of life too.
  for (const char* bytes : {"Content-", "Length: 3\r\n\r\n", "a", "b", "c"}) {
    acts.emplace_back([this, &server, bytes] {
      Jump(kSilenceSeconds - 1);
      server.SendMore(bytes);
    });
  }
  OnceAnswered(server, std::move(acts));
  EXPECT_EQ(Get(server.Address()), "abc");
}

TEST_F(HTTPSocketTest, QuitDuringATransferEndsTheRunAndTheConnection) {
  LoopbackServer server("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\npart",
                        LoopbackServer::Then::KeepOpen);
  OnceAnswered(server, {[] { Quit(0); }});
  EXPECT_THROW(application_.CallHandler([&] { Get(server.Address()); }), RunEnded);
  EXPECT_TRUE(server.ClientCloses());
}

TEST(ResponseBody, IsKeptWholeOrDroppedWhenMemoryRunsShort) {
  static std::int64_t budget = 0;
  struct Row {
    std::int64_t budget;
    bool kept;
  };
  constexpr std::int64_t kMegabyte = std::int64_t{1} << 20U;
  // The first 64 kB need 16 MB beside them; the block behind the first megabyte is as large.
  for (const Row& row : {Row{INT64_MAX, true}, Row{20 * kMegabyte, true},
                         Row{17 * kMegabyte, false}, Row{kMegabyte, false}, Row{0, false}}) {
    budget = row.budget;
    ResponseBody body([] { return budget; });
    std::string sent;
    for (int i = 0; i < 1000; ++i) {
      const std::string piece(static_cast<std::size_t>(i) * 3 + 1, static_cast<char>(i));
      sent += piece;
      EXPECT_TRUE(body.Add(piece) || !row.kept);
    }
    EXPECT_EQ(body.Add({}), row.kept) << row.budget;
    // What has gone by can't be had back when memory is there again.
    budget = INT64_MAX;
    EXPECT_EQ(body.Add(std::string("end")), row.kept) << row.budget;
    EXPECT_EQ(body.Join() == sent + "end", row.kept) << row.budget;
  }
}

}  // namespace
}  // namespace zephin::test
