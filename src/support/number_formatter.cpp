// Numbers under a picture. One rule decides everything: a text fits if it is a sign (where one is
// allowed) in the first place and then digits up to the picture's count. A key is good when the
// text that it would leave fits.

#include "support/number_formatter.h"

#include <algorithm>

namespace {

constexpr long kFirstPrintable = ' ';
constexpr long kLastCharacter = 0xFF;
constexpr long kDelete = 0x7F;

const zNumLocale& sharedLocale() {
  static const zNumLocale locale;
  return locale;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Characters arrive sign-extended, so the upper half of the code page is negative; keysyms lie
// above all characters.
bool isPrintable(long key) {
  return key < 0 || (key >= kFirstPrintable && key <= kLastCharacter && key != kDelete);
}

zTextRange clampTo(std::string_view text, zTextRange range) {
  const int length = static_cast<int>(text.size());
  range.from = std::clamp(range.from, 0, length);
  range.to = std::clamp(range.to, range.from, length);
  return range;
}

// Reads one prefix letter and what belongs to it.
bool parseLetter(zNumPicture& picture, std::string_view text, std::size_t& at) {
  const auto next = [&] { return at + 1 < text.size() ? text[at + 1] : '\0'; };
  switch (text[at]) {
    case ' ':
      return true;
    case '-':
      picture.signAllowed = true;
      return true;
    case '+':
      picture.signAllowed = picture.plusShown = true;
      return true;
    case '$':
      picture.signAllowed = picture.isCurrency = true;
      return true;
    case 'F':
      picture.hasForm = true;
      return true;
    case 'L':
      picture.leftFill = next();
      ++at;
      if (next() == 'T') {
        picture.keepsFill = true;
        ++at;
      }
      return picture.leftFill != '\0';
    case 'R':
      picture.rounding = next() - '0';
      ++at;
      return picture.rounding >= 1 && picture.rounding <= zNumPicture::kDefaultRounding;
    default:
      return false;
  }
}

}  // namespace

std::optional<zNumPicture> zNumPicture::parse(std::string_view text) {
  zNumPicture picture;
  std::size_t at = 0;
  for (; at < text.size() && text[at] != '#'; ++at) {
    if (!parseLetter(picture, text, at)) {
      return std::nullopt;
    }
  }
  if (at >= text.size() || text.find_first_not_of('#', at) != std::string_view::npos) {
    return std::nullopt;
  }
  picture.digits = static_cast<int>(text.size() - at);
  return picture;
}

zNumFormatter::zNumFormatter(int flags, std::string_view pictureText, const zNumLocale* numLocale)
    : form(zNumPicture::parse(pictureText)),
      locale(numLocale != nullptr ? *numLocale : sharedLocale()),
      defaultFlags(flags) {}

bool zNumFormatter::isSign(char c) const {
  return (form->signAllowed && c == locale.minus) || (form->plusShown && c == locale.plus);
}

std::size_t zNumFormatter::firstMisfit(std::string_view text) const {
  const std::size_t signLength = !text.empty() && isSign(text.front()) ? 1 : 0;
  const std::size_t longest = signLength + static_cast<std::size_t>(form->digits);
  std::size_t at = signLength;
  while (at < text.size() && at < longest && isDigit(text[at])) {
    ++at;
  }
  return at;
}

bool zNumFormatter::fits(std::string_view text) const {
  return !form || firstMisfit(text) == text.size();
}

int zNumFormatter::editKey(std::string& text, long key, Edit edit, zTextRange& selection) const {
  if (!form) {
    return kNumKeyDefault;
  }
  const zTextRange range = clampTo(text, selection);
  const bool removes = edit == Edit::remove && !range.isEmpty();
  if (!removes && !isPrintable(key)) {
    return kNumKeyDefault;
  }
  std::string changed = text;
  const std::string typed = removes ? std::string() : std::string(1, static_cast<char>(key));
  changed.replace(static_cast<std::size_t>(range.from),
                  static_cast<std::size_t>(range.to - range.from), typed);
  if (!removes && !fits(changed)) {
    return kNumKeySwallowed;
  }
  text = std::move(changed);
  const int caret = range.from + static_cast<int>(typed.size());
  selection = {caret, caret};
  return kNumKeyReplaced;
}

int zNumFormatter::checkText(std::string_view text, zTextRange& badRange) const {
  if (!form) {
    return 1;
  }
  std::size_t bad = firstMisfit(text);
  // A sign alone is the beginning of a number, but none.
  if (bad == text.size() && text.size() == 1 && isSign(text.front())) {
    bad = 0;
  }
  if (bad == text.size()) {
    return 1;
  }
  badRange = {static_cast<int>(bad), static_cast<int>(text.size())};
  return 0;
}

int zNumFormatter::caretAfter(std::string_view text) const {
  return static_cast<int>(text.size());
}

int zNumFormatter::format(std::string& out, std::string_view in, int flags) const {
  if (!form) {
    out = in;
    return 1;
  }
  const bool keepsPlus = form->plusShown && ((flags != 0 ? flags : defaultFlags) & kNumShow) != 0;
  int isWhole = 1;
  std::string made;
  for (const char c : in) {
    if (c == ' ' || (c == locale.plus && made.empty() && !keepsPlus)) {
      continue;
    }
    made += c;
    if (!fits(made)) {
      made.pop_back();
      isWhole = 0;
    }
  }
  out = std::move(made);
  return isWhole;
}
