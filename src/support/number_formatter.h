#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "support/text.h"

/// How numbers are written; one is shared by all formatters that are given none.
struct zNumLocale {
  char minus = '-';
  char plus = '+';
};

/// How zNumFormatter::format writes a number.
enum zNumFormatFlag : int {
  kNumRead = 0x40000,  ///< bare, for reading its value
  kNumShow = 0x80000,  ///< as a field shows it
};

/// Answers of zNumFormatter::editKey.
enum zNumKeyResult : int {
  kNumKeySwallowed = 0,
  kNumKeyDefault = 1,   ///< the formatter has no interest in the key
  kNumKeyReplaced = 2,  ///< text and selection have changed
};

/// What a picture says. "-##########" is an optional minus sign and up to ten digits.
struct zNumPicture {
  static constexpr int kDefaultRounding = 3;

  bool signAllowed = false;         ///< "-", "+" or "$"
  bool plusShown = false;           ///< "+": positive numbers may carry a plus sign
  bool isCurrency = false;          ///< "$"
  bool hasForm = false;             ///< "F"
  bool keepsFill = false;           ///< "T" behind the fill character
  char leftFill = ' ';              ///< behind "L"
  int rounding = kDefaultRounding;  ///< behind "R", 1 to 3
  int digits = 0;                   ///< number of "#"

  /// The letters stand before the first "#", in any order, with blanks between them if need be.
  /// Nothing for a text with anything else in it.
  static std::optional<zNumPicture> parse(std::string_view text);
};

/// Checks and formats a whole number against a picture while it is being typed. With a picture that
/// cannot be parsed it accepts every text.
class zNumFormatter {
 public:
  /// Whether a key puts text in or takes the selected text out.
  enum class Edit { insert, remove };

  /// `flags` (zNumFormatFlag) is what format() goes by when it is given none. `locale`, which must
  /// outlive the formatter, may be null.
  zNumFormatter(int flags, std::string_view pictureText, const zNumLocale* numLocale = nullptr);
  zNumFormatter(const zNumFormatter&) = delete;
  zNumFormatter& operator=(const zNumFormatter&) = delete;
  virtual ~zNumFormatter() = default;

  /// Offers `key` (a character code, negative for the upper half, or a keysym), which is about to
  /// change `selection` of `text`; an empty selection is the caret. Digits and signs that fit are
  /// put in, other printable characters swallowed; all other keys are left to the field.
  /// A zNumKeyResult.
  virtual int editKey(std::string& text, long key, Edit edit, zTextRange& selection) const;
  /// 1 if `text` is a number by the picture, or empty; otherwise 0, and `badRange` is the part from
  /// the first fault on.
  virtual int checkText(std::string_view text, zTextRange& badRange) const;
  /// Where the caret belongs once `text` has been put into a field.
  virtual int caretAfter(std::string_view text) const;

  /// Makes `out` of `in`: drops blanks, characters that the picture has no place for, and a plus
  /// sign unless it is shown. 1 if nothing but blanks and plus signs was dropped.
  int format(std::string& out, std::string_view in, int flags = 0) const;
  /// Whether `text` may stand in a field while the user types: a number or the beginning of one.
  bool fits(std::string_view text) const;

  const std::optional<zNumPicture>& picture() const { return form; }

 private:
  bool isSign(char c) const;
  /// Position of the first character that does not fit; the length if all do.
  std::size_t firstMisfit(std::string_view text) const;

  std::optional<zNumPicture> form;
  const zNumLocale& locale;
  int defaultFlags;
};
