// Entry of the checker of button files.

#include "btnlint/lint.h"
#include "support/descriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <sstream>

namespace {

int checkFile(const std::string& name) {
  std::ostringstream remarks;
  const UniqueFile file(std::fopen(name.c_str(), "r"));
  const std::size_t count = file ? btnlint::lint(name, file.get(), remarks) : 0;
  if (!file || std::ferror(file.get()) != 0) {
    std::cerr << "nel-btnlint: cannot read " << name << ": " << std::strerror(errno) << '\n';
    return btnlint::kExitTrouble;
  }
  std::cout << remarks.str();
  return count > 0 ? btnlint::kExitRemarks : btnlint::kExitClean;
}

}  // namespace

int main(int argc, char** argv) {
  const btnlint::CommandLine line = btnlint::parseCommandLine(argc, argv);
  if (!line.files) {
    (line.status == btnlint::kExitClean ? std::cout : std::cerr) << line.text;
    return line.status;
  }
  int status = btnlint::kExitClean;
  for (const std::string& name : *line.files) {
    status = std::max(status, checkFile(name));
  }
  if (!std::cout.flush()) {
    std::cerr << "nel-btnlint: cannot write its remarks\n";
    return btnlint::kExitTrouble;
  }
  return status;
}
