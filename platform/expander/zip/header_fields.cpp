#include "platform/expander/zip/header_fields.h"

#include <algorithm>
#include <ctime>

#include "platform/expander/zip/inflater.h"
#include "platform/expander/zip/little_endian.h"

namespace zephin::expander {

namespace {

constexpr std::uint16_t kZip64 = 0x0001;
constexpr std::uint16_t kNtfs = 0x000A;
constexpr std::uint16_t kUnixTimes = 0x5455;
constexpr std::uint16_t kOldUnixTimes = 0x5855;
constexpr std::uint16_t kUnicodeName = 0x7075;

void ReadZip64(FieldReader body, Wide wide, ExtraFields& fields) {
  const auto take = [&body](bool wanted, std::optional<std::uint64_t>& value) {
    const std::uint64_t number = wanted ? body.U64() : 0;
    if (wanted && body.Ok()) {
      value = number;
    }
  };
  take(wide.size, fields.size);
  take(wide.packedSize, fields.packedSize);
  take(wide.offset, fields.offset);
}

/// flags 1 (bit 0: has the time of the last change), time 4
void ReadUnixTimes(FieldReader body, ExtraFields& fields) {
  const std::string_view flags = body.Take(1);
  const auto time = static_cast<std::int32_t>(body.U32());
  if (body.Ok() && (static_cast<unsigned char>(flags[0]) & 1U) != 0) {
    // Takes precedence over the other fields: most writers set this one.
    fields.seconds = time;
    fields.nanoseconds = 0;
  }
}

/// time of the last access 4, time of the last change 4
void ReadOldUnixTimes(FieldReader body, ExtraFields& fields) {
  (void)body.U32();
  const auto time = static_cast<std::int32_t>(body.U32());
  if (body.Ok() && !fields.seconds) {
    fields.seconds = time;
  }
}

/// reserved 4, then attributes: tag 2, length 2, body; tag 1 holds three times in units of 100 ns
/// since 1601, the last change first
void ReadNtfs(FieldReader body, ExtraFields& fields) {
  constexpr std::uint64_t kUnitsPerSecond = 10'000'000;
  constexpr std::int64_t kSecondsTo1970 = 11'644'473'600;
  (void)body.U32();
  while (body.Left() >= 4) {
    const std::uint16_t tag = body.U16();
    FieldReader attribute(body.Take(body.U16()));
    const std::uint64_t time = attribute.U64();
    if (tag == 1 && attribute.Ok() && !fields.seconds) {
      fields.seconds = static_cast<std::int64_t>(time / kUnitsPerSecond) - kSecondsTo1970;
      fields.nanoseconds = static_cast<std::uint32_t>(time % kUnitsPerSecond * 100);
    }
  }
}

/// version 1, CRC-32 of the header's name 4, name in UTF-8. The CRC differs if a tool that doesn't
/// know the field has renamed the entry since; then the header's name is used.
void ReadUnicodeName(FieldReader body, std::string_view storedName, ExtraFields& fields) {
  const std::string_view version = body.Take(1);
  const std::uint32_t crc = body.U32();
  const std::string_view name = body.Take(body.Left());
  if (body.Ok() && version[0] == 1 && crc == Crc32(0, storedName.data(), storedName.size())) {
    fields.unicodeName = name;
  }
}

}  // namespace

ExtraFields ReadExtraFields(std::string_view extra, std::string_view storedName, Wide wide) {
  ExtraFields fields;
  FieldReader reader(extra);
  while (reader.Left() >= 4) {
    const std::uint16_t tag = reader.U16();
    const FieldReader body(reader.Take(reader.U16()));
    if (!reader.Ok()) {
      break;
    }
    if (tag == kZip64) {
      ReadZip64(body, wide, fields);
    } else if (tag == kUnixTimes) {
      ReadUnixTimes(body, fields);
    } else if (tag == kOldUnixTimes) {
      ReadOldUnixTimes(body, fields);
    } else if (tag == kNtfs) {
      ReadNtfs(body, fields);
    } else if (tag == kUnicodeName) {
      ReadUnicodeName(body, storedName, fields);
    }
  }
  return fields;
}

std::int64_t LocalTimes::Seconds(std::uint16_t date, std::uint16_t time) {
  const std::uint32_t hour = time >> 11U;
  // Never 0, the key of an unused element.
  const std::uint32_t key = (static_cast<std::uint32_t>(date) << 5U | hour) + 1;
  Hour& known = hours_.at(key % hours_.size());
  if (known.key != key) {
    std::tm fields{};
    fields.tm_year = static_cast<int>(date >> 9U) + 80;
    fields.tm_mon = std::max(static_cast<int>(date >> 5U & 0xFU) - 1, 0);
    fields.tm_mday = std::max(static_cast<int>(date & 0x1FU), 1);
    fields.tm_hour = static_cast<int>(hour);
    fields.tm_isdst = -1;
    known = Hour{key, std::mktime(&fields)};
  }
  const std::uint32_t within = (time >> 5U & 0x3FU) * 60U + (time & 0x1FU) * 2U;
  return known.seconds + static_cast<std::int64_t>(within);
}

}  // namespace zephin::expander
