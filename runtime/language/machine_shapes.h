// The shapes of instructions, for the loop of machine_loop.cpp alone: a group of operations that
// differ in a type or a sign is one line there.
#pragma once

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

#define FIELD_GROUP(kind, copy_out, copy_in)          \
  case Op::kGetField##kind: {                         \
    if (r[i.b].object == nullptr) {                   \
      raise_nil(next);                                \
      break;                                          \
    }                                                 \
    const Slot& field = field_of(r[i.b].object, i.c); \
    copy_out;                                         \
    continue;                                         \
  }                                                   \
  case Op::kSetField##kind: {                         \
    if (r[i.b].object == nullptr) {                   \
      raise_nil(next);                                \
      break;                                          \
    }                                                 \
    Slot& field = field_of(r[i.b].object, i.c);       \
    copy_in;                                          \
    continue;                                         \
  }
