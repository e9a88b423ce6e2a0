#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

/// What a run of the soak is to do, and what it has found.
struct Soak {
  /// All of a count's share in this run, at least one.
  int share(int whole) const { return std::max(1, whole / divisor); }
  int random(int end) { return std::uniform_int_distribution(0, end - 1)(generator); }
  void figure(std::string name, long value, const std::string& remark = "") {
    figures.emplace_back(std::move(name), std::to_string(value) + remark);
  }

  int divisor = 200;  ///< so many times less than the whole
  std::mt19937 generator;
  std::vector<std::pair<std::string, std::string>> figures;
};

inline Soak theSoak;
