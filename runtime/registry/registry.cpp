#include "registry/registry.h"

#include <unordered_map>

#include "registry/members.h"
#include "registry/names.h"

namespace krz {

namespace {

constexpr int32_t kMaxDataSize = 1 << 20;
constexpr int32_t kMaxMembers = 1 << 16;

struct NamedType {
  std::string_view name;
  Kind kind;
};
constexpr NamedType kNamedTypes[] = {
    {"integer", Kind::kInteger}, {"string", Kind::kString}, {"boolean", Kind::kBoolean},
    {"double", Kind::kDouble},   {"color", Kind::kColor},   {"object", Kind::kObject},
    {"variant", Kind::kVariant}, {"int32", Kind::kInteger}, {"int64", Kind::kInt64},
    {"single", Kind::kSingle},
};

bool is_count(int32_t count) { return count >= 0 && count <= kMaxMembers; }

}  // namespace

struct Registry::State {
  struct Deleter {
    void operator()(ClassInfo* info) const { delete info; }
  };
  // Keys view the names in the values.
  std::unordered_map<std::string_view, std::unique_ptr<ClassInfo, Deleter>, NameHash, NameEqual>
      classes;
  std::vector<const ClassInfo*> defined;
  std::vector<std::span<const FunctionEntry>> function_tables;
  NameMap<std::vector<const MethodInfo*>> functions;
  MethodStore function_store;
  std::vector<std::unique_ptr<ClassInfo::Members>> forgotten;
  std::vector<std::string> errors;
  bool looked_up = false;  // somebody may know members

  ClassInfo* defined_class(std::string_view name) const {
    const auto found = classes.find(name);
    const bool is_there = found != classes.end() && found->second->is_defined();
    return is_there ? found->second.get() : nullptr;
  }
};

Registry::Registry() : state_(std::make_unique<State>()) {}
Registry::~Registry() = default;

void Registry::report_declaration(std::string_view class_name, std::string_view text,
                                  std::string_view error) {
  constexpr size_t kMaxErrors = 100;
  if (state_->errors.size() >= kMaxErrors) return;
  std::string message(class_name.empty() ? "function" : "class ");
  message.append(class_name).append(", \"").append(text).append("\": ").append(error);
  state_->errors.push_back(std::move(message));
}

std::string Registry::definition_error(const REALclassDefinition& definition) const {
  if (definition.version != kPluginInterfaceVersion) {
    return "it is written for interface version " + std::to_string(definition.version) +
           ", this runtime speaks " + std::to_string(kPluginInterfaceVersion);
  }
  if (definition.data_size < 0 || definition.data_size > kMaxDataSize) {
    return "its instance data has an impossible size";
  }
  if (!is_count(definition.property_count) || !is_count(definition.method_count) ||
      !is_count(definition.constant_count) || !is_count(definition.shared_method_count)) {
    return "it has an impossible number of members";
  }
  return {};
}

void Registry::register_class(REALclassDefinition& definition) {
  const std::string_view name = definition.name ? definition.name : "";
  std::string error = definition_error(definition);
  if (declared_name(name) != name || name.empty()) error = "it has no usable name";
  if (error.empty() && state_->defined_class(name))
    error = "a class of that name is defined already";
  const ClassInfo* superclass = nullptr;
  if (error.empty() && definition.superclass && !same_name(definition.superclass, "object")) {
    superclass = state_->defined_class(definition.superclass);
    if (!superclass) {
      error = std::string("its superclass \"") + definition.superclass + "\" is not defined";
    }
  }
  if (!error.empty()) return report_declaration(name, name, error);

  auto& info = const_cast<ClassInfo&>(class_named(name));
  info.name_.assign(name);  // the same but for case
  info.define(superclass, definition);
  state_->defined.push_back(&info);
  forget_members();
}

void Registry::register_extension(REALclassDefinition& definition) {
  const std::string_view name = definition.name ? definition.name : "";
  std::string error = definition_error(definition);
  if (declared_name(name) != name || name.empty()) error = "it has no usable name";
  if (!error.empty()) return report_declaration(name, name, error);
  const_cast<ClassInfo&>(class_named(name)).extensions_.push_back(&definition);
  forget_members();
}

void Registry::forget_members() {
  if (!state_->looked_up) return;
  state_->looked_up = false;
  for (auto& [name, info] : state_->classes) {
    // Kept, because callers may hold what they found.
    if (info->members_) state_->forgotten.push_back(std::move(info->members_));
  }
}

void Registry::register_functions(std::span<const FunctionEntry> functions) {
  state_->function_tables.push_back(functions);
  std::erase_if(state_->functions, [](const auto& entry) { return entry.second.empty(); });
}

const ClassInfo* Registry::find_class(std::string_view name) const {
  state_->looked_up = true;
  return state_->defined_class(name);
}

const ClassInfo& Registry::class_named(std::string_view name) {
  if (const auto found = state_->classes.find(name); found != state_->classes.end()) {
    return *found->second;
  }
  std::unique_ptr<ClassInfo, State::Deleter> info(new ClassInfo(*this, std::string(name)));
  const std::string_view key = info->name();
  return *state_->classes.emplace(key, std::move(info)).first->second;
}

std::span<const MethodInfo* const> Registry::find_functions(std::string_view name) const {
  if (const auto found = state_->functions.find(name); found != state_->functions.end()) {
    return found->second;
  }
  std::vector<const MethodInfo*> functions;
  for (const auto& table : state_->function_tables) {
    for (const FunctionEntry& entry : table) {
      if (!declares(entry.declaration, name)) continue;
      if (const MethodInfo* method =
              state_->function_store.add(const_cast<Registry&>(*this), entry.declaration, nullptr,
                                         entry.function, nullptr, true)) {
        functions.push_back(method);
      }
    }
  }
  return state_->functions.emplace(name, std::move(functions)).first->second;
}

std::vector<const ClassInfo*> Registry::classes() const { return state_->defined; }

std::vector<std::string> Registry::names() const {
  std::vector<std::string> names;
  for (const ClassInfo* info : state_->defined) names.push_back(info->name());
  for (const auto& table : state_->function_tables) {
    for (const FunctionEntry& entry : table) names.emplace_back(declared_name(entry.declaration));
  }
  return names;
}

const std::vector<std::string>& Registry::declaration_errors() const { return state_->errors; }

Type Registry::type_named(std::string_view name) {
  for (const NamedType& named : kNamedTypes) {
    if (same_name(name, named.name)) return {named.kind, Kind::kVoid, 0, nullptr};
  }
  return {Kind::kObject, Kind::kVoid, 0, &class_named(name)};
}

}  // namespace krz
