// The soak's options.

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

#include "tests/soak/soak.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  unsigned seed = std::random_device()();
  CLI::App app("Uses nelkvui for years in one run and looks whether it is as it was.");
  app.add_option("--divisor", theSoak.divisor, "Do so many times less than the whole")
      ->take_last()
      ->check(CLI::Range(1, 1000))
      ->capture_default_str();
  app.add_option("--seed", seed, "Of what happens by chance; that of an earlier run repeats it");
  CLI11_PARSE(app, argc, argv);
  theSoak.generator.seed(seed);
  std::cout << "1/" << theSoak.divisor << " of the whole, --seed " << seed << std::endl;
  return RUN_ALL_TESTS();
}
