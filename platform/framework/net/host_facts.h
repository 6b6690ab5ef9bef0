#ifndef PLATFORM_FRAMEWORK_NET_HOST_FACTS_H_
#define PLATFORM_FRAMEWORK_NET_HOST_FACTS_H_

#include <cstdint>
#include <string>

namespace zephin {

/// Bytes of memory that this process may still take now without anyone running short: the least of
/// what the machine has free or can free, what the limits of the process leave, and what the group
/// of processes that it runs in may still take. Never negative; INT64_MAX where nothing is known.
///
/// A system that promises memory which it doesn't have ends processes when they use it, so that an
/// allocation tells nothing. What grows with input from outside asks here first.
std::int64_t AvailableMemory();

/// The file of certificates that the user's system trusts. A program that is carried from one
/// system to another finds it here, not where the system that it was built on keeps its own. Empty
/// if it is in none of the known places; the TLS library's own default is the best guess then.
std::string SystemTrustStore();

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_NET_HOST_FACTS_H_
