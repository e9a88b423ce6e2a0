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
  const auto named = readInstanceName(debugger.system(), word);
  const std::string process = named ? named.value->process : "";
  const Instances living = livingInstances(debugger.system(), process);
  if (!named || named.value->number != 0 || living.size() < 2) {
    const auto id = findInstance(debugger.system(), word);
    if (id) {
      handler({*id.value});
    } else {
      debugger.print(id.problem);
    }
    return;
  }
  const auto takeNumber =
      debugger.then([&debugger, process, wanted, handler](const Answer& answer) {
        if (answer.text == kAllNumbers && wanted != Wanted::kOne) {
          handler(livingInstances(debugger.system(), process));
          return;
        }
        const auto id = findInstance(debugger.system(), process + ':' + answer.text);
        if (id) {
          handler({*id.value});
        } else {
          debugger.refuse(id.problem);
        }
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
