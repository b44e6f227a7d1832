// What Qt and the libraries behind it keep until the process ends; unheard without the leak sanitizer, which
// finds the function only where it can be seen from outside.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\nleak:libQt6\nleak:libglib\nleak:libdbus\n";
}
