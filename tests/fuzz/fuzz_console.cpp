// Any bytes as GDB's console, cut where their first byte says: every byte comes out, as text or as
// a prompt, and what is asked does not depend on the cuts and is bounded.

#include <algorithm>

#include "gdb/console/splitter.h"
#include "tests/fuzz/fuzz_target.h"

namespace {

std::string split(gdb::ConsoleSplitter& splitter, std::string_view bytes, std::size_t step) {
  std::string all;
  for (; !bytes.empty(); bytes.remove_prefix(std::min(step, bytes.size()))) {
    for (const auto& [text, prompt] : splitter.feed(bytes.substr(0, step))) {
      require(text.empty() == prompt.has_value());
      all += prompt ? gdb::ConsoleSplitter::promptOf(*prompt) : text;
    }
  }
  return all;
}

}  // namespace

void fuzz(std::span<const std::uint8_t> data) {
  const std::string_view bytes(reinterpret_cast<const char*>(data.data()), data.size());
  gdb::ConsoleSplitter whole;
  gdb::ConsoleSplitter cut;
  std::string seen = split(whole, bytes, bytes.size() + 1);
  require(bytes.starts_with(seen));
  require(split(cut, bytes, data.empty() ? 1 : 1 + data[0]) == seen);
  const std::string question = whole.question();
  require(question.size() <= 2000);
  require(question.empty() == (whole.dialogue() == gdb::Dialogue::kNone));
  require(cut.dialogue() == whole.dialogue() && cut.question() == question);
  seen += split(whole, ".", 1);  // which no prompt goes on with
  require(seen == std::string(bytes) + '.');
}
