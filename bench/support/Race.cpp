#include "support/Race.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

namespace bench {

double Milliseconds(const Work& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void Race(std::vector<Contestant>& contestants, int rounds) {
  for (int round = 0; round < rounds; ++round) {
    for (Contestant& contestant : contestants) {
      contestant.milliseconds.push_back(Milliseconds(contestant.work));
    }
  }
}

void Report(const std::string& what, const std::vector<Contestant>& contestants, const std::vector<double>& limits) {
  const double own = Median(contestants.front().milliseconds);
  std::printf("%s: %.2f ms\n", what.c_str(), own);
  for (std::size_t i = 1; i < contestants.size(); ++i) {
    const double other = Median(contestants[i].milliseconds);
    std::printf("  %-52s %10.2f ms  ratio %.2f  (at most %.2f)\n", contestants[i].name.c_str(), other, own / other,
                limits[i - 1]);
  }
  std::fflush(stdout);
}

}  // namespace bench
