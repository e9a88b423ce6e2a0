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
  std::string rest = input.substr(std::min(cut + 1, input.size()));
  std::replace(rest.begin(), rest.end(), '\0', '.');
  // On the heap and as long as they must be, so that the sanitizer sees each step outside.
  const std::vector<char> pattern(input.c_str(), input.c_str() + cut + 1);
  const std::vector<char> subject(rest.c_str(), rest.c_str() + rest.size() + 1);
  std::vector<char> buffer(256);
  char* const form = buffer.data();
  char* const limit = form + buffer.size();

  char* const end = regexp::compile(pattern.data(), form, limit, '\0');
  require((end == nullptr) == (regexp::compileError() != regexp::kNoError));
  if (end == nullptr) {
    require(form[0] == '\0');
    return;
  }
  require(end > form && end <= limit && end[-1] == regexp::CCEOF);
  require(regexp::compile("", form, limit, '\0') == end);

  require(matchersAgree(rest, form).value_or(true));
  if (regexp::step(subject.data(), form) != 0) {
    int length = 0;
    const char* from = regexp::matchLength(&length);
    require(from >= subject.data() && length >= 0);
    require(from + length <= subject.data() + rest.size());
    require(regexp::advance(from, form) != 0 && regexp::loc2 == from + length);
  }
}
