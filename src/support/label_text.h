#pragma once

#include <string>
#include <string_view>

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
