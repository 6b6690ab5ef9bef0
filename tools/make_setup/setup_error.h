#ifndef TOOLS_MAKE_SETUP_SETUP_ERROR_H_
#define TOOLS_MAKE_SETUP_SETUP_ERROR_H_

#include <stdexcept>
#include <string>

namespace zephin::make_setup {

/// A fault in a publisher's input. The message is a sentence for the publisher that begins with the
/// place and says what is allowed: "setup.json: fMinRAM: must be one of 250MB, 500MB, ...".
class SetupError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A publisher's text in such a sentence.
inline std::string Quoted(const std::string& text) {
  return '"' + text + '"';
}

/// Runs `step` and returns its result. Puts `place` in front of the message of a SetupError that
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
