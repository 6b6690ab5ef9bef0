#ifndef TOOLS_MAKE_SETUP_RECORD_WRITER_H_
#define TOOLS_MAKE_SETUP_RECORD_WRITER_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zephin::make_setup {

/// Everything that one setup configures, under the names that the stub gives the fields. Texts are
/// UTF-8 and may be empty. Fields with a form of their own hold that form: pages that of
/// page_text.h, pictures that of pixel_string.h, lists that of lists.h.
struct SetupRecord {
  // The outer record.
  std::string fTimeStamp;
  bool fApplicationFolder = false;
  std::string fExecuteAfterName;
  std::string fLogoPixelStr;
  std::string fPicturePixelStr;
  bool fPromptToReplace = false;
  std::string fExecuteBeforeName;
  std::string fBackgroundPixelStr;
  std::int64_t fEncryptionLen = 0;
  bool fCenterMessage = false;

  // The inner record.
  std::string fAgreement;
  std::string fMessage;
  std::string fURLActual;
  std::string fURLDisplayed;
  std::string fInfo;
  /// Captions by their index; an empty one keeps the built-in wording, and so do missing ones.
  std::vector<std::string> fLabels;
  std::string fTargetFolder;
  std::string fCopyright;
  std::string fWindowTitle;
  bool fInstallationPatch = false;
  std::string fInstallChoices;
  std::string fInstallOptions;
  std::string fMinOS;
  std::string fMinRAM;
  std::string fCompletionURL;
  std::string fPreInstallNotes;
  std::string fPostInstallNotes;
  std::string fPostCopy;
};

/// A record always holds at least this many captions: the stub looks each of them up untested.
inline constexpr std::size_t kLabelCount = 27;

/// The twelve positions of the file Data before it is scrambled, joined with "$|~". A text that
/// would be cut elsewhere when it is read throws SetupError, which names the field.
std::string OuterRecord(const SetupRecord& record);
/// The twenty-nine positions of the file TextData, joined with "|#|"; refuses like OuterRecord.
std::string InnerRecord(const SetupRecord& record);

/// Two digits for each byte, the high one first, in capitals: the only letters that the stub reads.
std::string HexDigits(std::string_view bytes);

/// Writes both files into a bundle's Resources folder.
void WriteRecord(const SetupRecord& record, const std::filesystem::path& resources);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_RECORD_WRITER_H_
