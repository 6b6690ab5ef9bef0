#include "setup/record.h"

#include "platform/framework/text.h"
#include "util/hex_text.h"
#include "util/texts.h"

namespace zephin {
namespace {

/// Puts the text of one position into the record.
class Filler {
 public:
  Filler(SetupRecord& record, const String& text) : record_(record), text_(text) {}

  void operator()(ReservedPosition /*position*/) const {}
  void operator()(TextPosition position) const { record_.*position.text = text_; }
  void operator()(FlagPosition position) const {
    record_.*position.flag = ViewConst::StrSame(text_, "1");
  }
  void operator()(NumberPosition position) const { record_.*position.number = ValInteger(text_); }
  void operator()(PicturePosition position) const {
    if (!text_.IsEmpty()) {
      record_.*position.pixels = NthField(text_, ",", 1);
      record_.*position.width = ValInteger(NthField(text_, ",", 2));
      record_.*position.height = ValInteger(NthField(text_, ",", 3));
    }
  }
  void operator()(PagePosition position) const { record_.*position.page = DecodePage(text_); }
  void operator()(CaptionsPosition position) const {
    record_.*position.captions = Split(text_, kCaptionSeparator);
  }

 private:
  SetupRecord& record_;
  const String& text_;
};

template <class Positions>
void Fill(SetupRecord& record, const Positions& positions, const String& text,
          const char* separator) {
  const Array<String> fields = Split(text, separator);
  std::int64_t index = 0;
  for (const Position& position : positions) {
    const String field = index < fields.Count() ? fields(index) : String();
    std::visit(Filler(record, field), position.content);
    ++index;
  }
}

/// Without a label while "|" is replaced: the bytes of a page are Mac Roman already, whatever they
/// look like.
String WithLineFeeds(const String& text) {
  return ViewConst::ReplaceCh1WithCh2(DefineEncoding(text, Encoding::None), "|", Chr(10));
}

}  // namespace

SetupRecord ReadRecord(const String& data, const String& textData) {
  SetupRecord record;
  Fill(record, kDataPositions, data, kDataSeparator);
  Fill(record, kTextDataPositions, textData, kTextDataSeparator);
  return record;
}

String DecodePage(const String& stored) {
  if (ViewConst::Pos(kHexPageMarker, stored) == 0) {
    return DefineEncoding(WithLineFeeds(stored), Encoding::MacRoman);
  }
  const std::int64_t markerLength = Len(kHexPageMarker);
  const String digits = Mid(stored, markerLength + 1, Len(stored) - markerLength);
  return DefineEncoding(ViewConst::UnicodeFromHex(WithLineFeeds(digits), true), Encoding::UTF8);
}

}  // namespace zephin
