// Any pattern compiles without leaving its buffer, and matches without leaving the subject; all
// matchers find the same. The pattern is the input up to its first NUL, the subject the rest.

#include <algorithm>
#include <memory>
#include <string>

#include "support/regular_expression_parts.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/support/regexp_agreement.h"

namespace {

constexpr std::size_t kFormSize = 256;

// On the heap and as long as it must be, so that the sanitizer sees each step outside.
std::unique_ptr<char[]> exactCopy(const std::string& text) {
  auto copy = std::make_unique<char[]>(text.size() + 1);
  std::copy(text.begin(), text.end(), copy.get());
  return copy;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(data, data + size);
  const std::size_t cut = std::min(input.find('\0'), input.size());
  const auto pattern = exactCopy(input.substr(0, cut));
  std::string rest = input.substr(std::min(cut + 1, input.size()));
  std::replace(rest.begin(), rest.end(), '\0', '.');
  const auto subject = exactCopy(rest);

  const auto form = std::make_unique<char[]>(kFormSize);
  char* end = regexp::compile(pattern.get(), form.get(), form.get() + kFormSize, '\0');
  require((end == nullptr) == (regexp::compileError() != regexp::kNoError));
  if (end == nullptr) {
    require(form[0] == '\0');
    return 0;
  }
  require(end > form.get() && end <= form.get() + kFormSize && end[-1] == regexp::CCEOF);
  require(regexp::compile("", form.get(), form.get() + kFormSize, '\0') == end);

  require(matchersAgree(rest, form.get()).value_or(true));
  if (regexp::step(subject.get(), form.get()) != 0) {
    int length = 0;
    const char* from = regexp::matchLength(&length);
    require(from >= subject.get() && length >= 0);
    require(from + length <= subject.get() + rest.size());
    require(regexp::advance(from, form.get()) != 0 && regexp::loc2 == from + length);
  }
  return 0;
}
