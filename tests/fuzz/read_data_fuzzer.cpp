// Gives the reader of the setup record any two files: the input up to its first line end is the
// plain form of `Data`, the rest is `TextData`. Finds fields that aren't those of a plain cut.
#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include "setup/scrambling_bytes.h"
#include "tests/fuzz/bare_stub.h"
#include "tests/fuzz/fuzzing.h"

namespace zephin::test {
namespace {

namespace fs = std::filesystem;
using W = ZephinStubWindow;

template <class Field>
struct Place {
  std::size_t position;
  Field W::*field;
};

struct PicturePlace {
  std::size_t position;
  String W::*pixels;
  std::int64_t W::*width;
  std::int64_t W::*height;
};

constexpr std::array kDataTexts{
    Place<String>{0, &W::fTimeStamp},
    Place<String>{2, &W::fExecuteAfterName},
    Place<String>{7, &W::fExecuteBeforeName},
};
constexpr std::array kDataFlags{
    Place<bool>{1, &W::fApplicationFolder},
    Place<bool>{6, &W::fPromptToReplace},
    Place<bool>{10, &W::fCenterMessage},
};
constexpr std::array kPictures{
    PicturePlace{3, &W::fLogoPixelStr, &W::fLogoWidth, &W::fLogoHeight},
    PicturePlace{5, &W::fPicturePixelStr, &W::fPictureWidth, &W::fPictureHeight},
    PicturePlace{8, &W::fBackgroundPixelStr, &W::fBackgroundWidth, &W::fBackgroundHeight},
};
constexpr std::array kTexts{
    Place<String>{1, &W::fMessage},         Place<String>{2, &W::fURLActual},
    Place<String>{3, &W::fURLDisplayed},    Place<String>{6, &W::fTargetFolder},
    Place<String>{7, &W::fCopyright},       Place<String>{8, &W::fWindowTitle},
    Place<String>{21, &W::fInstallChoices}, Place<String>{22, &W::fInstallOptions},
    Place<String>{23, &W::fMinOS},          Place<String>{24, &W::fMinRAM},
    Place<String>{25, &W::fCompletionURL},  Place<String>{28, &W::fPostCopy},
};
constexpr std::array kPages{
    Place<String>{0, &W::fAgreement},
    Place<String>{4, &W::fInfo},
    Place<String>{26, &W::fPreInstallNotes},
    Place<String>{27, &W::fPostInstallNotes},
};

/// A bundle in memory, gone at the end.
class Bundle {
 public:
  Bundle() {
    std::string pattern = "/dev/shm/read-data-fuzzer-XXXXXX";
    Require(mkdtemp(pattern.data()) != nullptr);
    root_ = pattern;
    fs::create_directories(Contents() / "MacOS");
    fs::create_directory(Contents() / "Resources");
  }
  ~Bundle() { fs::remove_all(root_); }
  Bundle(const Bundle&) = delete;
  Bundle& operator=(const Bundle&) = delete;

  fs::path Executable() const { return Contents() / "MacOS/Setup"; }
  void Write(const char* name, std::string_view bytes) const {
    std::ofstream(Contents() / "Resources" / name, std::ios::binary) << bytes;
  }

 private:
  fs::path Contents() const { return root_ / "Setup.app/Contents"; }
  fs::path root_;
};

Machine MachineOf(const Bundle& bundle) {
  Machine machine;
  machine.executable = bundle.Executable();
  return machine;
}

void CheckData(const W& w, const std::vector<std::string>& fields) {
  for (const auto& [position, field] : kDataTexts) {
    Require((w.*field).Bytes() == FieldAt(fields, position));
  }
  for (const auto& [position, field] : kDataFlags) {
    Require(w.*field == (FieldAt(fields, position) == "1"));
  }
  for (const auto& [position, pixels, width, height] : kPictures) {
    const std::vector<std::string> triple = PlainCut(FieldAt(fields, position), ",");
    Require((w.*pixels).Bytes() == FieldAt(triple, 0));
    if (!triple.empty()) {
      Require(w.*width == ValInteger({FieldAt(triple, 1), Encoding::None}));
      Require(w.*height == ValInteger({FieldAt(triple, 2), Encoding::None}));
    }
  }
}

void CheckTextData(const W& w, const std::vector<std::string>& fields) {
  for (const auto& [position, field] : kTexts) {
    Require((w.*field).Bytes() == FieldAt(fields, position));
    Require((w.*field).IsEmpty() || (w.*field).DeclaredEncoding() == Encoding::UTF8);
  }
  for (const auto& [position, page] : kPages) {
    Require(w.*page == w.ReadPlainOrHtmlText(Utf8(FieldAt(fields, position))));
  }
  Require(w.fInstallationPatch == (FieldAt(fields, 12) == "1"));
  const std::vector<std::string> labels = PlainCut(FieldAt(fields, 5), "|");
  Require(w.fLabels.Count() == std::ssize(labels));
  for (std::size_t i = 0; i < labels.size(); ++i) {
    Require(w.fLabels(static_cast<std::int64_t>(i)).Bytes() == labels[i]);
  }
}

void ReadRecord(std::string_view input) {
  static const Bundle kBundle;
  static BareStub<> stub(MachineOf(kBundle));
  const std::size_t end = std::min(input.find('\n'), input.size());
  const std::string data(input.substr(0, end));
  const std::string_view textData = input.substr(std::min(end + 1, input.size()));
  std::string scrambled = data;
  ScrambleBytes(scrambled, 0);
  kBundle.Write("Data", scrambled);
  kBundle.Write("TextData", textData);
  Require(stub.Window().ReadData() == !data.empty());
  if (!data.empty()) {
    CheckData(stub.Window(), PlainCut(data, "$|~"));
    CheckTextData(stub.Window(), PlainCut(textData, "|#|"));
  }
}

}  // namespace
}  // namespace zephin::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  zephin::test::ReadRecord(zephin::test::AsText(bytes, size));
  return 0;
}
