// Leaks of libraries that the leak checker has to ignore in this program.

// GLib replaces the string table that its constructor allocated as soon as GStreamer is loaded, and keeps the
// old one on purpose; only a full stack trace shows the constructor, which the dynamic loader calls. Cairo
// caches fontconfig's patterns for as long as the process lives.
extern "C" const char* __lsan_default_suppressions() { return "leak:ld-linux\nleak:libfontconfig\n"; }
extern "C" const char* __asan_default_options() { return "fast_unwind_on_malloc=0"; }
