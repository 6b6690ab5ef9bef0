#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/framework/application.h"
#include "platform/framework/http_socket.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scripted_desktop.h"

namespace zephin::test {
namespace {

/// A key and a certificate for the server of that address, in "NAME.key" and "NAME.pem".
void MakeCertificate(const ScratchFolder& folder, const std::string& name,
                     const std::string& address) {
  const std::string command = "cd " + folder.Path().string() +
                              " && openssl req -x509 -newkey ec"
                              " -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -keyout " +
                              name + ".key -out " + name + ".pem -subj /CN=" + name +
                              " -addext subjectAltName=IP:" + address + " 2>/dev/null";
  ASSERT_EQ(std::system(command.c_str()), 0);
}

/// Serves the files of a folder over TLS to one connection, and ends.
class TlsServer {
 public:
  TlsServer(const ScratchFolder& folder, const std::string& certificate) {
    const std::string command =
        "cd " + folder.Path().string() +
        " && exec timeout 20 openssl s_server -accept 127.0.0.1:0 -naccept 1"
        " -WWW -cert " +
        certificate + ".pem -key " + certificate + ".key 2>&1";
    output_ = popen(command.c_str(), "r");
    std::array<char, 256> line{};
    while (port_.empty() && fgets(line.data(), line.size(), output_) != nullptr) {
      const std::string text = line.data();
      if (text.starts_with("ACCEPT ")) {
        port_ = text.substr(text.rfind(':') + 1, text.size() - text.rfind(':') - 2);
      }
    }
    EXPECT_NE(port_, "");
  }
  ~TlsServer() { pclose(output_); }
  TlsServer(const TlsServer&) = delete;
  TlsServer& operator=(const TlsServer&) = delete;

  std::string Address(const std::string& file) const {
    return "https://127.0.0.1:" + port_ + "/" + file;
  }

 private:
  FILE* output_ = nullptr;
  std::string port_;
};

TEST(HTTPSecureSocket, TakesABodyOnlyFromAServerThatTheSystemTrusts) {
  const ScratchFolder folder;
  MakeCertificate(folder, "own", "127.0.0.1");
  MakeCertificate(folder, "other", "127.0.0.2");
  WriteFile(folder / "file", "secret");
  setenv("no_proxy", "127.0.0.1", 1);
  ScriptedDesktop desktop;
  const Application application(desktop, Machine());
  struct Row {
    std::string certificate;
    std::string trusted;
    std::string body;
  };
  for (const Row& row : {Row{"own", "own", "secret"}, Row{"own", "other", ""},
                         Row{"other", "other", ""}, Row{"own", "", ""}}) {
    if (row.trusted.empty()) {
      unsetenv("SSL_CERT_FILE");
    } else {
      setenv("SSL_CERT_FILE", (folder / (row.trusted + ".pem")).c_str(), 1);
    }
    const TlsServer server(folder, row.certificate);
    HTTPSecureSocket socket;
    EXPECT_EQ(socket.Get(Utf8(server.Address("file")), 20).Bytes(), row.body)
        << row.certificate << " trusting " << row.trusted;
  }
  unsetenv("SSL_CERT_FILE");
}

}  // namespace
}  // namespace zephin::test
