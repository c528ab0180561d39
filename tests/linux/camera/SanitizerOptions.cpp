// What the leak checker is told in this program.

// GLib outgrows the table of strings that its constructor allocates as soon as GStreamer is loaded, and keeps
// the old one on purpose; the constructor shows only in a full stack trace. Cairo holds fontconfig's patterns
// in caches for as long as the process lives.
extern "C" const char* __lsan_default_suppressions() { return "leak:call_init\nleak:libfontconfig\n"; }
extern "C" const char* __asan_default_options() { return "fast_unwind_on_malloc=0"; }
