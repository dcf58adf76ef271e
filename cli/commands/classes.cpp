// krz classes: the classes that scripts can use, with their members exactly as they are declared
// and what is to be said about them.
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string_view>
#include <vector>

#include "commands/actions.h"
#include "language/names.h"
#include "reference/class_members.h"
#include "reference/class_reference.h"
#include "registry/names.h"
#include "registry/registry.h"
#include "runtime.h"

namespace cli {

namespace {

/// With its members of a name, or with all of them.
nlohmann::ordered_json as_json(const krz::ClassInfo& class_info, std::string_view only = {}) {
  const std::string superclass = superclass_name(class_info);
  nlohmann::ordered_json document = {{"name", class_info.name()}};
  document["superclass"] =
      superclass.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(superclass);
  for (const MemberKind& kind : members_of(class_info)) {
    auto& list = document[kind.json_key] = nlohmann::ordered_json::array();
    for (const DeclaredMember& member : kind.members) {
      if (only.empty() || krz::same_name(member.name, only)) list.push_back(member.declaration);
    }
  }
  return document;
}

void print_summary(const krz::ClassInfo& class_info) {
  size_t count = 0;
  for (const MemberKind& kind : members_of(class_info)) count += kind.members.size();
  const std::string superclass = superclass_name(class_info);
  const std::string title = class_info.name() + (superclass.empty() ? "" : " (" + superclass + ")");
  std::printf("%-56s %3zu members\n", title.c_str(), count);
}

/// Starts the runtime with the module. False after a message.
bool load_module(krz::Runtime& runtime) {
  const std::string failure = runtime.load_module(krz::Runtime::default_module_path());
  if (!failure.empty()) report(failure);
  return failure.empty();
}

void report_no_class(std::string_view name, const std::vector<const krz::ClassInfo*>& classes) {
  std::vector<std::string_view> names;
  names.reserve(classes.size());
  for (const krz::ClassInfo* one : classes) names.emplace_back(one->name());
  const std::string_view nearest = krz::nearest_name(name, names);
  report("there is no class " + std::string(name) +
         (nearest.empty() ? "" : "; did you mean " + std::string(nearest) + "?") +
         "; `krz classes` lists them");
}

/// A member of the class or of one that it inherits from.
int print_member(const krz::ClassInfo& class_info, std::string_view name, bool json) {
  for (const krz::ClassInfo* one = &class_info; one; one = one->superclass()) {
    const std::string listing = member_listing(*one, name);
    if (listing.empty()) continue;
    const std::string text =
        json ? nlohmann::ordered_json::array({as_json(*one, name)}).dump(2) + "\n" : listing;
    std::fputs(text.c_str(), stdout);
    return kDone;
  }
  const std::vector<std::string> members = class_info.member_names();
  const std::string_view nearest =
      krz::nearest_name(name, std::vector<std::string_view>(members.begin(), members.end()));
  report(class_info.name() + " has no member " + std::string(name) +
         (nearest.empty() ? "" : "; did you mean " + std::string(nearest) + "?") +
         "; `krz classes " + class_info.name() + "` lists them");
  return kFailed;
}

}  // namespace

int list_classes(const Invocation& invocation) {
  krz::Runtime runtime({});
  if (!load_module(runtime)) return kFailed;
  std::vector<const krz::ClassInfo*> classes = runtime.registry().classes();
  if (!invocation.arguments.empty()) {
    const std::string_view asked = invocation.arguments.front();
    const std::string_view name = asked.substr(0, asked.find('.'));
    const krz::ClassInfo* found = runtime.registry().find_class(name);
    if (!found) {
      report_no_class(name, classes);
      return kFailed;
    }
    if (name.size() < asked.size())
      return print_member(*found, asked.substr(name.size() + 1), invocation.has("json"));
    classes = {found};
  }
  if (invocation.has("json")) {
    auto document = nlohmann::ordered_json::array();
    for (const krz::ClassInfo* one : classes) document.push_back(as_json(*one));
    std::printf("%s\n", document.dump(2).c_str());
  } else if (!invocation.arguments.empty()) {
    std::fputs(class_listing(*classes.front()).c_str(), stdout);
  } else {
    for (const krz::ClassInfo* one : classes) print_summary(*one);
  }
  return kDone;
}

int print_class_reference() {
  krz::Runtime runtime({});
  if (!load_module(runtime)) return kFailed;
  const std::vector<const krz::ClassInfo*> classes = runtime.registry().classes();
  std::fputs(class_reference(classes).c_str(), stdout);
  const std::string faults = reference_faults(classes);
  std::fputs(faults.c_str(), stderr);
  return faults.empty() ? kDone : kFailed;
}

}  // namespace cli
