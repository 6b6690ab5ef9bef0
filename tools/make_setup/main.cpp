#include <exception>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "tools/make_setup/bundle.h"

namespace {

constexpr const char* kUsage =
    "Usage: make_setup [--set NAME=VALUE]... FOLDER STUB_APP OUTPUT_APP\n"
    "Makes an installer from a folder with a setup.json and the stub's bundle.\n";

int Usage() {
  std::cerr << kUsage;
  return 2;
}

}  // namespace

int main(int count, char** arguments) {
  std::map<std::string, std::string> values;
  std::vector<std::string> places;
  try {
    for (int i = 1; i < count; ++i) {
      const std::string argument = arguments[i];
      if (argument != "--set") {
        places.push_back(argument);
        continue;
      }
      const std::string pair = ++i < count ? arguments[i] : "";
      const std::size_t sign = pair.find('=');
      if (sign == std::string::npos || sign == 0) {
        return Usage();
      }
      values[pair.substr(0, sign)] = pair.substr(sign + 1);
    }
    if (places.size() != 3) {
      return Usage();
    }
    zephin::make_setup::MakeBundle(places[0], places[1], places[2], values);
  } catch (const std::exception& error) {
    std::cerr << "make_setup: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
