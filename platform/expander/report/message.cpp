#include "platform/expander/report/message.h"

#include <charconv>
#include <type_traits>
#include <vector>

namespace zephin::expander {
namespace {

class Writer {
 public:
  explicit Writer(std::string_view kind) : line_(kind) {}

  Writer& Add(std::string_view text) {
    line_ += '\t';
    for (const char character : text) {
      switch (character) {
        case '\\':
          line_ += "\\\\";
          break;
        case '\t':
          line_ += "\\t";
          break;
        case '\n':
          line_ += "\\n";
          break;
        default:
          line_ += character;
      }
    }
    return *this;
  }
  Writer& Add(std::uint64_t number) { return Add(std::to_string(number)); }
  Writer& Add(Reason reason) { return Add(static_cast<std::uint64_t>(reason)); }

  std::string Line() const { return line_ + '\n'; }

 private:
  std::string line_;
};

struct Encoder {
  std::string operator()(const Job& job) const {
    return Writer("job")
        .Add(job.archive)
        .Add(job.folder)
        .Add(job.name)
        .Add(std::uint64_t{job.showsFailure ? 1U : 0U})
        .Line();
  }
  std::string operator()(const Progress& progress) const {
    return Writer("progress")
        .Add(progress.bytesDone)
        .Add(progress.bytesToDo)
        .Add(progress.entriesDone)
        .Add(progress.entriesToDo)
        .Add(progress.missing)
        .Add(progress.name)
        .Line();
  }
  std::string operator()(const MissingEntry& entry) const {
    return Writer("missing").Add(entry.reason).Add(entry.name).Line();
  }
  std::string operator()(const Failure& failure) const {
    return Writer("failed")
        .Add(failure.reason)
        .Add(failure.needed)
        .Add(failure.free)
        .Add(failure.detail)
        .Add(failure.placed)
        .Add(failure.expanded)
        .Add(failure.missing)
        .Line();
  }
  std::string operator()(const Done& /*done*/) const { return Writer("done").Line(); }
};

/// Takes the fields of a line one after the other. A field that is missing or that has the wrong
/// form makes the line invalid.
class Reader {
 public:
  explicit Reader(std::string_view line) {
    fields_.emplace_back();
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (line[i] == '\t') {
        fields_.emplace_back();
      } else if (line[i] != '\\') {
        fields_.back() += line[i];
      } else if (++i < line.size()) {
        const char next = line[i];
        fields_.back() += next == 't' ? '\t' : next == 'n' ? '\n' : next;
      }
    }
  }

  std::string Text() {
    if (next_ >= fields_.size()) {
      valid_ = false;
      return {};
    }
    return fields_[next_++];
  }
  std::uint64_t Number() {
    const std::string text = Text();
    const char* end = text.data() + text.size();
    std::uint64_t number = 0;
    const auto [last, fault] = std::from_chars(text.data(), end, number);
    valid_ = valid_ && fault == std::errc() && last == end;
    return number;
  }
  Reason ReadReason() {
    const std::uint64_t number = Number();
    valid_ = valid_ && number <= static_cast<std::uint64_t>(kLastReason);
    return valid_ ? static_cast<Reason>(number) : Reason::Other;
  }
  /// Every field was read, and each had the right form.
  bool Whole() const { return valid_ && next_ == fields_.size(); }

 private:
  std::vector<std::string> fields_;
  std::size_t next_ = 0;
  bool valid_ = true;
};

Message Read(Reader& reader, const std::string& kind) {
  // Fields are read in the order of the initializers.
  if (kind == "job") {
    return Job{reader.Text(), reader.Text(), reader.Text(), reader.Number() != 0};
  }
  if (kind == "progress") {
    return Progress{reader.Number(), reader.Number(), reader.Number(),
                    reader.Number(), reader.Number(), reader.Text()};
  }
  if (kind == "missing") {
    return MissingEntry{reader.ReadReason(), reader.Text()};
  }
  return Failure{reader.ReadReason(), reader.Number(), reader.Number(), reader.Text(),
                 reader.Text(),       reader.Number(), reader.Number()};
}

}  // namespace

std::string Encode(const Message& message) {
  return std::visit(Encoder(), message);
}

std::optional<Message> Decode(std::string_view line) {
  Reader reader(line);
  const std::string kind = reader.Text();
  const bool known = kind == "job" || kind == "progress" || kind == "missing" || kind == "failed";
  Message message = known ? Read(reader, kind) : Message(Done());
  if (!reader.Whole() || (!known && kind != "done")) {
    return std::nullopt;
  }
  return message;
}

}  // namespace zephin::expander
