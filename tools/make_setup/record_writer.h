#ifndef TOOLS_MAKE_SETUP_RECORD_WRITER_H_
#define TOOLS_MAKE_SETUP_RECORD_WRITER_H_

#include <filesystem>
#include <string>
#include <string_view>

#include "setup/record.h"

/// The inverse of ReadRecord (setup/record.h): writes the two files of a setup record from the
/// tables by which the installer reads them.
namespace zephin::make_setup {

/// Content of the file `Data` before it is scrambled, and of the file `TextData`. ReadRecord gives
/// `record` again, but for missing captions, which become empty ones. A text in which the reader
/// would find a separator throws SetupError, which begins with the field's name.
std::string DataText(const SetupRecord& record);
std::string TextDataText(const SetupRecord& record);

/// Writes both files, `Data` scrambled, into a bundle's Resources folder. Throws SetupError as the
/// two above, and where a file can't be written.
void WriteRecord(const SetupRecord& record, const std::filesystem::path& resources);

/// The stored form of a page, which DecodePage reads. A page labelled Mac Roman is stored in Mac
/// Roman, any other as the digits of its UTF-16. Empty for the empty page.
///
///   "Caf\x8E\nOpen", Mac Roman  ->  "Caf\x8E|Open"
///   "Ω", UTF-8                  ->  "$HTML$A903"
std::string StoredPage(const String& page);

/// Two hexadecimal digits for each byte, the high one first. Letters are capitals, the only ones
/// that the installer reads.
std::string HexDigits(std::string_view bytes);

}  // namespace zephin::make_setup

#endif  // TOOLS_MAKE_SETUP_RECORD_WRITER_H_
