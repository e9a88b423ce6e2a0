// Any bytes read as a button file. What the set holds is not more than the file held, and a file of
// which the reader has nothing to remark reads the same again after a save.

#include <string>
#include <string_view>

#include "button_file/button_file_reader.h"
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
}
