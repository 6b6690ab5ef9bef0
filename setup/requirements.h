#ifndef SETUP_REQUIREMENTS_H_
#define SETUP_REQUIREMENTS_H_

#include <array>
#include <cstdint>

/// What a publisher can require of the user's machine. The fields `fMinOS` and `fMinRAM` hold one
/// keyword each, in any letter case; any other text requires nothing.
namespace zephin {

struct Requirement {
  const char* keyword;
  std::int64_t least;   ///< Smaller numbers are refused.
  const char* message;  ///< Shown with the refusal.
};

/// Keywords of `fMinOS`, by the system's minor version; the major version is not compared.
inline constexpr std::array kSystemRequirements{
    Requirement{"MacOS10.7", 7, "Mac OS X 10.7 or later is required."},
    Requirement{"MacOS10.8", 8, "Mac OS X 10.8 or later is required."},
    Requirement{"MacOS10.9", 9, "Mac OS X 10.9 or later is required."},
    Requirement{"MacOS10.10", 10, "Mac OS X 10.10 or later is required."},
    Requirement{"MacOS10.11", 11, "Mac OS X 10.11 or later is required."},
    Requirement{"MacOS10.12", 12, "Mac OS X 10.12 or later is required."},
    Requirement{"MacOS10.13", 13, "Mac OS X 10.13 or later is required."},
};

/// Keywords of `fMinRAM`, by megabytes of physical memory, 1000 to the gigabyte.
inline constexpr std::array kMemoryRequirements{
    Requirement{"250MB", 250, "250 MB RAM is required."},
    Requirement{"500MB", 500, "500 MB RAM is required."},
    Requirement{"1GB", 1000, "1 GB RAM is required."},
    Requirement{"2GB", 2000, "2 GB RAM is required."},
    Requirement{"4GB", 4000, "4 GB RAM is required."},
    Requirement{"8GB", 8000, "8 GB RAM is required."},
    Requirement{"16GB", 16000, "16 GB RAM is required."},
    Requirement{"32GB", 32000, "32 GB RAM is required."},
};

}  // namespace zephin

#endif  // SETUP_REQUIREMENTS_H_
