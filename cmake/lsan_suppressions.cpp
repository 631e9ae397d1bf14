// Leaks of Qt that LeakSanitizer ignores; linked into every program of a build with sanitizers.

extern "C" const char* __lsan_default_suppressions() {
    // Qt's offscreen platform never deletes its screen.
    return "leak:libqoffscreen\n";
}

extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
