// The compiler of regular expressions: one pass over the pattern, from left to right. Each byte
// goes through put, which holds the bound of the buffer; the first error ends the pass. What it
// writes is always well formed: operands are complete, group numbers are those of the pattern, no
// operand asks for a NUL, and CCEOF stands at the end. The matcher relies on that.

#include <algorithm>
#include <cstddef>

#include "support/regular_expression_parts.h"

namespace regexp {

bool circf = false;
int nbra = 0;

namespace {

constexpr int kBitsPerByte = 8;

Error lastError = kNoError;

bool isDigit(Byte c) {
  return c >= '0' && c <= '9';
}

/// The members of a class, collected while it is read.
class ClassTable {
 public:
  void add(unsigned c) { bits[c / kBitsPerByte] |= static_cast<Byte>(1U << (c % kBitsPerByte)); }
  void exclude(unsigned c) {
    bits[c / kBitsPerByte] &= static_cast<Byte>(~(1U << (c % kBitsPerByte)));
  }
  void invert() {
    for (Byte& byte : bits) {
      byte = static_cast<Byte>(~byte);
    }
  }
  Byte operator[](int index) const { return bits[static_cast<std::size_t>(index)]; }

 private:
  std::array<Byte, kWideTable> bits{};
};

class Compiler {
 public:
  Compiler(const char* pattern, char* buffer, char* bufferEnd, int endChar)
      : in(pattern), out(buffer), limit(bufferEnd), endByte(static_cast<Byte>(endChar)) {}

  Error run();
  char* end() const { return out; }
  bool isEmptyPattern() const { return isAtEnd() || peek() == '\n'; }

 private:
  Byte peek() const { return static_cast<Byte>(*in); }
  Byte take() { return static_cast<Byte>(*in++); }
  bool isAtEnd() const { return peek() == '\0' || peek() == endByte; }
  void fail(Error code) { error = error == kNoError ? code : error; }
  void needRoom(int bytes);
  void put(int byte);

  void compileOne();
  void compileEscape();
  void openGroup();
  void closeGroup();
  void referToGroup(int group);
  void compileClass();
  void emitClass(ClassTable& table, bool isWide, bool isNegated);
  void compileRange();
  int rangeNumber();
  void beginItem(Code code);
  void literal(Byte c);
  void repeat(Code repetition);

  const char* in;
  char* out;
  char* limit;
  Byte endByte;
  char* item = nullptr;  ///< the item that a repetition would repeat
  std::array<int, kMaxGroups> open{};
  int openCount = 0;
  std::array<bool, kMaxGroups> closed{};
  Error error = kNoError;
};

Error Compiler::run() {
  nbra = 0;
  circf = peek() == '^' && !isAtEnd();
  if (circf) {
    ++in;
  }
  while (error == kNoError && !isAtEnd()) {
    compileOne();
  }
  if (openCount != 0) {
    fail(kUnbalancedGroups);
  }
  put(CCEOF);
  return error;
}

void Compiler::needRoom(int bytes) {
  if (limit - out < bytes) {
    fail(kPatternTooLong);
  }
}

void Compiler::put(int byte) {
  needRoom(1);
  if (error == kNoError) {
    *out++ = static_cast<char>(byte);
  }
}

void Compiler::beginItem(Code code) {
  item = out;
  put(code);
}

void Compiler::literal(Byte c) {
  beginItem(CCHR);
  put(c);
}

void Compiler::repeat(Code repetition) {
  const int code = static_cast<Byte>(*item);
  if ((code & kRepetitionBits) == RNGE) {
    out -= kRangeBytes;  // the range that is replaced
  }
  *item = static_cast<char>((code & ~kRepetitionBits) | repetition);
}

void Compiler::compileOne() {
  const Byte c = take();
  switch (c) {
    case '\n':
      return fail(kMisplacedEnd);
    case '.':
      return beginItem(CDOT);
    case '*':
      return item == nullptr ? literal(c) : repeat(STAR);
    case '$':
      return isAtEnd() || peek() == '\n' ? put(CDOL) : literal(c);
    case '[':
      return compileClass();
    case '\\':
      return compileEscape();
    default:
      return literal(c);
  }
}

void Compiler::compileEscape() {
  if (peek() == '\0' || peek() == '\n') {
    return fail(kMisplacedEnd);
  }
  const Byte c = take();
  switch (c) {
    case '(':
      return openGroup();
    case ')':
      return closeGroup();
    case '{':
      return item == nullptr ? literal(c) : compileRange();
    case 'n':
      return literal('\n');
    default:
      return isDigit(c) && c != '0' ? referToGroup(c - '1') : literal(c);
  }
}

void Compiler::openGroup() {
  if (nbra >= kMaxGroups) {
    return fail(kTooManyGroups);
  }
  open[static_cast<std::size_t>(openCount++)] = nbra;
  put(CBRA);
  put(nbra++);
  item = nullptr;
}

void Compiler::closeGroup() {
  if (openCount == 0) {
    return fail(kUnbalancedGroups);
  }
  const int group = open[static_cast<std::size_t>(--openCount)];
  closed[static_cast<std::size_t>(group)] = true;
  put(CKET);
  put(group);
  item = nullptr;
}

void Compiler::referToGroup(int group) {
  if (!closed[static_cast<std::size_t>(group)]) {
    return fail(kGroupNotClosed);
  }
  beginItem(CBACK);
  put(group);
}

// A "]" that comes first is a member. A "-" is one too when nothing precedes it or "]" follows.
// Of a range that runs backwards only the two ends are members.
void Compiler::compileClass() {
  needRoom(1 + kNarrowTable);
  const bool isNegated = peek() == '^';
  if (isNegated) {
    ++in;
  }
  ClassTable table;
  bool isWide = false;
  Byte previous = '\0';
  do {
    Byte c = take();
    const bool isRange = c == '-' && previous != '\0' && peek() != ']';
    if (isRange) {
      c = take();
    }
    if (c == '\0' || c == '\n') {
      return fail(kClassNotClosed);
    }
    if (c >= kTopBit && !isWide) {
      needRoom(1 + kWideTable);
      isWide = true;
    }
    for (unsigned member = isRange ? previous : c; member < c; ++member) {
      table.add(member);
    }
    table.add(c);
    previous = c;
  } while (peek() != ']');
  ++in;
  emitClass(table, isWide, isNegated);
}

// A narrow class is negated by its code: its table names what does not match, and NUL with it. A
// wide one is negated by its table.
void Compiler::emitClass(ClassTable& table, bool isWide, bool isNegated) {
  if (isNegated && isWide) {
    table.invert();
    table.exclude('\0');
  } else if (isNegated) {
    table.add('\0');
  }
  const Code narrow = isNegated ? NCCL : CCL;
  beginItem(isWide ? CXCL : narrow);
  for (int i = 0; i < (isWide ? kWideTable : kNarrowTable); ++i) {
    put(table[i]);
  }
}

void Compiler::compileRange() {
  const int low = rangeNumber();
  int high = low;
  if (error == kNoError && peek() == ',') {
    ++in;
    high = peek() == '\\' ? kNoLimit : rangeNumber();
    if (error == kNoError && peek() == ',') {
      fail(kTooManyNumbers);
    }
  }
  if (error != kNoError) {
    return;
  }
  ++in;  // the backslash, the one other character that a number ends at
  if (peek() != '}') {
    return fail(kRangeEndExpected);
  }
  ++in;
  if (low > high) {
    return fail(kRangeReversed);
  }
  repeat(RNGE);
  put(low);
  put(high);
}

int Compiler::rangeNumber() {
  constexpr int kTen = 10;
  int number = 0;
  do {
    const Byte c = peek();
    if (!isDigit(c)) {
      fail(kNotADigit);
      return 0;
    }
    number = std::min(number * kTen + (c - '0'), kMaxRange + 1);
    ++in;
  } while (peek() != '\\' && peek() != ',');
  if (number > kMaxRange) {
    fail(kRangeTooLarge);
  }
  return number;
}

/// The end of the form that is in the buffer; null when it does not end there.
char* endOfCompiled(char* buffer, const char* bufferEnd) {
  while (buffer < bufferEnd) {
    const int code = static_cast<Byte>(*buffer);
    if (code == CCEOF) {
      return buffer + 1;
    }
    const bool hasRange = (code & kRepetitionBits) == RNGE;
    const int length = 1 + operandLength(code) + (hasRange ? kRangeBytes : 0);
    if (length >= bufferEnd - buffer) {
      break;
    }
    buffer += length;
  }
  return nullptr;
}

}  // namespace

char* compile(const char* pattern, char* buffer, char* bufferEnd, int endChar) {
  if (buffer >= bufferEnd) {
    lastError = kPatternTooLong;
    return nullptr;
  }
  Compiler compiler(pattern, buffer, bufferEnd, endChar);
  if (compiler.isEmptyPattern()) {
    char* end = *buffer == '\0' ? nullptr : endOfCompiled(buffer, bufferEnd);
    lastError = end == nullptr ? kEmptyPattern : kNoError;
    return end;
  }
  lastError = compiler.run();
  if (lastError != kNoError) {
    *buffer = '\0';
    return nullptr;
  }
  return compiler.end();
}

Error compileError() {
  return lastError;
}

}  // namespace regexp
