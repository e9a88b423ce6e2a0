// Event handlers remove items, walks and the whole list in the middle of walks over it.

#include "support/lists.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <string>

namespace {

using List = zTypedDlist<char>;

/// Plays a script on a list of letters and three walks over it, and returns what was answered, "."
/// for nothing. A verb stands before all that it is applied to, one after the other:
///
///   +abc append   ^a put in front   -a remove   =a replace by e   <. >.. pop the first, the last
///   two n12 next item of walks 1 and 2   x1 remove what a walk stands on   r1 reset   d1 delete it
///   ?. whether the list is empty   ~. delete the list
std::string played(const std::string& script) {
  static std::string letters = "abcde";
  const auto item = [](char letter) { return &letters[letters.find(letter)]; };
  auto list = std::make_unique<List>();
  std::map<char, std::unique_ptr<List::Iter>> walks;
  for (const char walk : {'1', '2', '3'}) {
    walks[walk] = std::make_unique<List::Iter>(*list);
  }
  std::string answers;
  const auto note = [&](const char* answer) { answers += answer != nullptr ? *answer : '.'; };
  const std::map<char, std::function<void(char)>> verbs = {
      {'+', [&](char what) { list->append(item(what)); }},
      {'^', [&](char what) { list->add(item(what)); }},
      {'-', [&](char what) { answers += list->remove(item(what)) ? 'y' : 'n'; }},
      {'=', [&](char what) { answers += list->replace(item(what), item('e')) ? 'y' : 'n'; }},
      {'<', [&](char /*any*/) { note(list->popFront()); }},
      {'>', [&](char /*any*/) { note(list->popBack()); }},
      {'?', [&](char /*any*/) { answers += list->isEmpty() ? 'y' : 'n'; }},
      {'~', [&](char /*any*/) { list.reset(); }},
      {'n', [&](char walk) { note(walks[walk]->next()); }},
      {'x', [&](char walk) { walks[walk]->removeCurrent(); }},
      {'r', [&](char walk) { walks[walk]->reset(); }},
      {'d', [&](char walk) { walks[walk].reset(); }},
  };
  std::istringstream steps(script);
  for (std::string step; steps >> step;) {
    for (const char operand : step.substr(1)) {
      verbs.at(step[0])(operand);
    }
  }
  return answers;
}

TEST(DblList, AnswersAsItsUsersCountOnWhateverHappensUnderWalks) {
  struct Row {
    const char* rule;
    const char* script;
    const char* answers;
  };
  for (const auto& [rule, script, answers] : {
           Row{"the newest comes first when put in front", "?. +a ^b +c ?. n1111", "ynbac."},
           {"items leave at both ends", "+abc <. >... ?.", "acb.y"},
           {"one is put in the place of another", "+abc =bb n1111", "ynaec."},
           {"a removed item lets its walk go on", "+abc n1 x1 ?. n111 n1", "anbc.b"},
           {"the next one removed is passed by", "+abc n1 -bb n11", "aync."},
           {"two walks on one item survive its removal", "+abc n12 x1 n21 ?. n21 n33", "aabbnccbc"},
           {"a popped item is not met again", "+ab n12 <... ?. n12 +c n12", "aaab.y..cc"},
           {"nor popped or removed twice", "+abc n1233 n3 x13 <. >. -ac ?.", "aaabcb.nny"},
           {"new ones are met at the end only", "+ab n1 ^c +d n11111", "abd.ca"},
           {"a walk on nothing removes nothing", "+a x1 n11 x1 n1 r1 x1 n1 n2", "a.aaa"},
           {"a reset walk starts anew", "+ab n12 x1 r12 n13", "aabb"},
           {"walks leave in any order", "+ab n123 d2 x1 d1 n3 d3 <..", "aaabb."},
           {"walks end with their list", "+ab n123 d2 x1 ~. x1 r1 n13 d3 n1", "aaa..."},
       }) {
    EXPECT_EQ(played(script), answers) << rule << ": " << script;
  }
}

}  // namespace
