#pragma once

/// A range of character positions of a text, `to` just outside.
struct zTextRange {
  int from = 0;
  int to = 0;

  bool isEmpty() const { return from >= to; }
  bool operator==(const zTextRange&) const = default;
};
