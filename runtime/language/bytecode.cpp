#include "language/bytecode.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "registry/names.h"
#include "registry/registry.h"

namespace krz {
namespace {

constexpr uint32_t kMark = 0x6B727A31;  // "krz1"

/// How many classes of the script lie above one.
size_t depth_of(const ScriptClass& one) {
  size_t depth = 0;
  for (const ScriptClass* above = one.script_superclass; above; above = above->script_superclass)
    ++depth;
  return depth;
}

/// The slots that a class adds to those of its superclass.
size_t own_fields(const ScriptClass& one) {
  const auto size = static_cast<size_t>(one.definition()->data_size);
  return (size - (one.script_superclass ? 0 : sizeof(InstanceLinks))) / sizeof(Slot);
}

class Writer {
 public:
  void number(size_t value) { plain(static_cast<uint32_t>(value)); }
  void number(Storage value) { number(static_cast<size_t>(value)); }

  void text(std::string_view value) {
    number(value.size());
    bytes_ += value;
  }

  template <class T>
  void list(const std::vector<T>& items) {
    static_assert(std::is_trivially_copyable_v<T> && std::has_unique_object_representations_v<T>);
    number(items.size());
    bytes_.append(reinterpret_cast<const char*>(items.data()), items.size() * sizeof(T));
  }

  /// A class by its place in the table of classes, from 1; 0 is Object.
  void class_reference(const ClassInfo* info) { number(info == nullptr ? 0 : place_of(info) + 1); }

  size_t place_of(const ClassInfo* info) {
    const auto found = std::find(classes_.begin(), classes_.end(), info);
    if (found != classes_.end()) return static_cast<size_t>(found - classes_.begin());
    classes_.push_back(info);
    return classes_.size() - 1;
  }

  const std::vector<const ClassInfo*>& classes() const { return classes_; }
  const std::string& bytes() const { return bytes_; }

 private:
  template <class T>
  void plain(T value) {
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
  }

  std::string bytes_;
  std::vector<const ClassInfo*> classes_;
};

/// Reads front to back. What goes beyond the end gives nothing, and good() is false from then on.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  bool good() const { return good_; }
  void fail() { good_ = false; }

  size_t number() {
    uint32_t value = 0;
    const std::string_view bytes = take(sizeof value);
    if (good_) std::memcpy(&value, bytes.data(), sizeof value);
    return value;
  }

  /// A number of entries, each of which takes at least a byte.
  size_t count() {
    const size_t value = number();
    if (value > rest_.size()) fail();
    return good_ ? value : 0;
  }

  template <class T>
  void number(T& value) {
    value = static_cast<T>(number());
  }

  std::string_view text() { return take(number()); }
  void text(std::string_view& value) { value = text(); }

  template <class T>
  void list(std::vector<T>& items) {
    const size_t length = count();
    const std::string_view bytes = take(length * sizeof(T));
    if (!good_) return;
    items.resize(length);
    if (length > 0) std::memcpy(static_cast<void*>(items.data()), bytes.data(), bytes.size());
  }

 private:
  std::string_view take(size_t size) {
    if (size > rest_.size()) fail();
    if (!good_) return {};
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return taken;
  }

  std::string_view rest_;
  bool good_ = true;
};

/// How many words of registers follow an instruction.
size_t words_behind(const Instruction& instruction, const Program& program) {
  const auto words_of = [](size_t registers) { return (registers + 3) / 4; };
  switch (instruction.op) {
    case Op::kVariantOperate:
    case Op::kVariantCompare:
      return 1;
    case Op::kConcatenate:
    case Op::kResize:
      return words_of(instruction.b);
    case Op::kCallRoutine:
    case Op::kCallVirtual:
    case Op::kNewArray:
    case Op::kMakeArray:
    case Op::kFlatIndex:
      return words_of(instruction.c);
    case Op::kCallMethod:
    case Op::kCallSetter:
      return words_of(program.methods[instruction.b]->signature.parameters.size());
    case Op::kPrint:
      return words_of(size_t{instruction.a} * 2);
    default:
      return 0;
  }
}

/// The routines that running the program can come to: those that are called, and all of a class
/// that has instances. What a script includes is mostly more than it needs.
class Reached {
 public:
  explicit Reached(const Program& program)
      : program_(program), reached_(program.routines.size(), false) {
    add(0);
    while (!waiting_.empty()) {
      const RoutineCode& routine = program_.routines[waiting_.back()];
      waiting_.pop_back();
      look_through(routine.code);
    }
  }

  bool contains(size_t routine) const { return reached_[routine]; }

 private:
  void add(size_t routine) {
    if (reached_[routine]) return;
    reached_[routine] = true;
    waiting_.push_back(routine);
  }

  void look_through(const std::vector<Instruction>& code) {
    for (size_t at = 0; at < code.size(); at += 1 + words_behind(code[at], program_)) {
      if (code[at].op == Op::kCallRoutine) add(code[at].b);
      if (code[at].op == Op::kNew) add_class(as_script_class(program_.classes[code[at].b]));
    }
  }

  void add_class(const ScriptClass* one) {
    for (; one != nullptr; one = one->script_superclass) {
      for (const uint16_t method : one->methods) add(method);
      add(one->initialiser);
      add(one->destructor);
    }
  }

  const Program& program_;
  std::vector<bool> reached_;
  std::vector<size_t> waiting_;
};

/// The parts of a routine, in the order of the bytes: for writing and for reading.
template <class Side, class Code>
void routine_parts(Side& side, Code& routine) {
  side.text(routine.name);
  side.list(routine.code);
  side.list(routine.marks);
  side.list(routine.handlers);
  side.list(routine.string_registers);
  side.list(routine.object_registers);
  side.list(routine.parameters);
  side.number(routine.register_count);
  side.number(routine.result);
}

/// Superclasses first, as they are laid out.
std::vector<const ScriptClass*> in_order(const ScriptClassList& classes) {
  std::vector<const ScriptClass*> ordered;
  for (const auto& one : classes) ordered.push_back(one.get());
  std::stable_sort(ordered.begin(), ordered.end(), [](const ScriptClass* a, const ScriptClass* b) {
    return depth_of(*a) < depth_of(*b);
  });
  return ordered;
}

void write_script_class(Writer& out, const ScriptClass& one) {
  out.class_reference(one.superclass());
  out.number(own_fields(one));
  out.list(one.methods);
  out.list(one.string_slots);
  out.list(one.object_slots);
  out.number(one.initialiser);
  out.number(one.destructor);
}

/// Everything behind the table of classes, which it fills.
void write_body(Writer& out, const Program& program) {
  const std::vector<const ScriptClass*> script_classes = in_order(program.script_classes);
  for (const ScriptClass* one : script_classes) out.place_of(one);
  for (const ScriptClass* one : script_classes) write_script_class(out, *one);
  out.list(program.numbers);
  out.number(program.texts.size());
  for (const TextConstant& one : program.texts) out.text(one.text);
  out.number(program.types.size());
  for (const Type& one : program.types) {
    out.number(static_cast<size_t>(one.kind));
    out.number(static_cast<size_t>(one.element));
    out.number(one.rank);
    out.class_reference(one.class_info);
  }
  out.number(program.classes.size());
  for (const ClassInfo* one : program.classes) out.class_reference(one);
  out.number(program.methods.size());
  for (const MethodInfo* one : program.methods) {
    out.class_reference(one->owner);
    out.number(one->shared);
    out.text(one->declaration);
  }
  out.number(program.properties.size());
  for (const PropertyInfo* one : program.properties) {
    out.class_reference(one->owner);
    out.text(one->name);
  }
  out.number(program.routines.size());
  const Reached reached(program);
  const RoutineCode nothing;
  for (size_t i = 0; i < program.routines.size(); ++i)
    routine_parts(out, reached.contains(i) ? program.routines[i] : nothing);
}

class ProgramReader {
 public:
  ProgramReader(std::string_view bytes, Registry& registry, Program& program)
      : in_(bytes), registry_(registry), program_(program) {}

  bool read() {
    if (in_.number() != kMark || in_.text() != KRZ_VERSION) return false;
    read_classes();
    if (!in_.good()) return false;
    read_tables();
    program_.routines.resize(in_.count());
    for (RoutineCode& routine : program_.routines) routine_parts(in_, routine);
    return in_.good();
  }

 private:
  void read_classes() {
    const size_t script_classes = in_.count();
    classes_.resize(in_.count());
    for (size_t i = 0; i < classes_.size(); ++i) {
      const std::string_view name = in_.text();
      if (i < script_classes) {
        program_.script_classes.push_back(
            std::make_unique<ScriptClass>(registry_, std::string(name), nullptr));
        classes_[i] = program_.script_classes.back().get();
      } else {
        classes_[i] = registry_.find_class(name);
        if (classes_[i] == nullptr) in_.fail();
      }
    }
    for (const auto& one : program_.script_classes) {
      const ClassInfo* const superclass = class_reference();
      const size_t fields = in_.number();
      in_.list(one->methods);
      in_.list(one->string_slots);
      in_.list(one->object_slots);
      in_.number(one->initialiser);
      in_.number(one->destructor);
      if (!in_.good() || !one->lay_out(superclass, fields)) return in_.fail();
    }
  }

  void read_tables() {
    in_.list(program_.numbers);
    program_.texts.resize(in_.count());
    for (TextConstant& one : program_.texts) in_.text(one.text);
    program_.types.resize(in_.count());
    for (Type& one : program_.types) {
      in_.number(one.kind);
      in_.number(one.element);
      in_.number(one.rank);
      one.class_info = class_reference();
    }
    program_.classes.resize(in_.count());
    for (const ClassInfo*& one : program_.classes) one = class_reference();
    program_.registry = &registry_;
    program_.late_methods.resize(in_.count());
    program_.methods.resize(program_.late_methods.size());
    for (LateMethod& one : program_.late_methods) {
      one.owner = class_reference();
      one.shared = in_.number() != 0;
      in_.text(one.declaration);
    }
    program_.properties.resize(in_.count());
    for (const PropertyInfo*& one : program_.properties) {
      const ClassInfo* const owner = class_reference();
      const std::string_view name = in_.text();
      one = owner ? owner->find_property(name) : nullptr;
      if (one == nullptr) in_.fail();
    }
  }

  const ClassInfo* class_reference() {
    const size_t place = in_.number();
    if (place > classes_.size()) in_.fail();
    return in_.good() && place > 0 ? classes_[place - 1] : nullptr;
  }

  Reader in_;
  Registry& registry_;
  Program& program_;
  std::vector<const ClassInfo*> classes_;
};

}  // namespace

const MethodInfo* Program::find_method(size_t index) {
  const LateMethod& late = late_methods[index];
  const std::string_view name = declared_name(late.declaration);
  const auto candidates = late.owner == nullptr ? registry->find_functions(name)
                          : late.shared         ? late.owner->find_shared_methods(name)
                                                : late.owner->find_methods(name);
  for (const MethodInfo* candidate : candidates) {
    if (candidate->declaration == late.declaration) return methods[index] = candidate;
  }
  return nullptr;
}

std::string write_bytecode(const Program& program) {
  Writer body;
  write_body(body, program);
  Writer head;
  head.number(kMark);
  head.text(KRZ_VERSION);
  head.number(program.script_classes.size());
  head.number(body.classes().size());
  for (const ClassInfo* one : body.classes()) head.text(one->name());
  return head.bytes() + body.bytes();
}

bool read_bytecode(std::string_view bytes, Registry& registry, Program& program) {
  return ProgramReader(bytes, registry, program).read();
}

}  // namespace krz
