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
enum class Operator : uint8_t;

class Machine {
 public:
  Machine(Runtime& runtime, Program& program, const SourceText& source);
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  enum class Outcome : uint8_t { kFinished, kQuit, kUncaught, kInterrupted };

  /// Runs the module's code to its end, a Quit, or an uncaught exception, which is then reported.
  /// The result is the exit status.
  int run();

  /// For a program that grows and is run piece by piece: makes the frame of the module's variables.
  /// False without memory, which has then been reported. From then on until finish() no other
  /// machine may start.
  bool start();

  /// Runs routine 1 of the program, as it is now, above the variables, which keep their values. An
  /// uncaught exception is reported. REQUIRES: start().
  Outcome run_piece();

  /// Lets go of the variables and of every instance. REQUIRES: start().
  void finish();

  /// A variable of the module. REQUIRES: start(); its register has been there in a run_piece().
  Slot& variable(uint16_t reg) { return stack_.get()[reg]; }

  /// What Quit was given.
  int exit_status() const { return exit_status_; }

  /// How code ended that a Destructor may have stopped meanwhile; asked once.
  Outcome real_outcome(Outcome outcome);

  /// Forgets that it was asked to stop.
  static void forget_interrupt();

  /// Asks whichever machine runs to stop. Only stores a flag.
  static void interrupt();
  static bool interrupted();

  /// Runs the Destructors of a dying instance and lets go of its properties. True when it lives on.
  static bool finalize(REALobject object);

  /// While one lives, Destructors wait: C++ code that must not be disturbed is running.
  class Undisturbed {
   public:
    explicit Undisturbed(Machine& machine) : machine_(machine) { ++machine.undisturbed_; }
    ~Undisturbed() {
      if (--machine_.undisturbed_ == 0 && !machine_.waiting_.empty()) machine_.run_waiting();
    }
    Undisturbed(const Undisturbed&) = delete;
    Undisturbed& operator=(const Undisturbed&) = delete;

   private:
    Machine& machine_;
  };

 private:
  struct Frame {
    const RoutineCode* code;
    const Instruction* caller_next;  // where the caller goes on
    Slot* registers;
    uint16_t result;  // register of the caller
  };

  // machine_loop.cpp
  Outcome execute();

  // machine.cpp: frames and exceptions.
  bool enter(const RoutineCode& code, const Instruction* arguments, const Instruction* next,
             uint16_t result);
  void clean_frame(Frame frame);  // a copy: Destructors push frames
  bool unwind(const Instruction*& next, Slot*& registers);
  void drop_frames(size_t kept);
  void let_go_of_exceptions(Outcome outcome);
  void clear_registers(const Frame& frame, const Handler& handler);
  void report_uncaught();
  SourceOffset position_of(const Instruction* next) const;
  void raise(std::string_view class_name, std::string message);
  bool raise_out_of_memory(std::string_view what);
  bool check_call();
  void raise_nil(const Instruction* next);
  bool has_room(const RoutineCode& code, const Slot* registers) const;

  // machine_instances.cpp: the life and death of instances of the script's own classes.
  void link_instance(REALobject object);
  void unlink_instance(REALobject object);
  void run_destructors(REALobject object);
  void run_destructor(const RoutineCode& code, REALobject object);
  void run_waiting();
  void release_everything();
  void break_cycles();

  // machine_objects.cpp: calls and conversions.
  bool call_method_at(const MethodInfo& method, const Instruction& instruction,
                      const Instruction* words, Slot* registers);
  bool call_setter_at(const MethodInfo& method, const Instruction& instruction,
                      const Instruction* words, Slot* registers);
  void raise_no_method(size_t index);
  bool load_text(uint32_t index, Slot& target);
  bool concatenate(const Instruction& instruction, const Instruction* words, Slot* registers);
  bool to_text(const Slot& value, const Type& type, Slot& target);
  bool box(const Slot& value, const Type& type, Slot& target);
  bool unbox(REALobject variant, const Type& type, Slot& target);
  bool is_a(REALobject object, const ClassInfo* class_info) const;
  bool make_instance(const ClassInfo& class_info, Slot& target);
  void print(const Instruction& instruction, const Instruction* words, const Slot* registers);
  void gather(const Instruction* words, size_t count, const Slot* registers);

  // machine_variants.cpp: operators on Variants.
  bool variant_operate(Operator op, REALobject a, REALobject b, Slot& target);
  bool variant_compare(Operator op, REALobject a, REALobject b, Slot& target);
  bool variant_unary(Operator op, REALobject a, Slot& target);
  bool raise_operands(Operator op, const Type& left, const Type& right);

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

  static Machine* running_;

  Runtime& runtime_;
  Program& program_;
  const SourceText& source_;
  std::unique_ptr<Slot[], void (*)(void*)> stack_;
  std::vector<Frame> frames_;
  std::vector<Slot> arguments_;  // of the call being made
  REALobject script_arguments_ = nullptr;
  std::string line_;  // being printed
  int exit_status_ = 0;
  Machine* outer_ = nullptr;               // ran when this one started
  size_t variables_ = 0;                   // registers of the module's frame that hold values
  size_t base_ = 0;                        // frames that the running execute() found
  size_t bottom_ = 0;                      // base_ of what is no Destructor
  int undisturbed_ = 0;                    // Undisturbed objects that live
  std::vector<REALobject> waiting_;        // instances to be destroyed afterwards, one lock on each
  REALobject instances_ = nullptr;         // of the script's classes, the youngest first
  bool destructors_run_ = true;            // until the very end of the script
  Outcome stopping_ = Outcome::kFinished;  // otherwise a Destructor has ended the script
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
