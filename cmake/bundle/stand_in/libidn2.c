// Stands in for the library of international domain names, which is two megabytes of tables: of it
// the downloads only ask how a host of other letters than ASCII's is written in the domain name
// system. Names are taken as they are usually typed, in composed letters. What is not here is
// hollow: see hollow.py.

#include <locale.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <wctype.h>

// Values of the library's own interface.
enum { kOk = 0, kNoMemory = -100, kNoUtf8 = -200, kTooLong = -206 };

enum { kLongestLabel = 63, kLongestHost = 255 };

// A part of a host between two dots.
struct Label {
  uint32_t characters[kLongestLabel];
  int count;
  int basic;  // Those of ASCII.
};

struct Output {
  char text[kLongestHost + 1];
  size_t length;
};

static int Put(struct Output* output, char character) {
  if (output->length == kLongestHost) {
    return kTooLong;
  }
  output->text[output->length++] = character;
  output->text[output->length] = '\0';
  return kOk;
}

// Takes one character of UTF-8; the value of an invalid one is UINT32_MAX.
static uint32_t Take(const unsigned char** text) {
  static const uint32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  const unsigned char first = *(*text)++;
  if (first < 0x80) {
    return first;
  }
  const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
  if (first < 0xC2 || first > 0xF4) {
    return UINT32_MAX;
  }
  uint32_t character = first & (0x3Fu >> more);
  for (int i = 0; i < more; ++i) {
    if ((**text & 0xC0) != 0x80) {
      return UINT32_MAX;
    }
    character = character << 6 | (*(*text)++ & 0x3F);
  }
  const int isSurrogate = character >= 0xD800 && character < 0xE000;
  return character < kLeast[more] || character > 0x10FFFF || isSurrogate ? UINT32_MAX : character;
}

static int IsDot(uint32_t character) {
  return character == '.' || character == 0x3002 || character == 0xFF0E || character == 0xFF61;
}

// The rules by which a number is written in digits of changing weight (RFC 3492).

static uint32_t Threshold(uint32_t k, uint32_t bias) {
  return k <= bias ? 1 : k >= bias + 26 ? 26 : k - bias;
}

static uint32_t Adapt(uint32_t delta, uint32_t count, int isFirst) {
  delta = isFirst ? delta / 700 : delta / 2;
  delta += delta / count;
  uint32_t k = 0;
  for (; delta > 35 * 26 / 2; k += 36) {
    delta /= 35;
  }
  return k + 36 * delta / (delta + 38);
}

static int PutNumber(struct Output* output, uint32_t number, uint32_t bias) {
  for (uint32_t k = 36;; k += 36) {
    const uint32_t threshold = Threshold(k, bias);
    const uint32_t digit =
        number < threshold ? number : threshold + (number - threshold) % (36 - threshold);
    const int result = Put(output, "abcdefghijklmnopqrstuvwxyz0123456789"[digit]);
    if (result != kOk || number < threshold) {
      return result;
    }
    number = (number - threshold) / (36 - threshold);
  }
}

static uint32_t NextAfter(const struct Label* label, uint32_t last) {
  uint32_t least = UINT32_MAX;
  for (int i = 0; i < label->count; ++i) {
    if (label->characters[i] > last && label->characters[i] < least) {
      least = label->characters[i];
    }
  }
  return least;
}

static int PutOthers(struct Output* output, const struct Label* label) {
  uint32_t bias = 72, delta = 0, last = 0x7F;
  for (int done = label->basic; done < label->count;) {
    const uint32_t next = NextAfter(label, last);
    // At most 63 characters of 21 bits each: it can't overflow.
    delta += (next - last - 1) * (uint32_t)(done + 1);
    for (int i = 0; i < label->count; ++i) {
      if (label->characters[i] < next) {
        ++delta;
      } else if (label->characters[i] == next) {
        const int result = PutNumber(output, delta, bias);
        if (result != kOk) {
          return result;
        }
        bias = Adapt(delta, (uint32_t)done + 1, done == label->basic);
        delta = 0;
        ++done;
      }
    }
    ++delta;
    last = next;
  }
  return kOk;
}

static int PutLabel(struct Output* output, const struct Label* label) {
  const size_t begin = output->length;
  const int isPlain = label->basic == label->count;
  int result = kOk;
  for (const char* mark = isPlain ? "" : "xn--"; *mark != '\0' && result == kOk; ++mark) {
    result = Put(output, *mark);
  }
  for (int i = 0; i < label->count && result == kOk; ++i) {
    if (label->characters[i] < 0x80) {
      result = Put(output, (char)label->characters[i]);
    }
  }
  if (!isPlain && label->basic > 0 && result == kOk) {
    result = Put(output, '-');
  }
  if (!isPlain && result == kOk) {
    result = PutOthers(output, label);
  }
  return result == kOk && output->length - begin > kLongestLabel ? kTooLong : result;
}

static int Convert(const char* host, struct Output* output, locale_t letters) {
  const unsigned char* text = (const unsigned char*)host;
  struct Label label = {.count = 0};
  int result = kOk;
  while (result == kOk) {
    const uint32_t character = *text == '\0' ? 0 : Take(&text);
    if (character == UINT32_MAX) {
      return kNoUtf8;
    }
    if (character == 0 || IsDot(character)) {
      result = PutLabel(output, &label);
      if (character == 0 || result != kOk) {
        return result;
      }
      result = Put(output, '.');
      label.count = label.basic = 0;
    } else if (label.count == kLongestLabel) {
      return kTooLong;
    } else {
      label.basic += character < 0x80;
      label.characters[label.count++] = (uint32_t)towlower_l((wint_t)character, letters);
    }
  }
  return result;
}

const char* idn2_check_version(const char* least) {
  (void)least;
  return "2.3.3";
}

void idn2_free(void* text) {
  free(text);
}

int idn2_lookup_ul(const char* host, char** converted, int flags) {
  (void)flags;
  struct Output output = {.length = 0};
  locale_t letters = newlocale(LC_CTYPE_MASK, "C.UTF-8", NULL);
  if (letters == NULL) {
    return kNoMemory;
  }
  const int result = Convert(host, &output, letters);
  freelocale(letters);
  if (result != kOk) {
    return result;
  }
  *converted = strdup(output.text);
  return *converted == NULL ? kNoMemory : kOk;
}
