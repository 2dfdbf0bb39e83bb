#pragma once

#include <chrono>
#include <ctime>

namespace bench {

/// Milliseconds: by the clock, and of the processor for this program, which other programs don't lengthen.
struct Elapsed {
  double clock = 0;
  double processor = 0;
};

/// Runs from its creation.
class Stopwatch {
 public:
  Elapsed Read() const {
    const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - m_start;
    return {.clock = passed.count(), .processor = Processor() - m_processor};
  }

 private:
  static double Processor() {
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e6;
  }

  std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
  double m_processor = Processor();
};

}  // namespace bench
