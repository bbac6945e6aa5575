// A library in the update check's place that lacks CheckUpdate.
extern "C" __attribute__((visibility("default"))) int SomethingElse(void) { return 0; }
