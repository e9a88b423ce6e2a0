// Any pattern compiles without leaving its buffer, and matches without leaving the subject; all
// matchers find the same. The pattern is the input up to its first NUL, the subject the rest.

#include <algorithm>
#include <string>
#include <vector>

#include "support/regular_expression_parts.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/support/regexp_agreement.h"

void fuzz(std::span<const std::uint8_t> data) {
  const std::string input(data.begin(), data.end());
  const std::size_t cut = std::min(input.find('\0'), input.size());
  std::string subject = input.substr(std::min(cut + 1, input.size()));
  std::replace(subject.begin(), subject.end(), '\0', '.');
  // On the heap and as long as it must be, so that the sanitizer sees each step outside.
  const std::vector<char> pattern(input.c_str(), input.c_str() + cut + 1);
  std::vector<char> form(256);
  char* const limit = form.data() + form.size();

  char* const end = regexp::compile(pattern.data(), form.data(), limit, '\0');
  require((end == nullptr) == (regexp::compileError() != regexp::kNoError));
  if (end == nullptr) {
    return;
  }
  require(end <= limit && end[-1] == regexp::CCEOF);
  require(matchersAgree(subject, form.data()).value_or(true));
  if (regexp::step(subject.c_str(), form.data()) != 0) {
    int length = 0;
    const char* from = regexp::matchLength(&length);
    require(from >= subject.c_str() && length >= 0);
    require(from + length <= subject.c_str() + subject.size());
  }
}
