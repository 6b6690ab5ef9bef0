// Stands for the font libraries of a later year, as far as the program asks them before it uses
// them.

// The names are those of the libraries.
// NOLINTBEGIN(readability-identifier-naming)
extern "C" int FcGetVersion() {
  return 990000;
}

extern "C" int FT_Init_FreeType(void** library) {
  static int only = 0;
  *library = &only;
  return 0;
}

extern "C" void FT_Library_Version(void* /*library*/, int* major, int* minor, int* patch) {
  *major = LATER_FREETYPE;
  *minor = *patch = 0;
}

extern "C" int FT_Done_FreeType(void* /*library*/) {
  return 0;
}
// NOLINTEND(readability-identifier-naming)
