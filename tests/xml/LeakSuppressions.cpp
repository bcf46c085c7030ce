// The exception type keeps its message for ever by design (tests/lsan.supp says why). The same
// suppression is built into this program, so that a sanitizer run holds however it is started.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:StdRuntimeException::StdRuntimeException\n";
}
