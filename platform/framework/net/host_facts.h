#ifndef PLATFORM_FRAMEWORK_NET_HOST_FACTS_H_
#define PLATFORM_FRAMEWORK_NET_HOST_FACTS_H_

#include <cstdint>
#include <string>

namespace zephin {

/// Memory in bytes that this process can still allocate without harm to itself or others: the least
/// of what the machine has free or can free, what the limits of the process leave, and what the
/// limits of its control groups leave. Never negative; INT64_MAX if nothing is known.
///
/// Linux promises more memory than it has and kills processes that use it, so that a successful
/// allocation proves nothing. Code whose memory grows with input from outside asks here first.
std::int64_t AvailableMemory();

/// Where the certificates are that the system trusts: a file with all of them, or a folder with one
/// file for each, named by a hash. At most one is set; neither if none of the known places exists,
/// and the default of the TLS library is the best choice then.
struct TrustStore {
  std::string file;
  std::string folder;
};

/// The trust store of the running system. A program that is carried from one system to another
/// cannot use the place that its TLS library was built with. The variables `SSL_CERT_FILE` and
/// `SSL_CERT_DIR` come first, then the places that the distributions use, below `root`.
TrustStore SystemTrustStore(const std::string& root = "");

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_NET_HOST_FACTS_H_
