// What Qt and the libraries behind it keep until the process ends; unheard without the leak sanitizer.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\nleak:libQt6\nleak:libglib\nleak:libdbus\n";
}
