#include "tools/make_setup/record_writer.h"

#include <algorithm>

#include "platform/framework/text.h"
#include "setup/bundle_files.h"
#include "setup/captions.h"
#include "tools/make_setup/files.h"
#include "tools/make_setup/setup_error.h"

namespace zephin::make_setup {
namespace {

/// Gives the text of one position, for each kind of content.
class Writer {
 public:
  explicit Writer(const SetupRecord& record) : record_(record) {}

  std::string operator()(ReservedPosition /*position*/) const { return ""; }
  std::string operator()(TextPosition position) const { return (record_.*position.text).Bytes(); }
  std::string operator()(FlagPosition position) const { return record_.*position.flag ? "1" : "0"; }
  std::string operator()(NumberPosition position) const {
    const std::int64_t number = record_.*position.number;
    // Empty reads as 0, and is what records without the number have.
    return number == 0 ? "" : std::to_string(number);
  }
  std::string operator()(PicturePosition position) const {
    const String& pixels = record_.*position.pixels;
    // Sizes without digits would be read as a damaged picture.
    return pixels.IsEmpty() ? ""
                            : pixels.Bytes() + "," + std::to_string(record_.*position.width) + "," +
                                  std::to_string(record_.*position.height);
  }
  std::string operator()(PagePosition position) const { return StoredPage(record_.*position.page); }
  std::string operator()(CaptionsPosition position) const {
    const Array<String>& captions = record_.*position.captions;
    std::string list;
    // All of them, also where the record has fewer: the installer looks each one up without a test.
    for (const CaptionRow& row : kCaptions) {
      const std::int64_t index = IndexOf(row.caption);
      const std::string caption = index < captions.Count() ? captions(index).Bytes() : "";
      if (caption.find(kCaptionSeparator) != std::string::npos) {
        throw SetupError(std::string(row.name) + R"(: must not contain "|")");
      }
      list += (index == 0 ? "" : kCaptionSeparator) + caption;
    }
    return list;
  }

 private:
  const SetupRecord& record_;
};

template <class Positions>
std::string Joined(const SetupRecord& record, const Positions& positions,
                   const std::string& separator) {
  std::string joined;
  for (const Position& position : positions) {
    At(position.field, [&] {
      const std::string text = std::visit(Writer(record), position.content);
      // The reader cuts at the first separator that it finds, so a text may not form one together
      // with the separator that follows it either.
      if ((text + separator).find(separator) != text.size()) {
        throw SetupError("must not contain " + Quoted(separator) +
                         " or end in the beginning of it: the record is cut there");
      }
      joined += (&position == positions.data() ? "" : separator) + text;
    });
  }
  return joined;
}

}  // namespace

std::string DataText(const SetupRecord& record) {
  return Joined(record, kDataPositions, kDataSeparator);
}

std::string TextDataText(const SetupRecord& record) {
  return Joined(record, kTextDataPositions, kTextDataSeparator);
}

void WriteRecord(const SetupRecord& record, const std::filesystem::path& resources) {
  std::string data = DataText(record);
  ScrambleBytes(data, 0);
  WriteFile(resources / kDataFile, data);
  WriteFile(resources / kTextDataFile, TextDataText(record));
}

std::string StoredPage(const String& page) {
  if (page.IsEmpty()) {
    return "";
  }
  // By its label, which the reader of the page set: a text in ASCII fits both forms.
  if (page.DeclaredEncoding() != Encoding::MacRoman) {
    return kHexPageMarker + HexDigits(ConvertEncoding(page, Encoding::UTF16).View());
  }
  std::string stored = page.Bytes();
  // The record's form of a page has no line feeds.
  std::replace(stored.begin(), stored.end(), '\n', '|');
  return stored;
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

}  // namespace zephin::make_setup
