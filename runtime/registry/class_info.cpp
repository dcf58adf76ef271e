#include "registry/class_info.h"

#include "object/object.h"
#include "object/string.h"
#include "registry/call_plan.h"
#include "registry/declaration.h"
#include "registry/members.h"
#include "registry/registry.h"

namespace krz {

namespace {

template <class Entry>
std::span<const Entry> rows(const Entry* table, int32_t count) {
  return {table, table ? static_cast<size_t>(count) : 0};
}

// Whether a member of the superclass is what `methods` has already, so that the subclass's takes
// its place.
bool is_overridden(const MethodInfo& method, const std::vector<const MethodInfo*>& methods) {
  for (const MethodInfo* other : methods) {
    const auto& a = method.signature.parameters;
    const auto& b = other->signature.parameters;
    bool same = a.size() == b.size();
    for (size_t i = 0; same && i < a.size(); ++i) same = a[i].type == b[i].type;
    if (same) return true;
  }
  return false;
}

}  // namespace

MethodStore::~MethodStore() {
  for (const auto& method : methods_) {
    release_defaults(method->signature);
    delete method->plan;
  }
}

const MethodInfo* MethodStore::add(Registry& registry, std::string_view declaration,
                                   const ClassInfo* owner, REALfunction function,
                                   REALfunction setter, bool shared) {
  auto method = std::make_unique<MethodInfo>();
  std::string error = parse_method(declaration, registry, method->name, method->signature);
  if (error.empty() && !function && !setter) error = "it has no function";
  if (!error.empty()) {
    release_defaults(method->signature);
    registry.report_declaration(owner ? owner->name() : "", declaration, error);
    return nullptr;
  }
  method->declaration = declaration;
  method->owner = owner;
  method->function = function;
  method->setter = setter;
  method->shared = shared;
  return methods_.emplace_back(std::move(method)).get();
}

ClassInfo::Members::~Members() {
  for (const auto& [name, constant] : constants) {
    if (constant && constant->type.kind == Kind::kString) unlock_string(constant->value.string);
  }
}

ClassInfo::ClassInfo(Registry& registry, std::string name)
    : registry_(registry), name_(std::move(name)) {}

ClassInfo::~ClassInfo() = default;

void ClassInfo::define(const ClassInfo* superclass, REALclassDefinition& definition) {
  constexpr int32_t kDataAlignment = 16;
  const auto aligned = [](int32_t size) {
    return (size + kDataAlignment - 1) / kDataAlignment * kDataAlignment;
  };
  superclass_ = superclass;
  definition_ = &definition;
  data_offset_ = superclass ? superclass->instance_size()
                            : aligned(static_cast<int32_t>(sizeof(REALobjectStruct)));
  instance_size_ = data_offset_ + aligned(definition.data_size);
  definition.host_slot = data_offset_;
}

ClassInfo::Members& ClassInfo::members() const {
  if (!members_) members_ = std::make_unique<Members>();
  return *members_;
}

template <class Visit>
void ClassInfo::visit_definitions(Visit visit) const {
  if (definition_) visit(*definition_);
  for (const REALclassDefinition* extension : extensions_) visit(*extension);
}

bool ClassInfo::is_a(const ClassInfo* other) const {
  if (!other) return true;
  for (const ClassInfo* c = this; c; c = c->superclass_) {
    if (c == other) return true;
  }
  return false;
}

std::span<const MethodInfo* const> ClassInfo::find_methods_of(std::string_view name,
                                                              bool shared) const {
  Members& known = members();
  auto& cache = shared ? known.shared_methods : known.methods;
  if (const auto found = cache.find(name); found != cache.end()) return found->second;
  std::vector<const MethodInfo*> methods;
  visit_definitions([&](const REALclassDefinition& definition) {
    const auto table = shared ? rows(definition.shared_methods, definition.shared_method_count)
                              : rows(definition.methods, definition.method_count);
    for (const MethodEntry& entry : table) {
      if (!entry.declaration || !declares(entry.declaration, name)) continue;
      if (const MethodInfo* method = known.store.add(registry_, entry.declaration, this,
                                                     entry.function, entry.setter, shared)) {
        methods.push_back(method);
      }
    }
  });
  if (superclass_) {
    for (const MethodInfo* method : superclass_->find_methods_of(name, shared)) {
      if (!is_overridden(*method, methods)) methods.push_back(method);
    }
  }
  return cache.emplace(name, std::move(methods)).first->second;
}

std::span<const MethodInfo* const> ClassInfo::find_methods(std::string_view name) const {
  return find_methods_of(name, false);
}

std::span<const MethodInfo* const> ClassInfo::find_shared_methods(std::string_view name) const {
  return find_methods_of(name, true);
}

const PropertyInfo* ClassInfo::find_property(std::string_view name) const {
  Members& known = members();
  auto found = known.properties.find(name);
  if (found == known.properties.end()) {
    std::unique_ptr<PropertyInfo> property;
    visit_definitions([&](const REALclassDefinition& definition) {
      for (const PropertyEntry& entry : rows(definition.properties, definition.property_count)) {
        if (property || !entry.name || !entry.type || !same_name(entry.name, name)) continue;
        const Type type = registry_.type_named(entry.type);
        if (entry.getter == kDirectField) {
          const bool inside =
              &definition == definition_ && entry.param >= 0 &&
              entry.param + static_cast<intptr_t>(value_width(type.kind)) <= definition.data_size;
          if (!inside) {
            registry_.report_declaration(name_, entry.name, "it lies outside the instance data");
            continue;
          }
        } else if (!entry.getter) {
          registry_.report_declaration(name_, entry.name, "it has no function");
          continue;
        }
        property = std::make_unique<PropertyInfo>(PropertyInfo{entry.name, type, &entry, this});
      }
    });
    found = known.properties.emplace(name, std::move(property)).first;
  }
  if (found->second) return found->second.get();
  return superclass_ ? superclass_->find_property(name) : nullptr;
}

const ConstantInfo* ClassInfo::find_constant(std::string_view name) const {
  Members& known = members();
  auto found = known.constants.find(name);
  if (found == known.constants.end()) {
    std::unique_ptr<ConstantInfo> constant;
    visit_definitions([&](const REALclassDefinition& definition) {
      for (const ConstantEntry& entry : rows(definition.constants, definition.constant_count)) {
        if (constant || !entry.declaration || !declares(entry.declaration, name)) continue;
        auto parsed = std::make_unique<ConstantInfo>();
        const std::string error = parse_constant(entry.declaration, *parsed);
        if (error.empty()) {
          constant = std::move(parsed);
        } else {
          registry_.report_declaration(name_, entry.declaration, error);
        }
      }
    });
    found = known.constants.emplace(name, std::move(constant)).first;
  }
  if (found->second) return found->second.get();
  return superclass_ ? superclass_->find_constant(name) : nullptr;
}

std::vector<std::string> ClassInfo::member_names() const {
  std::vector<std::string> names;
  const auto add_methods = [&](const MethodEntry* table, int32_t count) {
    for (const MethodEntry& entry : rows(table, count)) {
      if (entry.declaration) names.emplace_back(declared_name(entry.declaration));
    }
  };
  for (const ClassInfo* c = this; c; c = c->superclass_) {
    c->visit_definitions([&](const REALclassDefinition& definition) {
      for (const PropertyEntry& entry : rows(definition.properties, definition.property_count)) {
        if (entry.name) names.emplace_back(entry.name);
      }
      add_methods(definition.methods, definition.method_count);
      add_methods(definition.shared_methods, definition.shared_method_count);
      for (const ConstantEntry& entry : rows(definition.constants, definition.constant_count)) {
        if (entry.declaration) names.emplace_back(declared_name(entry.declaration));
      }
    });
  }
  return names;
}

}  // namespace krz
