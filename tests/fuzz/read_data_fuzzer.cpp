// Gives the reader of the setup record any two files: the input up to its first line end is the
// plain form of `Data`, the rest is `TextData`. Finds texts that have lost a byte or their place.
#include <algorithm>
#include <string>

#include "platform/framework/text.h"
#include "setup/bundle_files.h"
#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"

namespace zephin::test {
namespace {

/// Looks at fields near both ends of each file: where those are right, so are the ones between.
void CheckFields(const ZephinStubWindow& w, const String& data, const String& textData) {
  const auto at = [&textData](int position) { return NthField(textData, "|#|", position + 1); };
  Require(w.fTimeStamp == NthField(data, "$|~", 1));
  Require(w.fExecuteBeforeName == NthField(data, "$|~", 8));
  Require(w.fMessage == at(1) && w.fTargetFolder == at(6) && w.fPostCopy == at(28));
  Require(w.fPostCopy.IsEmpty() || w.fPostCopy.DeclaredEncoding() == Encoding::UTF8);
  Require(w.fPostInstallNotes == w.ReadPlainOrHtmlText(at(27)));
  String labels;
  for (const String& label : w.fLabels) {
    labels += "|" + label;
  }
  Require(Mid(labels, 2) == at(5));
}

}  // namespace

void TryInput(std::string_view input) {
  StubRun& run = BareStub();
  const std::size_t end = std::min(input.find('\n'), input.size());
  const std::string data(input.substr(0, end));
  const std::string textData(input.substr(std::min(end + 1, input.size())));
  std::string scrambled = data;
  ScrambleBytes(scrambled, 0);
  WriteFile(run.Resources() / "Data", scrambled);
  WriteFile(run.Resources() / "TextData", textData);
  Require(run.BareWindow().ReadData() == !data.empty());
  if (!data.empty()) {
    CheckFields(run.BareWindow(), {data, Encoding::None}, Utf8(textData));
  }
}

}  // namespace zephin::test
