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

/// The file of certificates that the system trusts. A program that is carried from one system to
/// another cannot use the place that its TLS library was built with. Empty if none of the known
/// places exists; the library's default is the best choice then.
std::string SystemTrustStore();

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_NET_HOST_FACTS_H_
