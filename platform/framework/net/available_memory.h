#ifndef PLATFORM_FRAMEWORK_NET_AVAILABLE_MEMORY_H_
#define PLATFORM_FRAMEWORK_NET_AVAILABLE_MEMORY_H_

#include <cstdint>

namespace zephin {

/// Bytes of memory that this process may still take now without anyone running short: the least of
/// what the machine has free or can free, what the limits of the process leave, and what the group
/// of processes that it runs in may still take. Never negative; INT64_MAX where nothing is known.
///
/// A system that promises memory which it doesn't have ends processes when they use it, so that an
/// allocation tells nothing. What grows with input from outside asks here first.
std::int64_t AvailableMemory();

}  // namespace zephin

#endif  // PLATFORM_FRAMEWORK_NET_AVAILABLE_MEMORY_H_
