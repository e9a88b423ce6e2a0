#include "benchmarks/probe_main.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>

int runProbe(std::initializer_list<Measure> measures, int argc, char** argv) {
  const Words words(argv + 1, argv + argc);
  try {
    for (const Measure& measure : measures) {
      if (!words.empty() && words.front() == measure.name) {
        measure.take(words);
        return EXIT_SUCCESS;
      }
    }
    throw std::runtime_error("no such measure; see the head of the source");
  } catch (const std::exception& error) {
    std::cerr << argv[0] << ": " << error.what() << "\n";
    return EXIT_FAILURE;
  }
}

std::string ownDisplay() {
  const char* const name = std::getenv("DISPLAY");
  return name != nullptr ? name : "";
}
