// Frames, and what happens when something is raised.
#include "language/machine.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "object/exceptions.h"
#include "runtime.h"

namespace krz {
namespace {

constexpr size_t kStackSlots = size_t{1} << 20;
constexpr size_t kMostFrames = 10000;
constexpr size_t kLongestShownExpression = 60;

}  // namespace

Program::~Program() {
  for (const TextConstant& text : texts) unlock_string(text.string);
}

// Fresh memory from calloc is zero without being touched, so a large stack costs only what is used
// of it.
Machine::Machine(Runtime& runtime, Program& program, const SourceText& source)
    : runtime_(runtime),
      program_(program),
      source_(source),
      stack_(static_cast<Slot*>(std::calloc(kStackSlots, sizeof(Slot))), std::free) {
  size_t most_arguments = 1;
  for (const MethodInfo* method : program.methods)
    most_arguments = std::max(most_arguments, method->signature.parameters.size());
  arguments_.resize(most_arguments);
}

Machine::~Machine() {
  unlock_object(script_arguments_);
  unlock_object(uncaught_);
}

int Machine::run() {
  if (stack_ == nullptr) {
    runtime_.write_error("out of memory\n");
    return 1;
  }
  frames_.push_back({&program_.routines[0], nullptr, stack_.get(), kNoRegister});
  const Outcome outcome = execute();
  while (!frames_.empty()) {
    clean_frame(frames_.back());
    frames_.pop_back();
  }
  if (outcome == Outcome::kUncaught) report_uncaught();
  // What destructors raised has nobody left to see it.
  unlock_object(take_pending_exception());
  runtime_.flush_output();
  switch (outcome) {
    case Outcome::kFinished:
      return 0;
    case Outcome::kQuit:
      return exit_status_;
    case Outcome::kInterrupted:
      return 130;
    case Outcome::kUncaught:
      break;
  }
  return 1;
}

/// Makes a frame for a routine and copies the arguments into it. False when there is no room; the
/// exception is then raised.
bool Machine::enter(const RoutineCode& code, const Instruction* arguments, const Instruction* next,
                    uint16_t result) {
  const Frame& caller = frames_.back();
  Slot* registers = caller.registers + caller.code->register_count;
  if (frames_.size() >= kMostFrames ||
      static_cast<size_t>(stack_.get() + kStackSlots - registers) < code.register_count) {
    raise("StackOverflowException", "Subs and Functions call each other too deeply");
    return false;
  }
  std::memset(static_cast<void*>(registers), 0, code.register_count * sizeof(Slot));
  for (size_t i = 0; i < code.parameters.size(); ++i) {
    const Slot& value = caller.registers[word_register(arguments, i)];
    registers[i] = value;
    if (code.parameters[i] == Storage::kString) lock_string(value.string);
    if (code.parameters[i] == Storage::kObject) lock_object(value.object);
  }
  frames_.push_back({&code, next, registers, result});
  return true;
}

void Machine::clean_frame(const Frame& frame) {
  for (const uint16_t reg : frame.code->string_registers) set_string(frame.registers[reg], nullptr);
  for (const uint16_t reg : frame.code->object_registers) set_object(frame.registers[reg], nullptr);
}

void Machine::clear_registers(const Frame& frame, const Handler& handler) {
  const auto& strings = frame.code->string_registers;
  for (size_t i = handler.string_level; i < strings.size(); ++i)
    set_string(frame.registers[strings[i]], nullptr);
  const auto& objects = frame.code->object_registers;
  for (size_t i = handler.object_level; i < objects.size(); ++i)
    set_object(frame.registers[objects[i]], nullptr);
}

/// Finds who catches the pending exception, giving up frames on the way. False when nobody does.
bool Machine::unwind(const Instruction*& next, Slot*& registers) {
  const REALobject exception = take_pending_exception();
  if (!rethrown_) position_ = position_of(next);
  rethrown_ = false;
  for (;;) {
    const Frame frame = frames_.back();
    const auto place = static_cast<uint32_t>(next - 1 - frame.code->code.data());
    for (const Handler& handler : frame.code->handlers) {
      if (place < handler.begin || place >= handler.end || exception == nullptr) continue;
      clear_registers(frame, handler);
      set_object(frame.registers[handler.exception], exception);
      frame.registers[handler.position].bits = position_;
      next = frame.code->code.data() + handler.target;
      registers = frame.registers;
      return true;
    }
    if (frames_.size() == 1) {
      uncaught_ = exception;
      return false;
    }
    clean_frame(frame);
    frames_.pop_back();
    next = frame.caller_next;
  }
}

/// Where in the source the instruction before `next` comes from.
SourceOffset Machine::position_of(const Instruction* next) const {
  const RoutineCode& code = *frames_.back().code;
  const auto place = static_cast<uint32_t>(next - 1 - code.code.data());
  const auto after =
      std::upper_bound(code.marks.begin(), code.marks.end(), place,
                       [](uint32_t at, const Mark& mark) { return at < mark.instruction; });
  return after == code.marks.begin() ? 0 : (after - 1)->position;
}

void Machine::raise(std::string_view class_name, std::string message) {
  raise_exception(class_name, message);
  raised_class_ = class_name;
  raised_message_ = std::move(message);
}

/// The receiver of the instruction before `next` is Nil.
void Machine::raise_nil(const Instruction* next) {
  const RoutineCode& code = *frames_.back().code;
  const auto place = static_cast<uint32_t>(next - 1 - code.code.data());
  const auto after =
      std::upper_bound(code.marks.begin(), code.marks.end(), place,
                       [](uint32_t at, const Mark& mark) { return at < mark.instruction; });
  std::string what = "an object";
  if (after != code.marks.begin()) {
    const Mark& mark = *(after - 1);
    if (mark.receiver_end > mark.receiver_begin) {
      what =
          source_.slice(mark.receiver_begin, mark.receiver_end).substr(0, kLongestShownExpression);
      std::replace_if(
          what.begin(), what.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; },
          ' ');
      position_ = mark.receiver_begin;
      rethrown_ = true;
    }
  }
  raise("NilObjectException", what + " is Nil");
}

void Machine::report_uncaught() {
  std::string name = raised_class_;
  std::string message = raised_message_;
  if (uncaught_ != nullptr) {
    name = uncaught_->class_info != nullptr ? uncaught_->class_info->name() : "Object";
    message = exception_message(uncaught_);
  }
  const Diagnostic place = source_.diagnostic(position_, {});
  std::string report = place.file + ":" + std::to_string(place.line) + ":" +
                       std::to_string(place.column) + ": " + name;
  if (!message.empty()) report += ": " + message;
  runtime_.write_error(report + "\n" + place.source_excerpt());
}

}  // namespace krz
