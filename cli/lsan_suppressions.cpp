// Leaks of the libraries qorfmt uses that LeakSanitizer would report at exit in sanitizer
// builds; no other build reads this.
//   libgettextpo 0.21: po_file_free leaves each message's msgctxt, and a fatal error leaves its
//   message text.
//   fontconfig (through Cairo's text): its configuration lives until FcFini, which nobody calls.
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libgettextpo.so\n"
           "leak:libfontconfig.so\n";
}
