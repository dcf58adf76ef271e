// Calls into registered methods, and values changing their type.
#include <charconv>

#include "language/machine.h"
#include "language/text.h"
#include "object/convert.h"
#include "object/exceptions.h"
#include "registry/invoke.h"
#include "runtime.h"

namespace krz {

void Machine::gather(const Instruction* words, size_t count, const Slot* registers) {
  if (count > arguments_.size()) arguments_.resize(count);
  for (size_t i = 0; i < count; ++i) arguments_[i] = registers[word_register(words, i)];
}

bool Machine::call_method_at(const MethodInfo& method, const Instruction& instruction,
                             const Instruction* words, Slot* registers) {
  const Undisturbed undisturbed(*this);
  const REALobject receiver =
      instruction.c == kNoRegister ? nullptr : registers[instruction.c].object;
  gather(words, method.signature.parameters.size(), registers);
  Slot result;
  call_method(method, receiver, arguments_.data(), &result);
  const Storage storage = storage_of(method.signature.result.kind);
  const bool has_result = method.signature.result.kind != Kind::kVoid;
  if (!check_call()) {
    if (has_result) unlock_slot(method.signature.result, result);
    return false;
  }
  if (has_result) set_owned(registers[instruction.a], storage, result);
  return true;
}

bool Machine::call_setter_at(const MethodInfo& method, const Instruction& instruction,
                             const Instruction* words, Slot* registers) {
  const Undisturbed undisturbed(*this);
  const REALobject receiver =
      instruction.c == kNoRegister ? nullptr : registers[instruction.c].object;
  gather(words, method.signature.parameters.size(), registers);
  call_setter(method, receiver, arguments_.data(), registers[instruction.a]);
  return check_call();
}

/// A program that was compiled earlier meets another module than it was compiled for.
void Machine::raise_no_method(size_t index) {
  const LateMethod& method = program_.late_methods[index];
  raise("RuntimeException",
        std::string(method.owner != nullptr ? method.owner->name() : "the runtime") +
            " has no member " + std::string(method.declaration) +
            "; this program was compiled for another module, install krz again");
}

/// Strings of the script are made when they are first needed: most of a long script does not run.
bool Machine::load_text(uint32_t index, Slot& target) {
  TextConstant& text = program_.texts[index];
  if (text.string == nullptr && !text.text.empty()) {
    text.string = make_string(text.text);
    if (text.string == nullptr) {
      raise("OutOfMemoryException", "there is no memory for a string");
      return false;
    }
  }
  lock_string(text.string);
  set_string(target, text.string);
  return true;
}

bool Machine::concatenate(const Instruction& instruction, const Instruction* words,
                          Slot* registers) {
  constexpr size_t kAtHand = 16;
  REALstring few[kAtHand];
  std::vector<REALstring> many;
  const size_t count = instruction.b;
  REALstring* parts = few;
  if (count > kAtHand) {
    many.resize(count);
    parts = many.data();
  }
  bool any = false;
  for (size_t i = 0; i < count; ++i) {
    parts[i] = registers[word_register(words, i)].string;
    any = any || (parts[i] != nullptr && parts[i]->length > 0);
  }
  const REALstring joined = join_strings({parts, count});
  if (any && joined == nullptr) {
    return raise_out_of_memory("a string");
  }
  set_string(registers[instruction.a], joined);
  return true;
}

bool Machine::to_text(const Slot& value, const Type& type, Slot& target) {
  const VariantObject* held = type.kind == Kind::kVariant ? as_variant(value.object) : nullptr;
  if (held != nullptr && held->value_type.kind >= Kind::kObject) {
    raise("TypeMismatchException", a_type(held->value_type) + " has no text");
    return false;
  }
  if (type.kind == Kind::kInteger) {
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, value.integer).ptr;
    set_string(target, make_string({digits, static_cast<size_t>(end - digits)}, encoding::kAscii));
  } else {
    set_string(target, make_string(value_text(type, value)));
  }
  return target.string != nullptr || raise_out_of_memory("a string");
}

bool Machine::box(const Slot& value, const Type& type, Slot& target) {
  if (type.kind == Kind::kNil || (type.kind >= Kind::kObject && value.object == nullptr)) {
    set_object(target, nullptr);
    return true;
  }
  VariantObject* variant = new_variant(type, value);
  if (variant == nullptr) {
    return raise_out_of_memory("a Variant");
  }
  set_object(target, variant);
  return true;
}

bool Machine::unbox(REALobject variant, const Type& type, Slot& target) {
  Slot from;
  from.object = variant;
  Slot result;
  if (!convert_value(simple_type(Kind::kVariant), from, type, &result)) {
    const VariantObject* held = as_variant(variant);
    // A wrong class is what a cast from an object calls it, too.
    const bool cast = type.kind >= Kind::kObject;
    raise(cast ? "IllegalCastException" : "TypeMismatchException",
          "the Variant holds " + (held != nullptr ? a_type(held->value_type) : std::string("Nil")) +
              ", not " + a_type(type));
    return false;
  }
  set_owned(target, storage_of(type.kind), result);
  return true;
}

bool Machine::is_a(REALobject object, const ClassInfo* class_info) const {
  if (const VariantObject* variant = as_variant(object)) {
    if (variant->value_type.kind != Kind::kObject) return false;
    object = variant->value.object;
  }
  if (object == nullptr) return false;
  if (class_info == nullptr) return true;
  return object->class_info != nullptr && object->class_info->is_a(class_info);
}

bool Machine::make_instance(const ClassInfo& class_info, Slot& target) {
  const Undisturbed undisturbed(*this);
  const REALobject made = new_instance(class_info);
  if (made != nullptr && class_info.finalizer() != nullptr) link_instance(made);
  if (made != nullptr && !check_call()) {
    unlock_object(made);
    return false;
  }
  if (made == nullptr) {
    return raise_out_of_memory(class_info.name());
  }
  set_object(target, made);
  return true;
}

void Machine::print(const Instruction& instruction, const Instruction* words,
                    const Slot* registers) {
  line_.clear();
  for (size_t i = 0; i < instruction.a; ++i) {
    const Slot& value = registers[word_register(words, i * 2)];
    const Type& type = program_.types[word_register(words, i * 2 + 1)];
    if (i > 0) line_ += ' ';
    if (type.kind == Kind::kString && value.string != nullptr &&
        (value.string->encoding == encoding::kUtf8 || value.string->encoding == encoding::kAscii)) {
      line_ += string_bytes(value.string);
    } else if (storage_of(type.kind) == Storage::kObject && value.object == nullptr) {
      line_ += "Nil";
    } else if (type.kind == Kind::kObject) {
      line_ += value.object->class_info != nullptr ? value.object->class_info->name() : "Object";
    } else if (type.kind == Kind::kVariant && as_variant(value.object) != nullptr &&
               as_variant(value.object)->value_type.kind == Kind::kObject) {
      const REALobject held = as_variant(value.object)->value.object;
      line_ += held != nullptr && held->class_info != nullptr ? held->class_info->name() : "Object";
    } else {
      line_ += value_text(type, value);
    }
  }
  line_ += '\n';
  runtime_.write_output(line_);
}

}  // namespace krz
