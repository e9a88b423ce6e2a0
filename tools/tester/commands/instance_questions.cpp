#include "tester/commands/instance_questions.h"

#include <utility>

#include "tester/commands/debugger.h"
#include "tester/commands/user_words.h"

namespace tester {

namespace {

/// Living instances of a process; of all when `process` is empty.
std::vector<InstanceId> livingInstances(const Engine& engine, const std::string& process) {
  std::vector<InstanceId> ids;
  for (const InstanceInfo& instance : engine.instances()) {
    if (process.empty() || instance.id.process == process) {
      ids.push_back(instance.id);
    }
  }
  return ids;
}

/// The process that the word names without a number, if it has several living instances; empty
/// when there is nothing to ask.
std::string processToAskAbout(const Engine& engine, const std::string& word) {
  const auto id = readInstanceName(engine, word);
  if (!id || id.value->number != 0 || livingInstances(engine, id.value->process).size() < 2) {
    return "";
  }
  return id.value->process;
}

CommandEnd withNamedInstance(Debugger& debugger, const std::string& word,
                             const InstanceHandler& handler) {
  const auto id = findInstance(debugger.engine(), word);
  return id ? handler(*id.value) : debugger.answer(id.problem);
}

CommandEnd withChosenInstance(Debugger& debugger, InstanceHandler handler) {
  std::vector<InstanceId> ids = livingInstances(debugger.engine(), "");
  Words items;
  for (const InstanceId& id : ids) {
    items.push_back(formatInstance(id));
  }
  return debugger.askChoice("Instance:", items,
                            [ids = std::move(ids), handler = std::move(handler)](
                                const Answer& reply) { return handler(ids[reply.index]); });
}

/// Goes on with the answer to a question for the number of an instance, or for all of them.
AnswerHandler numberHandler(Debugger& debugger, const std::string& process,
                            InstancesHandler handler) {
  return [&debugger, process, handler = std::move(handler)](const Answer& reply) {
    if (reply.text == kAllNumbers) {
      return handler(livingInstances(debugger.engine(), process));
    }
    const auto id = findInstance(debugger.engine(), process + ':' + reply.text);
    return id ? handler({*id.value}) : debugger.refuse(id.problem);
  };
}

InstancesHandler forOne(Debugger& debugger, InstanceHandler handler) {
  return [&debugger, handler = std::move(handler)](const std::vector<InstanceId>& ids) {
    return ids.size() == 1 ? handler(ids.front())
                           : debugger.refuse("One instance is wanted, not all.");
  };
}

}  // namespace

CommandEnd withInstance(Debugger& debugger, const std::string& word, InstanceHandler handler) {
  if (word.empty()) {
    return withChosenInstance(debugger, std::move(handler));
  }
  const std::string process = processToAskAbout(debugger.engine(), word);
  if (process.empty()) {
    return withNamedInstance(debugger, word, handler);
  }
  Words names;
  for (const InstanceId& id : livingInstances(debugger.engine(), process)) {
    names.push_back(formatInstance(id));
  }
  return debugger.askNumber("Instance number of " + process + "\n(" + joinNames(names) + "):",
                            numberHandler(debugger, process, forOne(debugger, std::move(handler))));
}

CommandEnd withInstances(Debugger& debugger, const std::string& word, NumberDefault numberDefault,
                         InstancesHandler handler) {
  const std::string process = word.empty() ? "" : processToAskAbout(debugger.engine(), word);
  if (process.empty()) {
    return withInstance(debugger, word, [handler = std::move(handler)](const InstanceId& id) {
      return handler({id});
    });
  }
  const AnswerHandler number = numberHandler(debugger, process, std::move(handler));
  if (numberDefault == NumberDefault::kAll) {
    return debugger.askNumber("Instance number (*) of " + process + ":", number);
  }
  const std::vector<InstanceId> ids = livingInstances(debugger.engine(), process);
  return debugger.askNumberInRange("Instance number of " + process + ":",
                                   {ids.front().number, ids.back().number, true}, number);
}

}  // namespace tester
