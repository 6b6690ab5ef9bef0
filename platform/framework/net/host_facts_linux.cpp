#include "platform/framework/net/host_facts.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace zephin {
namespace {

constexpr std::int64_t kUnknown = INT64_MAX;

/// The number after `key` in a file of lines "key number"; `kUnknown` if the key is missing.
std::int64_t NumberBehind(const std::string& path, const std::string& key) {
  std::ifstream file(path);
  std::string word;
  while (file >> word) {
    std::int64_t number = 0;
    if (word == key) {
      return file >> number ? number : kUnknown;
    }
    file.ignore(INT64_MAX, '\n');
  }
  return kUnknown;
}

/// The number in a file that holds nothing else; `kUnknown` for other texts, for example "max".
std::int64_t NumberIn(const std::string& path) {
  std::ifstream file(path);
  std::int64_t number = 0;
  return file >> number ? number : kUnknown;
}

std::int64_t FreeOnMachine() {
  constexpr std::int64_t kUnit = 1024;
  const std::int64_t available = NumberBehind("/proc/meminfo", "MemAvailable:");
  return available == kUnknown ? kUnknown : available * kUnit;
}

std::int64_t LeftOfLimit(decltype(RLIMIT_AS) resource, std::int64_t used) {
  rlimit limit{};
  if (getrlimit(resource, &limit) != 0 || limit.rlim_cur > static_cast<rlim_t>(kUnknown)) {
    return kUnknown;
  }
  return static_cast<std::int64_t>(limit.rlim_cur) - used;
}

/// What the limits for address space and data leave to this process.
std::int64_t LeftOfOwnLimits() {
  // Sizes in pages: total, resident, shared, code, unused, data with stack.
  std::ifstream file("/proc/self/statm");
  std::int64_t all = 0;
  std::int64_t other = 0;
  std::int64_t data = 0;
  if (!(file >> all >> other >> other >> other >> other >> data)) {
    return kUnknown;
  }
  const std::int64_t page = sysconf(_SC_PAGESIZE);
  return std::min(LeftOfLimit(RLIMIT_AS, all * page), LeftOfLimit(RLIMIT_DATA, data * page));
}

/// What one control group may still allocate. The kernel can drop its cached files, so they do not
/// count as used.
std::int64_t LeftOfGroup(const std::string& folder) {
  const std::int64_t limit = NumberIn(folder + "/memory.max");
  const std::int64_t used = NumberIn(folder + "/memory.current");
  if (limit == kUnknown || used == kUnknown) {
    return kUnknown;
  }
  const std::int64_t cached = NumberBehind(folder + "/memory.stat", "inactive_file");
  return limit - used + (cached == kUnknown ? 0 : cached);
}

/// The least that the control group of this process and the groups above it leave.
std::int64_t LeftOfGroups() {
  constexpr const char* kGroups = "/sys/fs/cgroup";
  std::ifstream file("/proc/self/cgroup");
  std::int64_t left = LeftOfGroup(kGroups);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("0::/")) {
      for (std::string group = line.substr(3); group.size() > 1;
           group.resize(group.find_last_of('/'))) {
        left = std::min(left, LeftOfGroup(kGroups + group));
      }
    }
  }
  return left;
}

std::string ValueOf(const char* variable) {
  const char* value = std::getenv(variable);
  return value == nullptr ? "" : value;
}

/// A system without the package of certificates may have the file, but empty.
bool HoldsCertificates(const std::string& path) {
  std::error_code failure;
  return access(path.c_str(), R_OK) == 0 && std::filesystem::is_regular_file(path, failure) &&
         std::filesystem::file_size(path, failure) > 0 && !failure;
}

/// Whether a folder has a file named as the TLS library looks for it: eight hexadecimal digits, a
/// dot and a number.
bool IsHashedFolder(const std::string& path) {
  constexpr std::size_t kDigits = 8;
  std::error_code failure;
  for (std::filesystem::directory_iterator item(path, failure), end; !failure && item != end;
       item.increment(failure)) {
    const std::string name = item->path().filename();
    if (name.find_first_not_of("0123456789abcdef") == kDigits && name[kDigits] == '.') {
      return true;
    }
  }
  return false;
}

}  // namespace

std::int64_t AvailableMemory() {
  const std::int64_t least = std::min({FreeOnMachine(), LeftOfOwnLimits(), LeftOfGroups()});
  return std::max<std::int64_t>(least, 0);
}

TrustStore SystemTrustStore(const std::string& root) {
  // The variables by which an administrator names a store in another place.
  if (const std::string file = ValueOf("SSL_CERT_FILE"); HoldsCertificates(file)) {
    return {.file = file, .folder = {}};
  }
  if (const std::string folder = ValueOf("SSL_CERT_DIR"); IsHashedFolder(folder)) {
    return {.file = {}, .folder = folder};
  }
  for (const char* place : {
           "/etc/ssl/certs/ca-certificates.crt",                 // Debian, Ubuntu, Arch, Alpine
           "/etc/pki/ca-trust/extracted/pem/tls-ca-bundle.pem",  // Fedora and its relatives
           "/etc/pki/tls/certs/ca-bundle.crt",                   // the same, older
           "/etc/ssl/ca-bundle.pem",                             // openSUSE
           "/var/lib/ca-certificates/ca-bundle.pem",             // openSUSE without the link
           "/etc/ssl/cert.pem",                                  // Alpine without the list
       }) {
    if (HoldsCertificates(root + place)) {
      return {.file = root + place, .folder = {}};
    }
  }
  for (const char* place :
       {"/etc/ssl/certs", "/etc/pki/ca-trust/extracted/pem/directory-hash", "/etc/pki/tls/certs"}) {
    if (IsHashedFolder(root + place)) {
      return {.file = {}, .folder = root + place};
    }
  }
  return {};
}

}  // namespace zephin
