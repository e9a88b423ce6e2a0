#include "framework/core/control_registry.h"

#include <map>

namespace {

std::map<std::string, zControlCreator>& registry() {
  static std::map<std::string, zControlCreator> classes;
  return classes;
}

zRecordControlMaker recordMaker = nullptr;

}  // namespace

void registerControlClass(const std::string& name, zControlCreator creator) {
  registry()[name] = creator;
}

bool isControlClass(const std::string& name) {
  return registry().contains(name);
}

zControlCreator controlCreator(const std::string& name) {
  const auto found = registry().find(name);
  return found == registry().end() ? nullptr : found->second;
}

void setRecordControlMaker(zRecordControlMaker maker) {
  recordMaker = maker;
}

zRecordControlMaker recordControlMaker() {
  return recordMaker;
}
