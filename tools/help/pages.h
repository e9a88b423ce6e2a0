#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace help {

/// A page of the installed documentation: a manual page, or a file among the documents.
struct Page {
  std::string_view topic;        ///< as the window asks for it
  std::string_view manual;       ///< its file, "man1/nelkvui.1"
  std::string_view document;     ///< empty when the manual page tells all
  std::string_view tester = {};  ///< the tester that it is about; empty for all without one
};

/// The page for a topic while `tester` runs, a program's name; the window's own manual for a topic
/// that is not known.
const Page& pageOf(std::string_view topic, std::string_view tester = {});

/// Where things are.
struct Surroundings {
  std::string documents;  ///< folder of the documents
  std::string manuals;    ///< folder of the manual pages
  std::function<bool(const std::string& file)> exists;
  std::function<std::optional<std::string>(const std::string& program)> find;
  std::function<std::string(const char* name)> variable;  ///< of the environment, "" when unset
};

/// The command that shows a page in a terminal, with the user's pager, or in his browser: words
/// with the program's path first. Empty when there is neither, or no such page.
std::vector<std::string> viewerOf(const Page& page, const Surroundings& surroundings);

/// One line for the log about a page that cannot be shown.
std::string whereIs(const Page& page, const Surroundings& surroundings);

}  // namespace help
