// Stands in for the Unicode library's part that puts names in order, by the C library's order in
// the user's own language: every system has that one, while the Unicode library has all languages'
// and is megabytes. What is not here is hollow: see hollow.py.

#include <locale.h>
#include <stdint.h>
#include <stdlib.h>
#include <string.h>
#include <wchar.h>
#include <wctype.h>

// Values of the Unicode library's own interface.
enum { kUnsupported = 16, kNumeric = 7, kOn = 17 };

// A number in a name counts as if it had this many digits: 9 comes before 10.
enum { kDigits = 20 };

struct Collator {
  locale_t locale;
  int hasLanguage;  // The system has the user's language, and not only its letters.
  int numeric;
};

struct Collator* ucol_open(const char* language, int* status) {
  (void)language;  // The session's, which is what the toolkit asks for.
  struct Collator* collator = calloc(1, sizeof *collator);
  if (collator != NULL) {
    collator->locale = newlocale(LC_COLLATE_MASK | LC_CTYPE_MASK, "", NULL);
    collator->hasLanguage = collator->locale != NULL;
    if (!collator->hasLanguage) {
      collator->locale = newlocale(LC_COLLATE_MASK | LC_CTYPE_MASK, "C.UTF-8", NULL);
    }
    if (collator->locale != NULL) {
      return collator;
    }
  }
  free(collator);
  *status = kUnsupported;
  return NULL;
}

void ucol_close(struct Collator* collator) {
  if (collator != NULL) {
    freelocale(collator->locale);
    free(collator);
  }
}

void ucol_setAttribute(struct Collator* collator, int attribute, int value, int* status) {
  (void)status;
  if (attribute == kNumeric) {
    collator->numeric = value == kOn;
  }
}

static int IsDigit(uint16_t unit) {
  return unit >= '0' && unit <= '9';
}

// The text's characters, with blanks of zeros before short numbers; null without memory.
static wchar_t* KeyOf(const struct Collator* collator, const uint16_t* text, int32_t length) {
  wchar_t* key = malloc(((size_t)length * (kDigits + 1) + 1) * sizeof *key);
  if (key == NULL) {
    return NULL;
  }
  wchar_t* end = key;
  for (int32_t i = 0; i < length; ++i) {
    if (collator->numeric && IsDigit(text[i]) && (i == 0 || !IsDigit(text[i - 1]))) {
      int32_t digits = 1;
      while (i + digits < length && IsDigit(text[i + digits])) {
        ++digits;
      }
      for (int32_t missing = kDigits - digits; missing > 0; --missing) {
        *end++ = L'0';
      }
    }
    uint32_t character = text[i];
    if ((character & 0xFC00) == 0xD800 && i + 1 < length && (text[i + 1] & 0xFC00) == 0xDC00) {
      character = 0x10000 + ((character & 0x3FF) << 10) + (text[++i] & 0x3FF);
    }
    *end++ = (wchar_t)(collator->hasLanguage ? character
                                             : towlower_l((wint_t)character, collator->locale));
  }
  *end = L'\0';
  return key;
}

int ucol_strcoll(const struct Collator* collator, const uint16_t* one, int32_t oneLength,
                 const uint16_t* other, int32_t otherLength) {
  wchar_t* oneKey = KeyOf(collator, one, oneLength);
  wchar_t* otherKey = KeyOf(collator, other, otherLength);
  int order = 0;
  if (oneKey != NULL && otherKey != NULL) {
    order = wcscoll_l(oneKey, otherKey, collator->locale);
  }
  free(oneKey);
  free(otherKey);
  return (order > 0) - (order < 0);
}
