// The members of one class that somebody has asked for so far.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "registry/class_info.h"
#include "registry/names.h"

namespace krz {

template <class Value>
using NameMap = std::unordered_map<std::string, Value, NameHash, NameEqual>;

/// Parsed methods with the defaults they own.
class MethodStore {
 public:
  MethodStore() = default;
  ~MethodStore();
  MethodStore(const MethodStore&) = delete;
  MethodStore& operator=(const MethodStore&) = delete;

  /// Parses one declaration. Null, with the error reported, when it is wrong.
  const MethodInfo* add(Registry& registry, std::string_view declaration, const ClassInfo* owner,
                        REALfunction function, REALfunction setter, bool shared);

 private:
  std::vector<std::unique_ptr<MethodInfo>> methods_;
};

struct ClassInfo::Members {
  ~Members();

  MethodStore store;
  NameMap<std::vector<const MethodInfo*>> methods;
  NameMap<std::vector<const MethodInfo*>> shared_methods;
  NameMap<std::unique_ptr<PropertyInfo>> properties;  // null: looked for and not there
  NameMap<std::unique_ptr<ConstantInfo>> constants;
};

}  // namespace krz
