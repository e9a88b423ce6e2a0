#pragma once

#include <functional>
#include <string>
#include <string_view>

/// Small operations on texts of 8-bit characters.

/// A range of character positions of a text, `to` just outside.
struct zTextRange {
  int from = 0;
  int to = 0;

  bool isEmpty() const { return from >= to; }
  bool operator==(const zTextRange&) const = default;
};

/// The letters of ASCII have two cases; no other byte has, whatever the locale.
constexpr char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr bool isSameLetter(char a, char b) {
  return lowerCase(a) == lowerCase(b);
}
bool equalIgnoringCase(std::string_view a, std::string_view b);

/// Whether `c` is a code below the blank, or Delete.
bool isControlCharacter(char c);

/// `text` without the blanks, tabs and line ends around it.
std::string trimmed(std::string_view text);

/// Text of any number of lines in the form of one line: line ends at its end go, and control
/// characters other than the tab become blanks. At each line end inside, `join` is called with what
/// has been put together so far, to add what stands for it.
std::string joinLines(std::string_view text, const std::function<void(std::string&)>& join);

/// The form of one line in which a line end is a blank.
std::string singleLine(std::string_view text);

/// A label as it is drawn.
struct zLabelText {
  std::string text;
  char mnemonic = 0;  ///< 0 for none
};

/// Takes the mnemonic out of a label: "&" makes the character behind it the mnemonic and goes away,
/// "&&" is a plain "&", and so is one at the end. The last mnemonic wins.
zLabelText takeMnemonic(std::string_view label);

/// The label that shows `text` as it is: takeMnemonic undoes this.
std::string withoutMnemonics(std::string_view text);

/// Replaces each tab by blanks up to the next multiple of eight from the start of its line.
std::string expandTabs(std::string_view text);
