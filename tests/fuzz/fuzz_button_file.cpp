// Any bytes read as a button file, and checked as one: as many lines come out as are counted, and a
// bounded amount. What the set holds is not more than the file held, and a file of
// which the reader has nothing to remark reads the same again after a save.

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>

#include "btnlint/lint.h"
#include "button_file/button_file_reader.h"
#include "support/descriptor.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  const std::string input(data.begin(), data.end());
  bool isRemarked = false;
  const ButtonSet set = readButtonFile(std::string_view(input), [&](const ButtonFileNote& note) {
    isRemarked = true;
    require(note.line > 0 && note.line <= input.size() && note.text.size() <= input.size());
  });
  require(readButtonFile(std::string_view(input)) == set);

  const std::string saved = formatButtonSet(set);
  constexpr std::size_t kMostWrittenForOneByte = 20;  // a separator or a header of one letter
  require(saved.size() <= kMostWrittenForOneByte * input.size());
  if (!isRemarked) {
    require(readButtonFile(std::string_view(saved)) == set);
  }
  if (!data.empty()) {  // of nothing there is no file in memory
    const UniqueFile file(::fmemopen(const_cast<std::uint8_t*>(data.data()), data.size(), "rb"));
    std::ostringstream output;
    const std::size_t count = btnlint::lint("set", file.get(), output);
    const std::string text = output.str();
    require(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) == count);
    require(count <= btnlint::kMaxLineRemarks + 10);
  }
}
