#include "tools/make_setup/record_writer.h"

#include "setup/scrambling.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

struct Position {
  const char* field;
  std::string text;
};

Position Reserved() {
  return {"", ""};
}

std::string Flag(bool value) {
  return value ? "1" : "0";
}

std::string JoinPositions(const std::vector<Position>& positions, const std::string& separator) {
  std::string joined;
  for (const Position& position : positions) {
    // A reader cuts at the first separator that it meets, so a text may neither hold one nor form
    // one with the separator behind it, as a "|#" at its end does.
    if ((position.text + separator).find(separator) != position.text.size()) {
      throw SetupError(std::string(position.field) + ": holds " + Quoted(separator) +
                       " or the beginning of it at the end, where a record would be cut");
    }
    joined += (&position == positions.data() ? "" : separator) + position.text;
  }
  return joined;
}

std::string CaptionList(std::vector<std::string> labels) {
  if (labels.size() < kLabelCount) {
    labels.resize(kLabelCount);
  }
  std::string list;
  for (std::size_t i = 0; i < labels.size(); ++i) {
    if (labels[i].find('|') != std::string::npos) {
      throw SetupError("fLabels: caption " + std::to_string(i) + R"( holds a "|")");
    }
    list += (i == 0 ? "" : "|") + labels[i];
  }
  return list;
}

}  // namespace

std::string OuterRecord(const SetupRecord& record) {
  const std::string length =
      record.fEncryptionLen == 0 ? "" : std::to_string(record.fEncryptionLen);
  return JoinPositions({{"fTimeStamp", record.fTimeStamp},
                        {"fApplicationFolder", Flag(record.fApplicationFolder)},
                        {"fExecuteAfterName", record.fExecuteAfterName},
                        {"fLogoPixelStr", record.fLogoPixelStr},
                        Reserved(),
                        {"fPicturePixelStr", record.fPicturePixelStr},
                        {"fPromptToReplace", Flag(record.fPromptToReplace)},
                        {"fExecuteBeforeName", record.fExecuteBeforeName},
                        {"fBackgroundPixelStr", record.fBackgroundPixelStr},
                        {"fEncryptionLen", length},
                        {"fCenterMessage", Flag(record.fCenterMessage)},
                        Reserved()},
                       "$|~");
}

std::string InnerRecord(const SetupRecord& record) {
  std::vector<Position> positions{{"fAgreement", record.fAgreement},
                                  {"fMessage", record.fMessage},
                                  {"fURLActual", record.fURLActual},
                                  {"fURLDisplayed", record.fURLDisplayed},
                                  {"fInfo", record.fInfo},
                                  {"fLabels", CaptionList(record.fLabels)},
                                  {"fTargetFolder", record.fTargetFolder},
                                  {"fCopyright", record.fCopyright},
                                  {"fWindowTitle", record.fWindowTitle},
                                  Reserved(),
                                  Reserved(),
                                  Reserved(),
                                  {"fInstallationPatch", Flag(record.fInstallationPatch)}};
  positions.insert(positions.end(), 8, Reserved());
  positions.insert(positions.end(), {{"fInstallChoices", record.fInstallChoices},
                                     {"fInstallOptions", record.fInstallOptions},
                                     {"fMinOS", record.fMinOS},
                                     {"fMinRAM", record.fMinRAM},
                                     {"fCompletionURL", record.fCompletionURL},
                                     {"fPreInstallNotes", record.fPreInstallNotes},
                                     {"fPostInstallNotes", record.fPostInstallNotes},
                                     {"fPostCopy", record.fPostCopy}});
  return JoinPositions(positions, "|#|");
}

std::string HexDigits(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string digits;
  digits.reserve(bytes.size() * 2);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    digits += kDigits[byte / 16];
    digits += kDigits[byte % 16];
  }
  return digits;
}

void WriteRecord(const SetupRecord& record, const std::filesystem::path& resources) {
  std::string outer = OuterRecord(record);
  ScrambleBytes(outer, 0);
  WriteFile(resources / "Data", outer);
  WriteFile(resources / "TextData", InnerRecord(record));
}

}  // namespace zephin::make_setup
