#ifndef KOV_BENCH_MEASURE_H
#define KOV_BENCH_MEASURE_H

// Wall-clock time and resident memory of the benchmark's own process, and the
// one output line format: "figure: NAME VALUE UNIT".

#include <malloc.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>

inline double benchNow()
{
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// A field of /proc/self/status in kB.
inline double benchStatusKb(const char* field)
{
  std::ifstream status("/proc/self/status");
  std::string line;
  const std::string key = std::string(field) + ":";
  while (std::getline(status, line)) {
    if (line.compare(0, key.size(), key) == 0)
      return std::stod(line.substr(key.size()));
  }
  return 0;
}

// Starts a phase: gives freed memory back (or a phase reusing the last one's
// heap would show no peak at all), resets the peak and returns the resident
// size in MB.
inline double benchStartPhase()
{
  malloc_trim(0);
  std::ofstream("/proc/self/clear_refs") << "5";
  return benchStatusKb("VmRSS") / 1024.0;
}

// The peak resident size in MB since the last phase started.
inline double benchPeakMb()
{
  return benchStatusKb("VmHWM") / 1024.0;
}

inline void benchFigure(const char* name, double value, const char* unit)
{
  std::printf("figure: %s %.3f %s\n", name, value, unit);
  std::fflush(stdout);
}

#endif
