#pragma once

#include <deque>
#include <functional>
#include <string>

#include "gdb/mi/record.h"

namespace gdb {

/// What is asked of GDB by its machine interface: one query after the other, so that what GDB
/// prints meanwhile belongs to the one that is under way.
class QueryQueue {
 public:
  /// Takes the result record, with what the query printed as its text.
  using Handler = std::function<void(const mi::Record&)>;
  using Writer = std::function<void(const std::string&)>;

  /// Writes lines with `writer`, which must outlive the queue.
  explicit QueryQueue(Writer lineWriter) : writer(std::move(lineWriter)) {}

  /// A command of the machine interface, or a console command, whose text is kept from the console.
  void ask(const std::string& line, Handler handler);
  /// GDB answers now nothing but what isUrgent(); all else waits.
  void setHeld(bool isHeld);
  /// Writes a line whose result nobody waits for, before all that waits.
  void tell(const std::string& line);

  /// Takes a record of GDB; false when it is none of a query.
  bool take(const mi::Record& record);
  /// GDB has ended: answers all queries with an error.
  void fail(const std::string& message);
  /// Whether a query is under way.
  bool isAsking() const { return isUnderWay; }

 private:
  struct Query {
    std::string line;
    Handler handler;
  };
  void next();

  Writer writer;
  std::deque<Query> waiting;
  Query present;
  bool isUnderWay = false;
  bool held = false;
  unsigned token = 0;  ///< of the last query
  std::string text;    ///< of the present query
};

/// Whether GDB answers a query also while its target runs.
bool isUrgent(const std::string& line);

}  // namespace gdb
