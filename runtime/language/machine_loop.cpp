// The loop that executes instructions.
#include <atomic>
#include <cmath>
#include <limits>
#include <new>

#include "language/machine.h"
#include "language/machine_shapes.h"
#include "language/text.h"
#include "object/convert.h"
#include "object/exceptions.h"
#include "registry/invoke.h"

namespace krz {
namespace {

std::atomic<bool> g_interrupted{false};

int32_t wrap(uint32_t value) { return static_cast<int32_t>(value); }
int64_t wrap(uint64_t value) { return static_cast<int64_t>(value); }

/// Division of integers toward zero; the one quotient that does not fit wraps to itself.
template <class T>
T divide(T a, T b) {
  using Unsigned = std::make_unsigned_t<T>;
  return b == -1 ? wrap(Unsigned{0} - static_cast<Unsigned>(a)) : a / b;
}
template <class T>
T modulo(T a, T b) {
  return b == -1 ? 0 : a % b;
}

/// A Double as an integer of the kind, as conversions of the language do it.
template <class T>
T integer_of(double value, Kind kind) {
  constexpr double kLimit = sizeof(T) == 4 ? 2147483648.0 : 9223372036854775808.0;
  if (value > -kLimit && value < kLimit) return static_cast<T>(value);
  Slot from;
  Slot to;
  from.real = value;
  convert_value(simple_type(Kind::kDouble), from, simple_type(kind), &to);
  return sizeof(T) == 4 ? static_cast<T>(to.integer) : static_cast<T>(to.int64);
}

size_t word_count(size_t registers) { return (registers + 3) / 4; }

}  // namespace

bool Machine::interrupted() { return g_interrupted.load(std::memory_order_relaxed); }
void Machine::forget_interrupt() { g_interrupted.store(false, std::memory_order_relaxed); }

void Machine::interrupt() { g_interrupted.store(true, std::memory_order_relaxed); }

/// An instruction that is done `continue`s; one that raised `break`s.
Machine::Outcome Machine::execute() {
  const Instruction* next = frames_.back().code->code.data();
  Slot* r = frames_.back().registers;
  Slot* const globals = stack_.get();
  for (;;) {
    const Instruction i = *next++;
    try {
      switch (i.op) {
        case Op::kLoadInteger:
          r[i.a].int64 = i.wide();
          continue;
        case Op::kLoadNumber:
          r[i.a].bits = program_.numbers[i.b];
          continue;
        case Op::kLoadText:
          if (load_text(static_cast<uint32_t>(i.wide()), r[i.a])) continue;
          break;
        case Op::kClearNumber:
          r[i.a].bits = 0;
          continue;
        case Op::kClearString:
          set_string(r[i.a], nullptr);
          continue;
        case Op::kClearObject:
          set_object(r[i.a], nullptr);
          continue;
          COPY_GROUP(kMove, r[i.a], r[i.b])
          COPY_GROUP(kGetGlobal, r[i.a], globals[i.b])
          COPY_GROUP(kSetGlobal, globals[i.b], r[i.a])
          COPY_GROUP(kGetThrough, r[i.a], *reinterpret_cast<const Slot*>(r[i.b].object))
          COPY_GROUP(kSetThrough, *reinterpret_cast<Slot*>(r[i.b].object), r[i.a])
        case Op::kAddressOfLocal:
          r[i.a].object = reinterpret_cast<REALobject>(&r[i.b]);
          continue;
        case Op::kAddressOfGlobal:
          r[i.a].object = reinterpret_cast<REALobject>(&globals[i.b]);
          continue;

          INTEGER_GROUP(I, integer, uint32_t)
          INTEGER_GROUP(L, int64, uint64_t)
          CALCULATE(kAddD, real, x + y)
          CALCULATE(kSubtractD, real, x - y)
          CALCULATE(kMultiplyD, real, x * y)
          CALCULATE(kDivideD, real, x / y)
          CALCULATE(kIntegerDivideD, real, std::trunc(x / y))
          CALCULATE(kModuloD, real, std::fmod(x, y))
          CALCULATE(kPowerD, real, std::pow(x, y))
        case Op::kAddImmediateI:
          r[i.a].integer = wrap(static_cast<uint32_t>(r[i.b].integer) +
                                static_cast<uint32_t>(static_cast<int16_t>(i.c)));
          continue;
          COMPARE_GROUP(I, integer)
          COMPARE_GROUP(L, int64)
          COMPARE_GROUP(D, real)
          COMPARE(kEqualS, compare_strings(r[i.b].string, r[i.c].string) == 0)
          COMPARE(kNotEqualS, compare_strings(r[i.b].string, r[i.c].string) != 0)
          COMPARE(kLessS, compare_strings(r[i.b].string, r[i.c].string) < 0)
          COMPARE(kLessEqualS, compare_strings(r[i.b].string, r[i.c].string) <= 0)
          COMPARE(kEqualO, r[i.b].object == r[i.c].object)
          COMPARE(kNotEqualO, r[i.b].object != r[i.c].object)
          COMPARE(kEqualB, (r[i.b].boolean != 0) == (r[i.c].boolean != 0))
          COMPARE(kNotEqualB, (r[i.b].boolean != 0) != (r[i.c].boolean != 0))
          COMPARE(kNotB, r[i.b].boolean == 0)
          COMPARE(kToBoolean, r[i.b].int64 != 0)
          CONVERT(kNegateD, real, -r[i.b].real)
          CONVERT(kBooleanToInteger, int64, r[i.b].boolean != 0)
          CONVERT(kIntegerToInt64, int64, r[i.b].integer)
          CONVERT(kIntegerToDouble, real, r[i.b].integer)
          CONVERT(kInt64ToInteger, integer, static_cast<int32_t>(r[i.b].int64))
          CONVERT(kInt64ToDouble, real, static_cast<double>(r[i.b].int64))
          CONVERT(kSingleToDouble, real, static_cast<double>(r[i.b].single))
          CONVERT(kDoubleToInteger, integer, integer_of<int32_t>(r[i.b].real, Kind::kInteger))
          CONVERT(kDoubleToInt64, int64, integer_of<int64_t>(r[i.b].real, Kind::kInt64))
          CONVERT(kDoubleToSingle, single, static_cast<float>(r[i.b].real))
        case Op::kTextToInt64:
          r[i.a].int64 =
              integer_of<int64_t>(leading_number(string_utf8(r[i.b].string)), Kind::kInt64);
          continue;
        case Op::kTextToDouble:
          r[i.a].real = leading_number(string_utf8(r[i.b].string));
          continue;
        case Op::kToText:
          if (to_text(r[i.b], program_.types[i.c], r[i.a])) continue;
          break;
        case Op::kConcatenate: {
          const Instruction* words = next;
          next += word_count(i.b);
          if (concatenate(i, words, r)) continue;
          break;
        }
        case Op::kBox:
          if (box(r[i.b], program_.types[i.c], r[i.a])) continue;
          break;
        case Op::kUnbox:
          if (unbox(r[i.b].object, program_.types[i.c], r[i.a])) continue;
          break;
        case Op::kVariantOperate: {
          const auto op = static_cast<Operator>(word_register(next++, 0));
          if (variant_operate(op, r[i.b].object, r[i.c].object, r[i.a])) continue;
          break;
        }
        case Op::kVariantCompare: {
          const auto op = static_cast<Operator>(word_register(next++, 0));
          if (variant_compare(op, r[i.b].object, r[i.c].object, r[i.a])) continue;
          break;
        }
        case Op::kVariantUnary:
          if (variant_unary(static_cast<Operator>(i.c), r[i.b].object, r[i.a])) continue;
          break;
        case Op::kIsA:
          r[i.a].boolean = is_a(r[i.b].object, program_.classes[i.c]);
          continue;
        case Op::kCast: {
          const REALobject object = r[i.b].object;
          if (object != nullptr && !is_a(object, program_.classes[i.c])) {
            raise("IllegalCastException", "the object is of the class " +
                                              object->class_info->name() + ", not " +
                                              program_.classes[i.c]->name());
            break;
          }
          lock_object(object);
          set_object(r[i.a], object);
          continue;
        }

        case Op::kLoop:
          if (g_interrupted.load(std::memory_order_relaxed)) {
            g_interrupted.store(false);
            return Outcome::kInterrupted;
          }
          next += i.wide();
          continue;
          JUMP_WIDE(kJump, true)
          JUMP_WIDE(kJumpTrue, r[i.a].boolean != 0)
          JUMP_WIDE(kJumpFalse, r[i.a].boolean == 0)
          JUMP_WIDE(kJumpNil, r[i.a].object == nullptr)
          JUMP_WIDE(kJumpNotNil, r[i.a].object != nullptr)
          JUMP(kJumpEqualI, r[i.a].integer == r[i.b].integer)
          JUMP(kJumpNotEqualI, r[i.a].integer != r[i.b].integer)
          JUMP(kJumpLessI, r[i.a].integer < r[i.b].integer)
          JUMP(kJumpLessEqualI, r[i.a].integer <= r[i.b].integer)
          JUMP(kJumpEqualConstantI, r[i.a].integer == static_cast<int16_t>(i.b))
          JUMP(kJumpNotEqualConstantI, r[i.a].integer != static_cast<int16_t>(i.b))
          JUMP(kJumpLessConstantI, r[i.a].integer < static_cast<int16_t>(i.b))
          JUMP(kJumpLessEqualConstantI, r[i.a].integer <= static_cast<int16_t>(i.b))
          JUMP(kJumpGreaterConstantI, r[i.a].integer > static_cast<int16_t>(i.b))
          JUMP(kJumpGreaterEqualConstantI, r[i.a].integer >= static_cast<int16_t>(i.b))
          JUMP(kJumpEqualD, r[i.a].real == r[i.b].real)
          JUMP(kJumpNotEqualD, !(r[i.a].real == r[i.b].real))
          JUMP(kJumpLessD, r[i.a].real < r[i.b].real)
          JUMP(kJumpLessEqualD, r[i.a].real <= r[i.b].real)
          JUMP(kJumpNotLessD, !(r[i.a].real < r[i.b].real))
          JUMP(kJumpNotLessEqualD, !(r[i.a].real <= r[i.b].real))
        case Op::kForNextI: {
          const int32_t now = r[i.a].integer;
          r[i.a].integer = wrap(static_cast<uint32_t>(now) + 1);
          if (now >= r[i.b].integer) continue;
          if (g_interrupted.load(std::memory_order_relaxed)) {
            g_interrupted.store(false);
            return Outcome::kInterrupted;
          }
          next += static_cast<int16_t>(i.c);
          continue;
        }
          STEP_GROUP(I, integer, wrap(static_cast<uint32_t>(before) + static_cast<uint32_t>(step)),
                     (now >= before) == (step >= 0))
          STEP_GROUP(L, int64, wrap(static_cast<uint64_t>(before) + static_cast<uint64_t>(step)),
                     (now >= before) == (step >= 0))
          STEP_GROUP(D, real, before + step, true)
          STEP_GROUP(S, single, before + step, true)

        case Op::kNew:
          if (make_instance(*program_.classes[i.b], r[i.a])) continue;
          break;
        case Op::kCallMethod:
        case Op::kCallSetter: {
          const MethodInfo* const method = program_.method(i.b);
          if (method == nullptr) {
            raise_no_method(i.b);
            break;
          }
          const Instruction* words = next;
          next += word_count(method->signature.parameters.size());
          if (i.c != kNoRegister && r[i.c].object == nullptr) {
            raise_nil(words);
            break;
          }
          if (i.op == Op::kCallMethod ? call_method_at(*method, i, words, r)
                                      : call_setter_at(*method, i, words, r))
            continue;
          break;
        }
        case Op::kGetProperty: {
          const PropertyInfo& property = *program_.properties[i.b];
          if (r[i.c].object == nullptr) {
            raise_nil(next);
            break;
          }
          const Undisturbed undisturbed(*this);
          Slot result;
          get_property(property, r[i.c].object, &result);
          set_owned(r[i.a], storage_of(property.type.kind), result);
          if (!check_call()) break;
          continue;
        }
        case Op::kSetProperty: {
          if (r[i.c].object == nullptr) {
            raise_nil(next);
            break;
          }
          const Undisturbed undisturbed(*this);
          set_property(*program_.properties[i.b], r[i.c].object, r[i.a]);
          if (!check_call()) break;
          continue;
        }
          FIELD_GROUP(Number, r[i.a] = field, field = r[i.a])
          FIELD_GROUP(String, (lock_string(field.string), set_string(r[i.a], field.string)),
                      (lock_string(r[i.a].string), set_string(field, r[i.a].string)))
          FIELD_GROUP(Object, (lock_object(field.object), set_object(r[i.a], field.object)),
                      (lock_object(r[i.a].object), set_object(field, r[i.a].object)))
        case Op::kCallVirtual:
        case Op::kCallRoutine: {
          if (g_interrupted.load(std::memory_order_relaxed)) {
            g_interrupted.store(false);
            return Outcome::kInterrupted;
          }
          const Instruction* words = next;
          size_t routine = i.b;
          if (i.op == Op::kCallVirtual) {
            const REALobject receiver = r[word_register(words, 0)].object;
            if (receiver == nullptr) {
              raise_nil(words);
              break;
            }
            routine = static_cast<const ScriptClass*>(receiver->class_info)->methods[i.b];
          }
          const RoutineCode& code = program_.routines[routine];
          next += word_count(i.c);
          if (!enter(code, words, next, i.a)) break;
          r = frames_.back().registers;
          next = code.code.data();
          continue;
        }
        case Op::kReturn:
        case Op::kReturnValue: {
          const Frame frame = frames_.back();
          if (frames_.size() == base_ + 1) return Outcome::kFinished;
          Slot result;
          if (i.op == Op::kReturnValue) std::swap(result, r[i.a]);
          clean_frame(frame);
          frames_.pop_back();
          r = frames_.back().registers;
          if (i.op == Op::kReturnValue) set_owned(r[frame.result], frame.code->result, result);
          next = frame.caller_next;
          continue;
        }
        case Op::kRaise:
          if (r[i.a].object == nullptr) {
            raise("NilObjectException", "what is raised is Nil");
          } else {
            raise_exception(r[i.a].object);
          }
          break;
        case Op::kRethrow:
          raise_exception(r[i.a].object);
          position_ = static_cast<SourceOffset>(r[i.b].bits);
          rethrown_ = true;
          break;
        case Op::kQuit:
          exit_status_ = i.a == kNoRegister ? 0 : r[i.a].integer;
          return Outcome::kQuit;

        case Op::kNewArray:
        case Op::kMakeArray: {
          const Instruction* words = next;
          next += word_count(i.c);
          if (i.op == Op::kNewArray ? new_array_at(i, words, r) : make_array_at(i, words, r))
            continue;
          break;
        }
        case Op::kResize: {
          const Instruction* words = next;
          next += word_count(i.b);
          ARRAY(array, i.a)
          if (resize_array(*array, words, i.b, r)) continue;
          break;
        }
        case Op::kFlatIndex: {
          const Instruction* words = next;
          next += word_count(i.c);
          ARRAY(array, i.b)
          if (flat_index(*array, words, i.c, r, r[i.a])) continue;
          break;
        }
          ELEMENT_GROUP(Number, r[i.a] = element, element = r[i.a])
          ELEMENT_GROUP(String, (lock_string(element.string), set_string(r[i.a], element.string)),
                        (lock_string(r[i.a].string), set_string(element, r[i.a].string)))
          ELEMENT_GROUP(Object, (lock_object(element.object), set_object(r[i.a], element.object)),
                        (lock_object(r[i.a].object), set_object(element, r[i.a].object)))
        case Op::kArrayLength: {
          ARRAY(array, i.b)
          r[i.a].int64 = static_cast<int64_t>(array->elements.size());
          continue;
        }
        case Op::kArrayUpper: {
          ARRAY(array, i.b)
          if (array_upper(*array, i.c == kNoRegister ? nullptr : &r[i.c], r[i.a])) continue;
          break;
        }
        case Op::kArrayAppend: {
          ARRAY(array, i.a)
          if (array_insert(*array, static_cast<int32_t>(array->elements.size()), r[i.b])) continue;
          break;
        }
        case Op::kArrayInsert: {
          ARRAY(array, i.a)
          if (array_insert(*array, r[i.b].integer, r[i.c])) continue;
          break;
        }
        case Op::kArrayRemove: {
          ARRAY(array, i.a)
          if (array_remove(*array, r[i.b].integer, nullptr)) continue;
          break;
        }
        case Op::kArrayPop: {
          ARRAY(array, i.b)
          if (array_remove(*array, static_cast<int32_t>(array->elements.size()) - 1, &r[i.a]))
            continue;
          break;
        }
        case Op::kArrayIndexOf: {
          ARRAY(array, i.b)
          r[i.a].int64 = array_index_of(*array, r[i.c]);
          continue;
        }
        case Op::kArguments:
          if (script_arguments(r[i.a])) continue;
          break;
        case Op::kPrint: {
          const Instruction* words = next;
          next += word_count(size_t{i.a} * 2);
          if (stopping_ != Outcome::kFinished) return stopping_;
          print(i, words, r);
          continue;
        }
      }
    } catch (const std::bad_alloc&) {
      raise_out_of_memory("what this needs");
    }
    if (!unwind(next, r)) return Outcome::kUncaught;
  }
}

}  // namespace krz
