#include <unistd.h>

#include <cstdlib>

#include "platform/framework/net/trust_store.h"

namespace zephin {

std::string SystemTrustStore() {
  // What the programs of a session agree on where its administrator has moved the store.
  const char* moved = std::getenv("SSL_CERT_FILE");
  if (moved != nullptr && access(moved, R_OK) == 0) {
    return moved;
  }
  for (const char* place : {
           "/etc/ssl/certs/ca-certificates.crt",  // Debian, Ubuntu, Arch
           "/etc/pki/tls/certs/ca-bundle.crt",    // Fedora and its relatives
           "/etc/ssl/ca-bundle.pem",              // openSUSE
           "/etc/ssl/cert.pem",                   // Alpine
       }) {
    if (access(place, R_OK) == 0) {
      return place;
    }
  }
  return {};
}

}  // namespace zephin
