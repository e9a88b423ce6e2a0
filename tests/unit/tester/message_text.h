#pragma once

#include <string>

#include "tester_link/user_link.h"

/// Messages to the user interface as a test reads them.
namespace tester_link {

/// "a,b"
inline std::string itemText(const Items& items) {
  std::string text;
  for (const std::string& item : items) {
    text += (&item == &items.front() ? "" : ",") + item;
  }
  return text;
}

/// "2005|caption|text|0|a,b"
inline std::string messageText(const OutgoingMessage& message) {
  struct Describe {
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(const Items& items) const { return itemText(items); }
  };
  std::string text = std::to_string(message.tag);
  for (const OutgoingParameter& parameter : message.parameters) {
    text += '|' + std::visit(Describe{}, parameter);
  }
  return text;
}

}  // namespace tester_link
