// The loop that executes instructions.
#include <atomic>
#include <cmath>
#include <limits>

#include "language/machine.h"
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

void Machine::interrupt() { g_interrupted.store(true, std::memory_order_relaxed); }

// Each macro is the body of one shape of instruction. `i` is the instruction, `r` the registers,
// `next` what follows it.
#define CALCULATE(op_name, member, expression) \
  case Op::op_name: {                          \
    const auto x = r[i.b].member;              \
    const auto y = r[i.c].member;              \
    r[i.a].member = expression;                \
    continue;                                  \
  }
#define WRAPPING(op_name, member, unsigned_type, sign)                        \
  case Op::op_name:                                                           \
    r[i.a].member = wrap(static_cast<unsigned_type>(r[i.b].member)            \
                             sign static_cast<unsigned_type>(r[i.c].member)); \
    continue;
#define DIVIDING(op_name, member, function)                 \
  case Op::op_name:                                         \
    if (r[i.c].member == 0) {                               \
      raise("DivisionByZeroException", "the divisor is 0"); \
      break;                                                \
    }                                                       \
    r[i.a].member = function(r[i.b].member, r[i.c].member); \
    continue;
#define COMPARE(op_name, expression)                   \
  case Op::op_name:                                    \
    r[i.a].boolean = static_cast<uint8_t>(expression); \
    continue;
#define CONVERT(op_name, to, expression) \
  case Op::op_name:                      \
    r[i.a].to = expression;              \
    continue;
#define JUMP_WIDE(op_name, condition) \
  case Op::op_name:                   \
    if (condition) next += i.wide();  \
    continue;
#define JUMP(op_name, condition)                      \
  case Op::op_name:                                   \
    if (condition) next += static_cast<int16_t>(i.c); \
    continue;
#define INTEGER_GROUP(suffix, member, unsigned_type)    \
  WRAPPING(kAdd##suffix, member, unsigned_type, +)      \
  WRAPPING(kSubtract##suffix, member, unsigned_type, -) \
  WRAPPING(kMultiply##suffix, member, unsigned_type, *) \
  DIVIDING(kDivide##suffix, member, divide)             \
  DIVIDING(kModulo##suffix, member, modulo)             \
  CALCULATE(kAnd##suffix, member, x& y)                 \
  CALCULATE(kOr##suffix, member, x | y)                 \
  CALCULATE(kXor##suffix, member, x ^ y)                \
  CONVERT(kNot##suffix, member, ~r[i.b].member)         \
  CONVERT(kNegate##suffix, member,                      \
          wrap(unsigned_type{0} - static_cast<unsigned_type>(r[i.b].member)))
#define COMPARE_GROUP(suffix, member)                        \
  COMPARE(kEqual##suffix, r[i.b].member == r[i.c].member)    \
  COMPARE(kNotEqual##suffix, r[i.b].member != r[i.c].member) \
  COMPARE(kLess##suffix, r[i.b].member < r[i.c].member)      \
  COMPARE(kLessEqual##suffix, r[i.b].member <= r[i.c].member)
// A copy into a register or variable: the new value is locked before the old one is let go of.
#define COPY_GROUP(prefix, target, source) \
  case Op::prefix##Number:                 \
    (target) = (source);                   \
    continue;                              \
  case Op::prefix##String:                 \
    lock_string((source).string);          \
    set_string(target, (source).string);   \
    continue;                              \
  case Op::prefix##Object:                 \
    lock_object((source).object);          \
    set_object(target, (source).object);   \
    continue;
#define STEP_GROUP(suffix, member, advanced, fits)                                     \
  case Op::kForTest##suffix: {                                                         \
    const auto now = r[i.a].member;                                                    \
    if (!(r[i.c].member < 0 ? now >= r[i.b].member : now <= r[i.b].member)) ++next;    \
    continue;                                                                          \
  }                                                                                    \
  case Op::kForStep##suffix: {                                                         \
    const auto before = r[i.a].member;                                                 \
    const auto step = r[i.c].member;                                                   \
    const auto now = advanced;                                                         \
    r[i.a].member = now;                                                               \
    if (!((fits) && (step < 0 ? now >= r[i.b].member : now <= r[i.b].member))) ++next; \
    continue;                                                                          \
  }
// The array in a register, or an exception.
#define ARRAY(name, reg)                                 \
  auto* name = static_cast<ArrayObject*>(r[reg].object); \
  if (name == nullptr) {                                 \
    raise_nil(next);                                     \
    break;                                               \
  }
#define ELEMENT(array, reg)                                       \
  const int32_t index = r[reg].integer;                           \
  if (static_cast<uint32_t>(index) >= (array)->elements.size()) { \
    raise_bounds(*(array), index);                                \
    break;                                                        \
  }                                                               \
  Slot& element = (array)->elements[static_cast<uint32_t>(index)];
#define ELEMENT_GROUP(kind, copy_out, copy_in) \
  case Op::kGetElement##kind: {                \
    ARRAY(array, i.b)                          \
    ELEMENT(array, i.c)                        \
    copy_out;                                  \
    continue;                                  \
  }                                            \
  case Op::kSetElement##kind: {                \
    ARRAY(array, i.b)                          \
    ELEMENT(array, i.c)                        \
    copy_in;                                   \
    continue;                                  \
  }

/// An instruction that is done `continue`s; one that raised `break`s.
Machine::Outcome Machine::execute() {
  const Instruction* next = frames_.back().code->code.data();
  Slot* r = frames_.back().registers;
  Slot* const globals = r;
  for (;;) {
    const Instruction i = *next++;
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
      case Op::kIsA:
        r[i.a].boolean = is_a(r[i.b].object, program_.classes[i.c]);
        continue;
      case Op::kCast: {
        const REALobject object = r[i.b].object;
        if (object != nullptr && !is_a(object, program_.classes[i.c])) {
          raise("IllegalCastException", "the object is of the class " + object->class_info->name() +
                                            ", not " + program_.classes[i.c]->name());
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

      case Op::kNew:
        if (make_instance(*program_.classes[i.b], r[i.a])) continue;
        break;
      case Op::kCallMethod: {
        const Instruction* words = next;
        next += word_count(program_.methods[i.b]->signature.parameters.size());
        if (i.c != kNoRegister && r[i.c].object == nullptr) {
          raise_nil(words);
          break;
        }
        if (call_method_at(i, words, r)) continue;
        break;
      }
      case Op::kCallSetter: {
        const Instruction* words = next;
        next += word_count(program_.methods[i.b]->signature.parameters.size());
        if (i.c != kNoRegister && r[i.c].object == nullptr) {
          raise_nil(words);
          break;
        }
        if (call_setter_at(i, words, r)) continue;
        break;
      }
      case Op::kGetProperty: {
        const PropertyInfo& property = *program_.properties[i.b];
        if (r[i.c].object == nullptr) {
          raise_nil(next);
          break;
        }
        Slot result;
        get_property(property, r[i.c].object, &result);
        set_owned(r[i.a], storage_of(property.type.kind), result);
        if (exception_pending()) break;
        continue;
      }
      case Op::kSetProperty:
        if (r[i.c].object == nullptr) {
          raise_nil(next);
          break;
        }
        set_property(*program_.properties[i.b], r[i.c].object, r[i.a]);
        if (exception_pending()) break;
        continue;
      case Op::kCallRoutine: {
        if (g_interrupted.load(std::memory_order_relaxed)) {
          g_interrupted.store(false);
          return Outcome::kInterrupted;
        }
        const RoutineCode& code = program_.routines[i.b];
        const Instruction* words = next;
        next += word_count(i.c);
        if (!enter(code, words, next, i.a)) break;
        r = frames_.back().registers;
        next = code.code.data();
        continue;
      }
      case Op::kReturn:
      case Op::kReturnValue: {
        const Frame frame = frames_.back();
        if (frames_.size() == 1) return Outcome::kFinished;
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
        print(i, words, r);
        continue;
      }
    }
    if (!unwind(next, r)) return Outcome::kUncaught;
  }
}

}  // namespace krz
