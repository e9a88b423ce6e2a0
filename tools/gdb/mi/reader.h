#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "gdb/mi/record.h"

namespace gdb::mi {

/// Makes records of what GDB writes on its machine interface, however it is cut. What it cannot
/// read becomes a record of kind kGarbage; nothing throws. Knows the syntax and no command.
class Reader {
 public:
  /// Bytes of one line; of a longer one the rest is passed over, and it becomes garbage.
  static constexpr std::size_t kMaxLine = std::size_t{16} << 20;
  /// Depth of tuples and lists in each other; a line with more becomes garbage.
  static constexpr int kMaxDepth = 64;

  /// Takes the next bytes; the records of the lines that they end, in their order.
  std::vector<Record> feed(std::string_view bytes);

 private:
  std::string line;
  bool isTooLong = false;
};

/// One line without its end.
Record readLine(std::string_view line);

/// `text` as a C string with its quotes, as commands of the machine interface take it.
std::string quoted(std::string_view text);

}  // namespace gdb::mi
