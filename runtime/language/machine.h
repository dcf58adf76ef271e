// Runs compiled scripts: registers, frames, exceptions.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "language/code.h"
#include "object/object.h"
#include "object/string.h"

namespace krz {

class Runtime;

class Machine {
 public:
  Machine(Runtime& runtime, Program& program, const SourceText& source);
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  /// Runs the module's code to its end, a Quit, or an uncaught exception, which is then reported.
  /// The result is the exit status.
  int run();

  /// Asks whichever machine runs to stop. Only stores a flag.
  static void interrupt();

 private:
  struct Frame {
    const RoutineCode* code;
    const Instruction* caller_next;  // where the caller goes on
    Slot* registers;
    uint16_t result;  // register of the caller
  };
  enum class Outcome : uint8_t { kFinished, kQuit, kUncaught, kInterrupted };

  // machine_loop.cpp
  Outcome execute();

  // machine.cpp: frames and exceptions.
  bool enter(const RoutineCode& code, const Instruction* arguments, const Instruction* next,
             uint16_t result);
  void clean_frame(const Frame& frame);
  bool unwind(const Instruction*& next, Slot*& registers);
  void clear_registers(const Frame& frame, const Handler& handler);
  void report_uncaught();
  SourceOffset position_of(const Instruction* next) const;
  void raise(std::string_view class_name, std::string message);
  void raise_nil(const Instruction* next);

  // machine_objects.cpp: calls and conversions.
  bool call_method_at(const Instruction& instruction, const Instruction* words, Slot* registers);
  bool call_setter_at(const Instruction& instruction, const Instruction* words, Slot* registers);
  bool load_text(uint32_t index, Slot& target);
  bool concatenate(const Instruction& instruction, const Instruction* words, Slot* registers);
  bool to_text(const Slot& value, const Type& type, Slot& target);
  bool box(const Slot& value, const Type& type, Slot& target);
  bool unbox(REALobject variant, const Type& type, Slot& target);
  bool is_a(REALobject object, const ClassInfo* class_info) const;
  bool make_instance(const ClassInfo& class_info, Slot& target);
  void print(const Instruction& instruction, const Instruction* words, const Slot* registers);
  void gather(const Instruction* words, size_t count, const Slot* registers);

  // machine_arrays.cpp
  bool new_array_at(const Instruction& instruction, const Instruction* words, Slot* registers);
  bool make_array_at(const Instruction& instruction, const Instruction* words, Slot* registers);
  bool resize_array(ArrayObject& array, const Instruction* words, size_t rank,
                    const Slot* registers);
  bool flat_index(const ArrayObject& array, const Instruction* words, size_t rank,
                  const Slot* registers, Slot& target);
  bool array_upper(const ArrayObject& array, const Slot* dimension, Slot& target);
  bool array_insert(ArrayObject& array, int32_t index, const Slot& value);
  bool array_remove(ArrayObject& array, int32_t index, Slot* taken);
  int32_t array_index_of(const ArrayObject& array, const Slot& value) const;
  bool raise_bounds(const ArrayObject& array, int32_t index);
  bool script_arguments(Slot& target);

  Runtime& runtime_;
  Program& program_;
  const SourceText& source_;
  std::unique_ptr<Slot[], void (*)(void*)> stack_;
  std::vector<Frame> frames_;
  std::vector<Slot> arguments_;  // of the call being made
  REALobject script_arguments_ = nullptr;
  std::string line_;  // being printed
  int exit_status_ = 0;
  bool rethrown_ = false;  // the pending exception was raised elsewhere, at position_
  SourceOffset position_ = 0;
  REALobject uncaught_ = nullptr;
  std::string raised_class_;  // of an exception that the runtime has no class for
  std::string raised_message_;
};

inline uint16_t word_register(const Instruction* words, size_t n) {
  return words[n / 4].register_at(n % 4);
}

inline void set_string(Slot& slot, REALstring string) {
  const REALstring old = slot.string;
  slot.bits = 0;
  slot.string = string;
  unlock_string(old);
}

inline void set_object(Slot& slot, REALobject object) {
  const REALobject old = slot.object;
  slot.bits = 0;
  slot.object = object;
  unlock_object(old);
}

/// Puts a value that comes with a lock into a register that owns its reference.
inline void set_owned(Slot& slot, Storage storage, const Slot& value) {
  if (storage == Storage::kString) {
    set_string(slot, value.string);
  } else if (storage == Storage::kObject) {
    set_object(slot, value.object);
  } else {
    slot = value;
  }
}

}  // namespace krz
