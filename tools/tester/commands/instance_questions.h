#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tester/commands/command_table.h"
#include "tester/engine/value.h"

/// Ways from a word of a command to living instances of processes, which ask the user where the
/// word leaves a choice.
namespace tester {

using InstanceHandler = std::function<CommandEnd(const InstanceId&)>;
using InstancesHandler = std::function<CommandEnd(const std::vector<InstanceId>&)>;

/// Goes on with the instance that `word` names. An empty word asks for one of all living
/// instances, a process with several of them for a number.
CommandEnd withInstance(Debugger& debugger, const std::string& word, InstanceHandler handler);

/// What is said about the number of an instance when the user may also want all of a process.
enum class NumberDefault {
  kNone,  ///< he has to say which, or all
  kAll,   ///< all, unless he wants another
};

/// The same where all living instances of a process will do.
CommandEnd withInstances(Debugger& debugger, const std::string& word, NumberDefault numberDefault,
                         InstancesHandler handler);

}  // namespace tester
