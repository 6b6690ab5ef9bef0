// A fake of both font libraries, with version numbers of the future. It has only the functions that
// the program calls to compare versions.

// Each function is exported under the library's name for it.
extern "C" int FcGetVersion();
extern "C" int InitFreeType(void** library) asm("FT_Init_FreeType");
extern "C" void LibraryVersion(void* library, int* major, int* minor,
                               int* patch) asm("FT_Library_Version");
extern "C" int DoneFreeType(void* library) asm("FT_Done_FreeType");

int FcGetVersion() {
  return 990000;
}

int InitFreeType(void** library) {
  static int only = 0;
  *library = &only;
  return 0;
}

void LibraryVersion(void* /*library*/, int* major, int* minor, int* patch) {
  *major = LATER_FREETYPE;
  *minor = *patch = 0;
}

int DoneFreeType(void* /*library*/) {
  return 0;
}
