#include "tester/commands.h"
#include "tester/debugger.h"

namespace tester {

namespace {

using tester_link::Answer;
using tester_link::kAllNumbers;
using Instances = std::vector<InstanceId>;

Words formatInstances(const Instances& ids) {
  Words names;
  for (const InstanceId& id : ids) {
    names.push_back(formatInstance(id));
  }
  return names;
}

}  // namespace

void withInstances(Debugger& debugger, const std::string& word, Wanted wanted,
                   const std::function<void(const Instances&)>& handler) {
  tester_link::UserLink& user = debugger.user();
  if (word.empty()) {
    const Instances all = livingInstances(debugger.system(), "");
    user.askChoice(
        "Instance:", formatInstances(all),
        debugger.then([all, handler](const Answer& answer) { handler({all[answer.index]}); }));
    return;
  }
  const InstanceId named = readInstanceName(debugger.system(), word);
  const std::string process = named.process;
  const Instances living = livingInstances(debugger.system(), process);
  if (named.number != 0 || living.size() < 2) {
    handler({findInstance(debugger.system(), word)});
    return;
  }
  const auto takeNumber =
      debugger.then([&debugger, process, wanted, handler](const Answer& answer) {
        const bool isAll = answer.text == kAllNumbers && wanted != Wanted::kOne;
        handler(isAll ? livingInstances(debugger.system(), process)
                      : Instances{findInstance(debugger.system(), process + ':' + answer.text)});
      });
  if (wanted == Wanted::kAny) {
    user.askNumberInRange("Instance number of " + process + ":",
                          {living.front().number, living.back().number, true}, takeNumber);
  } else {
    user.askNumber(wanted == Wanted::kAll ? "Instance number (*) of " + process + ":"
                                          : "Instance number of " + process + "\n(" +
                                                joinNames(formatInstances(living)) + "):",
                   takeNumber);
  }
}

}  // namespace tester
