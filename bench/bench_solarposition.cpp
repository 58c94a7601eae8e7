#include "animation/kovSolarPosition.h"

#include <chrono>
#include <cstdio>

// Sun positions per second for the zenith/azimuth-only function, the one an
// animation evaluates every frame. Times step through a year in quarter hours
// so the periodic terms see varied arguments rather than one instant.
int main()
{
  using Clock = std::chrono::steady_clock;

  kovSpaData data;
  data.year = 2024;
  data.timezone = 1.0;
  data.longitude = 13.4;
  data.latitude = 52.5;
  data.elevation = 34.0;
  data.deltaT = 69.2;
  data.function = kovSpaZa;

  constexpr int kQuarterHoursPerDay = 96;
  constexpr int kDaysPerMonth = 28; // every month has them; enough to sweep the year
  const auto start = Clock::now();
  long long computed = 0;
  double zenithSum = 0.0;
  Clock::duration elapsed{};
  do {
    // Reading the clock only every 1000 calls keeps it out of the figure.
    for (int i = 0; i < 1000; ++i, ++computed) {
      const long long quarter = computed % (12LL * kDaysPerMonth * kQuarterHoursPerDay);
      const int dayOfYear = static_cast<int>(quarter / kQuarterHoursPerDay);
      data.month = 1 + dayOfYear / kDaysPerMonth;
      data.day = 1 + dayOfYear % kDaysPerMonth;
      data.hour = static_cast<int>(quarter / 4 % 24);
      data.minute = static_cast<int>(quarter % 4 * 15);
      if (kovSpaCalculate(data) != kovSpaOk)
        return 1;
      zenithSum += data.zenith;
    }
    elapsed = Clock::now() - start;
  } while (elapsed < std::chrono::seconds(1));

  // Using the results keeps the calls from being optimised away, and a NaN
  // zenith anywhere makes the run fail instead of reporting a figure.
  if (!(zenithSum > 0.0))
    return 1;
  const double seconds = std::chrono::duration<double>(elapsed).count();
  std::printf("figure: sun_positions_per_second %.0f 1/s\n", static_cast<double>(computed) / seconds);
  return 0;
}
