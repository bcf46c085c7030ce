// Sanitizer settings built into every test program, so that a run holds however it is started
// (ctest, by hand, under a debugger). Without the sanitizers these functions are never called.

// The exception type keeps its message for ever by design, so that copies made while the stack
// unwinds can share it: one small block per exception raised. glibc's newlocale keeps the list it
// splits LOCPATH into, once per locale loaded from there (the locale tests set LOCPATH).
extern "C" const char* __lsan_default_suppressions() {
  return "leak:StdRuntimeException::StdRuntimeException\n"
         "leak:__argz_add_sep\n";
}

extern "C" const char* __ubsan_default_options() { return "print_stacktrace=1:halt_on_error=1"; }

extern "C" const char* __asan_default_options() { return "detect_leaks=1:halt_on_error=1"; }
