#include "support/regular_expression_elements.h"

namespace regexp {

namespace {

std::optional<Element> simpleElement(int code) {
  switch (code) {
    case CBRA:
      return Element{.kind = Element::Kind::kGroupStart};
    case CKET:
      return Element{.kind = Element::Kind::kGroupEnd};
    case CDOL:
      return Element{.kind = Element::Kind::kSubjectEnd};
    default:
      break;
  }
  switch (code & ~kRepetitionBits) {
    case CBACK:
      return Element{.kind = Element::Kind::kReference};
    case CCHR:
    case CDOT:
    case CCL:
    case CXCL:
    case NCCL:
      return Element{};
    default:
      return std::nullopt;
  }
}

/// Reads an element and moves on to the next code.
std::optional<Element> takeElement(const char*& compiled) {
  const int code = static_cast<Byte>(*compiled++);
  std::optional<Element> element = simpleElement(code);
  if (!element) {
    return std::nullopt;
  }
  const int kind = code & ~kRepetitionBits;
  const char* operand = compiled;
  compiled += operandLength(code);
  if (element->kind == Element::Kind::kItem) {
    for (std::size_t c = 1; c < kCharacters; ++c) {
      element->takes[c] = takesCharacter(kind, operand, static_cast<Byte>(c));
    }
  } else if (element->kind != Element::Kind::kSubjectEnd) {
    element->group = static_cast<Byte>(*operand);
  }
  const bool isMark = code == CBRA || code == CKET || code == CDOL;
  const Times times = isMark ? Times{} : takeTimes(code, compiled);
  element->low = times.low;
  element->high = times.high;
  return element;
}

}  // namespace

Times takeTimes(int code, const char*& compiled) {
  switch (code & kRepetitionBits) {
    case STAR:
      return {0, kAnyNumber};
    case RNGE: {
      const std::size_t low = static_cast<Byte>(*compiled++);
      const std::size_t high = static_cast<Byte>(*compiled++);
      return {low, high == kNoLimit ? low + kUnlimitedRange : high};
    }
    default:
      return {};
  }
}

std::optional<std::vector<Element>> elementsOf(const char* compiled) {
  std::vector<Element> elements;
  bool isBehindEnd = false;
  while (*compiled != CCEOF) {
    std::optional<Element> element = takeElement(compiled);
    if (!element || isBehindEnd) {
      return std::nullopt;
    }
    isBehindEnd = element->kind == Element::Kind::kSubjectEnd;
    elements.push_back(*element);
  }
  return elements;
}

}  // namespace regexp
