#ifndef KOV_ALLOCATION_LIMIT_H
#define KOV_ALLOCATION_LIMIT_H

// Included by exactly one source of a test executable that feeds readers
// damaged data. Under AddressSanitizer any single allocation above
// KOV_ALLOCATION_LIMIT_MB (256 unless the source sets it) is reported as an
// error and ends the test: no count or length read from the data may size an
// allocation before it is checked against what is left.
#ifndef KOV_ALLOCATION_LIMIT_MB
#define KOV_ALLOCATION_LIMIT_MB "256"
#endif

#if defined(__SANITIZE_ADDRESS__)
extern "C" __attribute__((used, visibility("default"))) const char* __asan_default_options()
{
  return "max_allocation_size_mb=" KOV_ALLOCATION_LIMIT_MB ":allocator_may_return_null=0";
}
#endif

#endif
