#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace gdb {

/// A line of the user's that is being carried out.
struct Line {
  std::string text;         ///< as he typed it
  bool isConfirmed = true;  ///< its end is told
  bool isOpen = true;
};

/// The lines that are being carried out: one that runs the target, as a rule, and one beside it.
/// What goes on later, with an answer or at a command's end, goes on for the line for which it was
/// begun, if that is still open.
class OpenLines {
 public:
  using Pointer = std::shared_ptr<Line>;

  /// The line for which something is done now; null for none.
  const Pointer& current() const { return present; }
  bool isEmpty() const { return lines.empty(); }

  /// Carries out `work` for a new line.
  template <typename Work>
  void open(std::string text, bool isConfirmed, Work work) {
    lines.push_back(std::make_shared<Line>(Line{std::move(text), isConfirmed}));
    const Turn turn(present, lines.back());
    work();
  }

  /// Makes of `work` what does it for the present line.
  template <typename Work>
  auto bind(Work work) {
    return [this, line = present, work = std::move(work)](const auto&... parameters) {
      if (line == nullptr || line->isOpen) {
        const Turn turn(present, line);
        work(parameters...);
      }
    };
  }

  void close(const Pointer& line) {
    line->isOpen = false;
    std::erase(lines, line);
  }
  void closeAll() {
    while (!lines.empty()) {
      close(Pointer(lines.back()));
    }
  }

 private:
  class Turn {
   public:
    Turn(Pointer& presentLine, Pointer line)
        : present(presentLine), before(std::exchange(presentLine, std::move(line))) {}
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() { present = std::move(before); }

   private:
    Pointer& present;
    Pointer before;
  };

  std::vector<Pointer> lines;
  Pointer present;
};

}  // namespace gdb
