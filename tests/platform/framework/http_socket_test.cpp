#include "platform/framework/http_socket.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/framework/application.h"
#include "platform/framework/net/host_facts.h"
#include "platform/framework/net/response_body.h"
#include "tests/platform/framework/variable.h"
#include "tests/support/loopback_server.h"
#include "tests/support/scratch_folder.h"
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

  ScriptedDesktop desktop_;
  Application application_{desktop_, Machine()};
};

TEST_F(HTTPSocketTest, SendsOneRequestAndReturnsTheBodyForAnyStatus) {
  const std::string chunked =
      "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nfirst\r\n7\r\n, then ";
  const std::vector<std::pair<std::string, std::string>> rows{
      {HttpResponse("404 No", std::string("a\0\r\n\xFF", 5)), std::string("a\0\r\n\xFF", 5)},
      {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\ncut", "cut"},
      {chunked + "\r\n0\r\n\r\n", "first, then "},
      {chunked, "first, then "},
      {"HTTP/1.0 200 OK\r\n\r\nto the end", "to the end"},
      {"not a response at all", ""},
      {"", ""},
  };
  for (const auto& [answer, body] : rows) {
    const LoopbackServer server(answer);
    const std::string host = server.Address("").substr(std::string("http://").size());
    EXPECT_EQ(Get(server.Address("/a/b.zip?c=d")), body) << answer;
    // No header identifies the user's system.
    EXPECT_EQ(server.Requests(), std::vector{"GET /a/b.zip?c=d HTTP/1.1\r\nHost: " + host +
                                             "\r\nAccept: */*\r\n\r\n"});
  }
}

TEST_F(HTTPSocketTest, SendsWhatARequestLineCannotHoldPercentEncoded) {
  const std::vector<std::pair<std::string, std::string>> rows{
      {"/my file.zip?a b=c d", "/my%20file.zip?a%20b=c%20d"},
      {"/\xC3\xA9\xE6\x97\xA5.zip", "/%C3%A9%E6%97%A5.zip"},
      {std::string("/\t\n\r\x7F\x1F\0.zip", 11), "/%09%0A%0D%7F%1F%00.zip"},
      {"/a%20b%e9%zz%.zip", "/a%20b%e9%zz%.zip"},
      {"/!\"$&'()*+,-:;<=>@[]^_`{|}~\\", "/!\"$&'()*+,-:;<=>@[]^_`{|}~\\"},
      {"?a b", "/?a%20b"},
  };
  for (const auto& [given, sent] : rows) {
    const LoopbackServer server(HttpResponse("200 OK", "body"));
    EXPECT_EQ(Get(server.Address(given)), "body") << given;
    ASSERT_EQ(server.Requests().size(), 1U) << given;
    EXPECT_TRUE(server.Requests().front().starts_with("GET " + sent + " HTTP/1.1\r\n"))
        << server.Requests().front();
  }
}

TEST(TrustStoreOfTheSystem, IsFoundWhereEachDistributionKeepsIt) {
  struct Row {
    std::string made;
    bool isFolder = false;
  };
  const std::vector<Row> rows{
      {"/etc/ssl/certs/ca-certificates.crt"},
      {"/etc/pki/ca-trust/extracted/pem/tls-ca-bundle.pem"},
      {"/etc/pki/tls/certs/ca-bundle.crt"},
      {"/etc/ssl/ca-bundle.pem"},
      {"/etc/ssl/cert.pem"},
      {"/etc/ssl/certs/0a1b2c3d.0", true},
      {"/etc/pki/ca-trust/extracted/pem/directory-hash/0a1b2c3d.0", true},
  };
  const Variable noFile("SSL_CERT_FILE", "");
  const Variable noFolder("SSL_CERT_DIR", "");
  for (const Row& row : rows) {
    const ScratchFolder scratch;
    const std::string root = scratch.Path();
    // An empty list and a folder without hashed names are not stores.
    WriteFile(root + "/etc/ssl/cert.pem", "");
    WriteFile(root + "/etc/ssl/certs/README", "text");
    EXPECT_EQ(SystemTrustStore(root).file + SystemTrustStore(root).folder, "");
    WriteFile(root + row.made, "a certificate");
    const std::string path = root + row.made;
    EXPECT_EQ(SystemTrustStore(root).file, row.isFolder ? "" : path);
    EXPECT_EQ(SystemTrustStore(root).folder,
              row.isFolder ? path.substr(0, path.rfind('/')) : std::string());
    const Variable moved("SSL_CERT_FILE", path);
    EXPECT_EQ(SystemTrustStore("/none").file, path);
  }
}

TEST_F(HTTPSocketTest, RefusedConnectionGivesAnEmptyBody) {
  for (const char* url : {"https", "file:///etc/hostname", "http://"}) {
    EXPECT_EQ(Get(url), "") << url;
  }
  EXPECT_EQ(Get("http://127.0.0.1:" + std::to_string(UnusedPort()) + "/"), "");
}

TEST_F(HTTPSocketTest, OnlySilenceBeyondTheLimitEndsTheTransfer) {
  const LoopbackServer server("HTTP/1.1 200 OK\r\n", LoopbackServer::Then::KeepOpen);
  constexpr std::int64_t kAlmost = 1000 * kSilenceSeconds - 500;
  // Delay in milliseconds before each part of the response. Bytes of a header also count as
  // activity.
  std::deque<std::pair<std::int64_t, const char*>> steps{
      {kAlmost, "Content-"}, {kAlmost, "Length: 9\r\n\r\n"},
      {kAlmost, "pa"},       {kAlmost, "rt"},
      {kAlmost, ""},         {1000, ""}};
  const std::function<void()> step = [&] {
    if (server.HasAnswered()) {
      desktop_.milliseconds += steps.front().first;
      server.SendMore(steps.front().second);
      steps.pop_front();
    }
    if (!steps.empty()) {
      desktop_.After(1, step);
    }
  };
  desktop_.After(1, step);
  EXPECT_EQ(Get(server.Address()), "part");
  EXPECT_GE(desktop_.milliseconds, 5 * kAlmost + 1000);
  EXPECT_LT(desktop_.milliseconds, 5 * kAlmost + 2000);
}

TEST(ResponseBody, IsDroppedAsAWholeWhenMemoryRunsShort) {
  static std::int64_t budget = 0;
  constexpr std::int64_t kMegabyte = std::int64_t{1} << 20U;
  // The first 64 kB need 16 MB of free memory, and so does the block after the first megabyte.
  const std::vector<std::pair<std::int64_t, bool>> rows{
      {INT64_MAX, true}, {20 * kMegabyte, true}, {17 * kMegabyte, false}, {0, false}};
  for (const auto& [most, kept] : rows) {
    budget = most;
    ResponseBody body([] { return budget; });
    const std::string sent = Noise(1'500'000);
    for (std::size_t at = 0; at < sent.size(); at += 997) {
      EXPECT_TRUE(body.Add(std::string_view(sent).substr(at, 997)) || !kept);
    }
    // Dropped bytes do not come back when memory is free again.
    budget = INT64_MAX;
    EXPECT_EQ(body.Add(std::string("end")), kept) << most;
    EXPECT_EQ(body.Join() == sent + "end", kept) << most;
  }
}

}  // namespace
}  // namespace zephin::test
