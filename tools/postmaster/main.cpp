#include "postmaster/options.h"
#include "postmaster/postmaster.h"

#include <iostream>
#include <utility>

int main(int argc, char** argv) {
  postmaster::CommandLine line = postmaster::parseCommandLine(argc, argv);
  if (!line.options) {
    (line.status == postmaster::kExitOrderly ? std::cout : std::cerr) << line.text;
    std::cerr << (line.status == postmaster::kExitOrderly ? "" : "\n");
    return line.status;
  }
  postmaster::Complaints complaints(std::cerr);
  postmaster::Postmaster postmaster(std::move(*line.options), complaints);
  return postmaster.run();
}
