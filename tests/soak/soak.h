#pragma once

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <random>
#include <string>

/// What a run of the soak is to do; it prints what is found.
struct Soak {
  /// All of a count's share in this run, at least one.
  int share(int whole) const { return std::max(1, whole / divisor); }
  int random(int end) { return std::uniform_int_distribution(0, end - 1)(generator); }
  void figure(const std::string& name, long value, const std::string& remark = "") const {
    std::cout << std::left << std::setw(46) << name << value << remark << "\n";
  }

  int divisor = 200;  ///< so many times less than the whole
  std::mt19937 generator;
};

inline Soak theSoak;
