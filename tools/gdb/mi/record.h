#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace gdb::mi {

/// A value of the machine interface's output syntax (GDB manual, "GDB/MI Output Syntax"): a string,
/// a tuple or a list. The elements of a tuple have names; those of a list may have, and tuples
/// without names occur.
class Value {
 public:
  enum class Kind { kString, kTuple, kList };
  struct Element;

  Value();
  explicit Value(std::string string);
  Value(Kind kindOfValue, std::vector<Element> elements);

  Kind kind() const { return valueKind; }
  /// The string's bytes with its escapes undone; empty for the others.
  const std::string& string() const { return text; }
  const std::vector<Element>& elements() const { return members; }

  /// The first element of that name; an empty string value when there is none.
  const Value& operator[](std::string_view name) const;
  bool has(std::string_view name) const;

 private:
  Kind valueKind = Kind::kString;
  std::string text;
  std::vector<Element> members;
};

struct Value::Element {
  std::string name;  ///< empty when the element has none
  Value value;
};

/// One line of the machine interface's output.
struct Record {
  enum class Kind {
    kResult,   ///< ^
    kExec,     ///< *
    kStatus,   ///< +
    kNotify,   ///< =
    kConsole,  ///< ~
    kTarget,   ///< @
    kLog,      ///< &
    kPrompt,   ///< (gdb)
    kGarbage,  ///< a line that is none of these; `text` has it
  };
  Kind kind = Kind::kGarbage;
  std::string token = {};  ///< digits before the mark; empty without
  std::string name = {};   ///< class of results and of asynchronous records: "done", "stopped"
  Value results = {};      ///< a tuple of what follows the class
  std::string text = {};   ///< of stream records, escapes undone
};

}  // namespace gdb::mi
