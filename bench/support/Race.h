#pragma once

#include <functional>
#include <string>
#include <vector>

/// Measuring by ratios: the same work several ways, in turns, in one run.
namespace bench {

using Work = std::function<void()>;

struct Contestant {
  std::string name;
  Work work;
  std::vector<double> milliseconds = {};
};

double Milliseconds(const Work& work);
double Median(std::vector<double> values);

/// Every round runs every contestant once, so that a slow moment of the machine hits all of them.
void Race(std::vector<Contestant>& contestants, int rounds);

/// Prints the median of the first contestant, and of each other one with the ratio first / other and the most that
/// it should be.
void Report(const std::string& what, const std::vector<Contestant>& contestants, const std::vector<double>& limits);

}  // namespace bench
