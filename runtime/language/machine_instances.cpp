// The life and death of instances of the script's own classes.
//
// A Destructor runs the moment its instance is let go of, in the middle of whatever instruction did
// that: execute() is entered once more, above the frames that are there. Only while C++ code of
// registered classes runs, Destructors wait until it is done.
#include <algorithm>
#include <cstring>
#include <utility>

#include "language/machine.h"
#include "object/exceptions.h"
#include "runtime.h"

namespace krz {
namespace {

const ScriptClass& class_of(REALobject object) {
  return *static_cast<const ScriptClass*>(object->class_info);
}

bool has_destructor(const ScriptClass& info) {
  for (const ScriptClass* one = &info; one != nullptr; one = one->script_superclass) {
    if (one->destructor != 0) return true;
  }
  return false;
}

void clear_fields(REALobject object) {
  const ScriptClass& info = class_of(object);
  for (const uint16_t slot : info.string_slots) set_string(field_of(object, slot), nullptr);
  for (const uint16_t slot : info.object_slots) set_object(field_of(object, slot), nullptr);
}

}  // namespace

Machine* Machine::running_ = nullptr;

bool finalize_script_instance(REALobject object) { return Machine::finalize(object); }

void Machine::link_instance(REALobject object) {
  class_of(object).links(object).next = instances_;
  if (instances_ != nullptr) class_of(instances_).links(instances_).previous = object;
  instances_ = object;
}

void Machine::unlink_instance(REALobject object) {
  const InstanceLinks& links = class_of(object).links(object);
  if (links.next != nullptr) class_of(links.next).links(links.next).previous = links.previous;
  if (links.previous != nullptr) {
    class_of(links.previous).links(links.previous).next = links.next;
  } else {
    instances_ = links.next;
  }
}

bool Machine::finalize(REALobject object) {
  Machine& machine = *running_;
  InstanceLinks& links = class_of(object).links(object);
  if (links.destroyed == 0 && has_destructor(class_of(object))) {
    if (machine.undisturbed_ > 0) {
      machine.waiting_.push_back(object);  // with the lock that it dies with
      return true;
    }
    links.destroyed = 1;
    machine.run_destructors(object);
    if (object->locks > 1) {
      // The Destructor has put it somewhere: it lives on, and will die without another run.
      --object->locks;
      return true;
    }
  }
  machine.unlink_instance(object);
  clear_fields(object);
  return false;
}

void Machine::run_destructors(REALobject object) {
  // Destructors that make instances with Destructors may go on for ever without a loop or a call.
  if (stopping_ == Outcome::kFinished && interrupted()) stopping_ = Outcome::kInterrupted;
  for (const ScriptClass* one = &class_of(object); one != nullptr; one = one->script_superclass) {
    if (one->destructor != 0 && destructors_run_ && stopping_ == Outcome::kFinished)
      run_destructor(program_.routines[one->destructor], object);
  }
}

/// What a Destructor raises and does not catch is reported, and then over: there is nobody whom it
/// could reach.
void Machine::run_destructor(const RoutineCode& code, REALobject object) {
  const Frame& caller = frames_.back();
  Slot* const registers = caller.registers + caller.code->register_count;
  const REALobject pending = take_pending_exception();
  const REALobject uncaught = std::exchange(uncaught_, nullptr);
  const SourceOffset position = position_;
  const bool rethrown = std::exchange(rethrown_, false);
  const size_t base = std::exchange(base_, frames_.size());
  const int undisturbed = std::exchange(undisturbed_, 0);

  Outcome outcome = Outcome::kUncaught;
  if (has_room(code, registers)) {
    std::memset(static_cast<void*>(registers), 0, code.register_count * sizeof(Slot));
    lock_object(object);
    registers[0].object = object;
    frames_.push_back({&code, nullptr, registers, kNoRegister});
    outcome = execute();
    while (frames_.size() > base_) {
      clean_frame(frames_.back());
      frames_.pop_back();
    }
  } else {
    raised_class_ = "StackOverflowException";
    raised_message_ = "there is no room for a Destructor";
  }
  if (outcome == Outcome::kUncaught) report_uncaught();
  if (outcome == Outcome::kQuit || outcome == Outcome::kInterrupted) {
    stopping_ = outcome;
    interrupt();
  }
  unlock_object(std::exchange(uncaught_, uncaught));
  undisturbed_ = undisturbed;
  base_ = base;
  rethrown_ = rethrown;
  position_ = position;
  unlock_object(take_pending_exception());
  raise_exception(pending);
  unlock_object(pending);
}

void Machine::run_waiting() {
  std::vector<REALobject> waiting;
  waiting.swap(waiting_);
  for (const REALobject object : waiting) unlock_object(object);
}

/// At the script's end, what only keeps each other alive goes too.
void Machine::release_everything() {
  constexpr int kMostRounds = 10;  // Destructors may make new instances
  for (int round = 0; instances_ != nullptr && round < kMostRounds; ++round) {
    destructors_run_ = round < kMostRounds - 1;
    break_cycles();
    clean_frame(frames_.front());
  }
  // What a registered class still holds goes on as an instance of the registered part of its class.
  while (instances_ != nullptr) {
    const REALobject object = instances_;
    unlink_instance(object);
    lock_object(object);
    clear_fields(object);
    const ClassInfo* registered = object->class_info;
    while (as_script_class(registered) != nullptr) registered = registered->superclass();
    object->class_info = registered;
    unlock_object(object);
  }
}

/// Every Destructor runs, the oldest instance's first, before any property is let go of.
void Machine::break_cycles() {
  std::vector<REALobject> alive;
  for (REALobject one = instances_; one != nullptr; one = class_of(one).links(one).next)
    alive.push_back(one);
  std::reverse(alive.begin(), alive.end());
  for (const REALobject object : alive) lock_object(object);
  for (const REALobject object : alive) {
    if (std::exchange(class_of(object).links(object).destroyed, 1) == 0) run_destructors(object);
  }
  for (const REALobject object : alive) clear_fields(object);
  for (const REALobject object : alive) unlock_object(object);
}

}  // namespace krz
