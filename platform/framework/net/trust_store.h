#ifndef PLATFORM_FRAMEWORK_NET_TRUST_STORE_H_
#define PLATFORM_FRAMEWORK_NET_TRUST_STORE_H_

#include <string>

namespace zephin {

/// The file of certificates that the user's system trusts. A program that is carried from one
/// system to another finds it here, not where the system that it was built on keeps its own. Empty
/// if it is in none of the known places; the TLS library's own default is the best guess then.
std::string SystemTrustStore();

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_NET_TRUST_STORE_H_
