#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "tools/make_setup/bundle.h"
#include "tools/make_setup/progress.h"

namespace {

using zephin::make_setup::BundleRequest;
using zephin::make_setup::BundleResult;

constexpr const char* kHelp =
    R"(Usage: make_setup [--archive] [--strict] [--set NAME=VALUE]... FOLDER STUB_APP OUTPUT_APP
       make_setup --check [--strict] [--set NAME=VALUE]... FOLDER

Makes an installer from a folder with a setup.json and the stub's bundle.

  --archive           also make NAME.tar.gz, the one file to hand out: bundle,
                      desktop entry and a short README.txt, in a folder NAME
  --check             only look for faults in the folder; write nothing
  --strict            treat warnings as errors
  --set NAME=VALUE    replace ${NAME} in setup.json by another value than its default
  --help, --version
)";

struct CommandLine {
  enum class Task { Make, Check, Help, Version, Invalid } task = Task::Make;
  BundleRequest request;
};

/// Whether a text is "NAME=VALUE"; adds it to the values.
bool TakeValue(const std::string& pair, BundleRequest& request) {
  const std::size_t sign = pair.find('=');
  if (sign == std::string::npos || sign == 0) {
    return false;
  }
  request.values[pair.substr(0, sign)] = pair.substr(sign + 1);
  return true;
}

CommandLine Read(const std::vector<std::string>& arguments) {
  using Task = CommandLine::Task;
  CommandLine line;
  std::vector<std::string> places;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    // Also behind a faulty option: whoever asks for help may not know the others.
    if (argument == "--help" || argument == "--version") {
      line.task = argument == "--help" ? Task::Help : Task::Version;
      return line;
    }
    if (argument == "--check") {
      line.task = Task::Check;
    } else if (argument == "--archive") {
      line.request.archive = true;
    } else if (argument == "--strict") {
      line.request.strict = true;
    } else if (argument == "--set") {
      if (++i == arguments.size() || !TakeValue(arguments[i], line.request)) {
        line.task = Task::Invalid;
        return line;
      }
    } else if (argument.starts_with("--")) {
      line.task = Task::Invalid;
      return line;
    } else {
      places.push_back(argument);
    }
  }
  if (places.size() != (line.task == Task::Check ? 1 : 3)) {
    line.task = Task::Invalid;
    return line;
  }
  // A check has the first only.
  places.resize(3);
  line.request.folder = places[0];
  line.request.stub = places[1];
  line.request.output = places[2];
  return line;
}

/// "Made My Setup.app (85 MB, 4,900 files) and My Setup.desktop".
std::string Summary(const BundleRequest& request, const BundleResult& result) {
  std::string summary = "Made " + request.output.filename().string() + " (" +
                        zephin::make_setup::WithUnit(result.size) + ", " +
                        zephin::make_setup::WithCommas(result.packed.files) +
                        (result.packed.files == 1 ? " file)" : " files)");
  for (const std::string& name : result.beside) {
    summary += (&name == &result.beside.back() ? " and " : ", ") + name;
  }
  return summary;
}

int Run(const CommandLine& line) {
  // Before anything exists that a signal could leave behind.
  zephin::make_setup::EndBySignals();
  try {
    std::string summary;
    {
      // Removes its line at the end of this block, before the summary is written.
      zephin::make_setup::Progress progress;
      if (line.task == CommandLine::Task::Check) {
        CheckBundle(line.request, progress);
        return 0;
      }
      summary = Summary(line.request, MakeBundle(line.request, progress));
    }
    std::cout << summary << '\n';
    return 0;
  } catch (const zephin::make_setup::Interrupted&) {
    // Everything has been removed; what follows is the end.
    zephin::make_setup::RaiseSignal();
  } catch (const std::filesystem::filesystem_error& error) {
    // Its own text names functions of the library, which say nothing to a publisher.
    std::cerr << "make_setup: " << error.path1().string() << ": " << error.code().message() << '\n';
  } catch (const std::exception& error) {
    std::cerr << "make_setup: " << error.what() << '\n';
  }
  return 1;
}

}  // namespace

int main(int count, char** arguments) {
  const CommandLine line = Read({arguments + 1, arguments + count});
  switch (line.task) {
    case CommandLine::Task::Help:
      std::cout << kHelp;
      return 0;
    case CommandLine::Task::Version:
      std::cout << "make_setup " ZEPHIN_VERSION "\n";
      return 0;
    case CommandLine::Task::Invalid:
      std::cerr << kHelp;
      return 2;
    default:
      return Run(line);
  }
}
