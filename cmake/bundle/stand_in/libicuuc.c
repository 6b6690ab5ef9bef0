// Stands in for the Unicode library's part that the toolkit has a substitute for in itself: each
// function says that it can't, so that the toolkit takes its own. What is not here is hollow: see
// hollow.py.

#include <stddef.h>
#include <stdint.h>

enum { kUnsupported = 16 };  // A value of the Unicode library's own interface.

// Letter case.

int32_t u_strToLower(uint16_t* to, int32_t room, const uint16_t* from, int32_t length,
                     const char* language, int* status) {
  (void)to, (void)room, (void)from, (void)length, (void)language;
  *status = kUnsupported;
  return 0;
}

int32_t u_strToUpper(uint16_t* to, int32_t room, const uint16_t* from, int32_t length,
                     const char* language, int* status) {
  return u_strToLower(to, room, from, length, language, status);
}

// Encodings that are seldom met.

void* ucnv_open(const char* name, int* status) {
  (void)name;
  *status = kUnsupported;
  return NULL;
}
