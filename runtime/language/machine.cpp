// Frames, and what happens when something is raised.
#include "language/machine.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "object/exceptions.h"
#include "object/memory_budget.h"
#include "runtime.h"

namespace krz {
namespace {

constexpr size_t kStackSlots = size_t{1} << 20;
constexpr size_t kMostFrames = 10000;
// What is kept for Destructors that run when everything else is in use.
constexpr size_t kReservedFrames = 500;
constexpr size_t kReservedSlots = size_t{1} << 16;
constexpr size_t kLongestShownExpression = 60;
constexpr size_t kUsualArguments = 8;

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
      stack_(static_cast<Slot*>(std::calloc(kStackSlots, sizeof(Slot))), std::free),
      arguments_(kUsualArguments) {}

Machine::~Machine() = default;

bool Machine::start() {
  if (stack_ == nullptr) {
    runtime_.write_error("out of memory\n");
    return false;
  }
  frames_.push_back({&program_.routines[0], nullptr, stack_.get(), kNoRegister});
  variables_ = program_.routines[0].register_count;
  outer_ = std::exchange(running_, this);
  return true;
}

int Machine::run() {
  if (!start()) return 1;
  const Outcome outcome = execute();
  drop_frames(1);
  clean_frame(frames_.back());
  let_go_of_exceptions(outcome);
  finish();
  switch (real_outcome(outcome)) {
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

Machine::Outcome Machine::run_piece() {
  // The program has grown: its routines may have moved, and there may be more variables.
  const RoutineCode& variables = program_.routines[0];
  const RoutineCode& piece = program_.routines[1];
  frames_.front().code = &variables;
  if (variables.register_count > variables_)
    std::fill_n(stack_.get() + variables_, variables.register_count - variables_, Slot{});
  variables_ = variables.register_count;
  Slot* const registers = stack_.get() + variables_;
  if (!has_room(piece, registers)) {
    runtime_.write_error("there is no room for more variables\n");
    return Outcome::kUncaught;
  }
  std::fill_n(registers, piece.register_count, Slot{});
  base_ = bottom_ = frames_.size();
  frames_.push_back({&piece, nullptr, registers, kNoRegister});
  const Outcome outcome = execute();
  drop_frames(1);
  let_go_of_exceptions(outcome);
  runtime_.flush_output();
  return real_outcome(outcome);
}

void Machine::finish() {
  base_ = bottom_ = 0;
  drop_frames(1);
  clean_frame(frames_.back());
  unlock_object(std::exchange(script_arguments_, nullptr));
  release_everything();
  // What destructors of registered classes raised has nobody left to see it.
  unlock_object(take_pending_exception());
  if (stopping_ != Outcome::kFinished) forget_interrupt();
  frames_.clear();
  running_ = outer_;
  runtime_.flush_output();
}

void Machine::drop_frames(size_t kept) {
  while (frames_.size() > kept) {
    clean_frame(frames_.back());
    frames_.pop_back();
  }
}

/// Reports what nobody caught.
void Machine::let_go_of_exceptions(Outcome outcome) {
  if (outcome == Outcome::kUncaught) report_uncaught();
  unlock_object(std::exchange(uncaught_, nullptr));
  unlock_object(take_pending_exception());
}

/// How code ended that a Destructor may have stopped.
Machine::Outcome Machine::real_outcome(Outcome outcome) {
  const Outcome stopping = std::exchange(stopping_, Outcome::kFinished);
  if (stopping == Outcome::kFinished) return outcome;
  forget_interrupt();
  return outcome == Outcome::kUncaught ? outcome : stopping;
}

bool Machine::has_room(const RoutineCode& code, const Slot* registers) const {
  const bool in_destructor = base_ > bottom_;
  const size_t frames = kMostFrames + (in_destructor ? kReservedFrames : 0);
  const size_t slots = kStackSlots - (in_destructor ? 0 : kReservedSlots);
  const Slot* const end = stack_.get() + slots;
  return frames_.size() < frames && registers <= end &&
         static_cast<size_t>(end - registers) >= code.register_count;
}

/// Makes a frame for a routine and copies the arguments into it. False when there is no room; the
/// exception is then raised.
bool Machine::enter(const RoutineCode& code, const Instruction* arguments, const Instruction* next,
                    uint16_t result) {
  const Frame& caller = frames_.back();
  Slot* registers = caller.registers + caller.code->register_count;
  if (!has_room(code, registers)) {
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

void Machine::clean_frame(const Frame frame) {
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
    if (frames_.size() == base_ + 1) {
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

bool Machine::raise_out_of_memory(std::string_view what) {
  raise("OutOfMemoryException", "there is no memory for " + std::string(what));
  memory_budget::take_refusal();
  return false;
}

/// What a registered function did: false with the exception raised, also when memory was refused to
/// it and it did not say so.
bool Machine::check_call() {
  const bool refused = memory_budget::take_refusal();
  if (exception_pending()) return false;
  return !refused || raise_out_of_memory("what this needs");
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
