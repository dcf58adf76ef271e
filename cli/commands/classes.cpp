// krz classes: the classes that scripts can use, with their members exactly as they are declared.
#include <strings.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <span>

#include "commands/actions.h"
#include "registry/registry.h"
#include "runtime.h"

namespace cli {

namespace {

/// A class's members as declaration texts, in table order.
struct Members {
  std::vector<std::string> properties;
  std::vector<std::string> methods;
  std::vector<std::string> shared_methods;
  std::vector<std::string> constants;
};

template <class Entry>
std::span<const Entry> table(const Entry* entries, int32_t count) {
  return {entries, static_cast<size_t>(count > 0 ? count : 0)};
}

void add_members(const REALclassDefinition& definition, Members& members) {
  for (const PropertyEntry& entry : table(definition.properties, definition.property_count)) {
    members.properties.push_back(std::string(entry.name) + " as " + entry.type);
  }
  for (const MethodEntry& entry : table(definition.methods, definition.method_count)) {
    members.methods.emplace_back(entry.declaration);
  }
  for (const MethodEntry& entry :
       table(definition.shared_methods, definition.shared_method_count)) {
    members.shared_methods.emplace_back(entry.declaration);
  }
  for (const ConstantEntry& entry : table(definition.constants, definition.constant_count)) {
    members.constants.emplace_back(entry.declaration);
  }
}

Members members_of(const krz::ClassInfo& class_info) {
  Members members;
  add_members(*class_info.definition(), members);
  for (const REALclassDefinition* extension : class_info.extensions()) {
    add_members(*extension, members);
  }
  return members;
}

std::string superclass_name(const krz::ClassInfo& class_info) {
  return class_info.superclass() ? class_info.superclass()->name() : "";
}

nlohmann::ordered_json as_json(const krz::ClassInfo& class_info) {
  const Members members = members_of(class_info);
  const std::string superclass = superclass_name(class_info);
  const auto inherited =
      superclass.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(superclass);
  return {{"name", class_info.name()},
          {"superclass", inherited},
          {"properties", members.properties},
          {"methods", members.methods},
          {"sharedMethods", members.shared_methods},
          {"constants", members.constants}};
}

void print_list(const char* title, const std::vector<std::string>& texts) {
  if (texts.empty()) return;
  std::printf("\n%s\n", title);
  for (const std::string& text : texts) std::printf("  %s\n", text.c_str());
}

void print_class(const krz::ClassInfo& class_info) {
  const std::string superclass = superclass_name(class_info);
  std::printf("Class %s%s%s\n", class_info.name().c_str(), superclass.empty() ? "" : " Inherits ",
              superclass.c_str());
  const Members members = members_of(class_info);
  print_list("Properties", members.properties);
  print_list("Methods", members.methods);
  print_list("Shared methods", members.shared_methods);
  print_list("Constants", members.constants);
}

void print_summary(const krz::ClassInfo& class_info) {
  const Members members = members_of(class_info);
  const std::string superclass = superclass_name(class_info);
  const std::string title = class_info.name() + (superclass.empty() ? "" : " (" + superclass + ")");
  std::printf("%-56s %3zu members\n", title.c_str(),
              members.properties.size() + members.methods.size() + members.shared_methods.size() +
                  members.constants.size());
}

}  // namespace

int list_classes(const Invocation& invocation) {
  krz::Runtime runtime({});
  if (const std::string failure = runtime.load_module(krz::Runtime::default_module_path());
      !failure.empty()) {
    report(failure);
    return kFailed;
  }
  std::vector<const krz::ClassInfo*> classes = runtime.registry().classes();
  if (!invocation.arguments.empty()) {
    const std::string& name = invocation.arguments.front();
    const krz::ClassInfo* found = runtime.registry().find_class(name);
    if (!found) {
      report("there is no class " + name + "; `krz classes` lists them");
      return kFailed;
    }
    classes = {found};
  }
  if (invocation.has("json")) {
    auto document = nlohmann::ordered_json::array();
    for (const krz::ClassInfo* one : classes) document.push_back(as_json(*one));
    std::printf("%s\n", document.dump(2).c_str());
  } else if (!invocation.arguments.empty()) {
    print_class(*classes.front());
  } else {
    for (const krz::ClassInfo* one : classes) print_summary(*one);
  }
  return kDone;
}

}  // namespace cli
