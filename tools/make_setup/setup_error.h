#ifndef TOOLS_MAKE_SETUP_SETUP_ERROR_H_
#define TOOLS_MAKE_SETUP_SETUP_ERROR_H_

#include <stdexcept>
#include <string>

namespace zephin::make_setup {

/// What is wrong with a publisher's input, in a sentence for the publisher that begins with the
/// place: "setup.json: fInfo: pages/about.html: no such file".
class SetupError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A publisher's text as it stands in such a sentence.
inline std::string Quoted(const std::string& text) {
  return '"' + text + '"';
}

/// Runs `step`, gives its result, and puts `place` in front of the sentence of a SetupError that
/// leaves it.
template <class Step>
auto At(const std::string& place, Step step) -> decltype(step()) {
  try {
    return step();
  } catch (const SetupError& error) {
    throw SetupError(place + ": " + error.what());
  }
}

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_SETUP_ERROR_H_
