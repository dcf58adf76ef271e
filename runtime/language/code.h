// What the compiler makes and the machine runs: typed instructions over the registers of a frame.
//
// An instruction is four 16-bit words: the operation and up to three registers or table indices.
// Registers hold one kind of storage for the whole of a routine (numbers, strings or objects), so
// that a frame can be cleaned up at any point by walking its string and object registers: a
// reference register owns a lock on what it holds, or is null.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "language/names.h"
#include "language/script_class.h"
#include "language/source.h"
#include "language/types.h"
#include "registry/class_info.h"

namespace krz {

class Registry;

enum class Op : uint16_t {
  // Values. Groups of three are in the order of Storage.
  kLoadInteger,  // a = the 32-bit number in b and c
  kLoadNumber,   // a = numbers[b]
  kLoadText,     // a = texts[b]
  kClearNumber,  // a = 0
  kClearString,
  kClearObject,
  kMoveNumber,  // a = b
  kMoveString,
  kMoveObject,
  kGetGlobalNumber,  // a = global b
  kGetGlobalString,
  kGetGlobalObject,
  kSetGlobalNumber,  // global b = a
  kSetGlobalString,
  kSetGlobalObject,
  kGetThroughNumber,  // a = what the address in b points at
  kGetThroughString,
  kGetThroughObject,
  kSetThroughNumber,  // what the address in b points at = a
  kSetThroughString,
  kSetThroughObject,
  kAddressOfLocal,   // a = address of register b
  kAddressOfGlobal,  // a = address of global b

  // a = b op c
  kAddI,
  kSubtractI,
  kMultiplyI,
  kDivideI,
  kModuloI,
  kAndI,
  kOrI,
  kXorI,
  kAddL,
  kSubtractL,
  kMultiplyL,
  kDivideL,
  kModuloL,
  kAndL,
  kOrL,
  kXorL,
  kAddD,
  kSubtractD,
  kMultiplyD,
  kDivideD,
  kIntegerDivideD,
  kModuloD,
  kPowerD,
  kAddImmediateI,  // a = b + the signed c
  kEqualI,
  kNotEqualI,
  kLessI,
  kLessEqualI,
  kEqualL,
  kNotEqualL,
  kLessL,
  kLessEqualL,
  kEqualD,
  kNotEqualD,
  kLessD,
  kLessEqualD,
  kEqualS,
  kNotEqualS,
  kLessS,
  kLessEqualS,
  kEqualO,
  kNotEqualO,
  kEqualB,
  kNotEqualB,
  // a = op b
  kNegateI,
  kNegateL,
  kNegateD,
  kNotI,
  kNotL,
  kNotB,
  kBooleanToInteger,
  kIntegerToInt64,
  kIntegerToDouble,
  kInt64ToInteger,
  kInt64ToDouble,
  kSingleToDouble,
  kDoubleToInteger,
  kDoubleToInt64,
  kDoubleToSingle,
  kToBoolean,
  kTextToInt64,
  kTextToDouble,
  kToText,          // a = text of b, of types[c]
  kConcatenate,     // a = b strings, whose registers follow
  kBox,             // a = a Variant of b, of types[c]
  kUnbox,           // a = the Variant b as types[c]
  kVariantOperate,  // a = b op c of Variants; the Operator follows as a word
  kVariantCompare,  // the same, a Boolean
  kVariantUnary,    // a = op b of a Variant; the Operator is c
  kIsA,             // a = b is of classes[c]
  kCast,            // a = b, which must be of classes[c]

  // Jumps: a distance in instructions from the one behind the jump.
  kJump,      // 32 bits in b and c, as for all up to kJumpNotNil
  kLoop,      // backward, and the place where interruptions are seen
  kJumpTrue,  // when a
  kJumpFalse,
  kJumpNil,
  kJumpNotNil,
  kJumpEqualI,  // compares a with b; 16 bits in c, as for all that follow
  kJumpNotEqualI,
  kJumpLessI,
  kJumpLessEqualI,
  kJumpEqualConstantI,  // compares a with the signed b
  kJumpNotEqualConstantI,
  kJumpLessConstantI,
  kJumpLessEqualConstantI,
  kJumpGreaterConstantI,
  kJumpGreaterEqualConstantI,
  kJumpEqualD,
  kJumpNotEqualD,
  kJumpLessD,
  kJumpLessEqualD,
  kJumpNotLessD,
  kJumpNotLessEqualD,
  kForNextI,  // a = a + 1; back by c as long as a was below b
  kForTestI,  // runs the following jump when a has not passed b in the direction of the step c
  kForTestL,
  kForTestD,
  kForTestS,
  kForStepI,  // a = a + c, then the same
  kForStepL,
  kForStepD,
  kForStepS,

  // Objects and calls. The registers of arguments follow, four to a word.
  kNew,             // a = an instance of classes[b]
  kCallMethod,      // a = methods[b](receiver c, …)
  kCallSetter,      // methods[b](receiver c, …) = a
  kGetProperty,     // a = c.properties[b]
  kSetProperty,     // c.properties[b] = a
  kCallRoutine,     // a = functions[b](…), c arguments
  kCallVirtual,     // a = method number b of the first argument's class, c arguments
  kGetFieldNumber,  // a = slot c of the instance b
  kGetFieldString,
  kGetFieldObject,
  kSetFieldNumber,  // slot c of the instance b = a
  kSetFieldString,
  kSetFieldObject,
  kReturn,
  kReturnValue,  // a
  kRaise,        // a
  kRethrow,      // a, raised at the position in b
  kQuit,         // with status a

  // Arrays.
  kNewArray,          // a = an array of types[b] with c upper bounds, whose registers follow
  kMakeArray,         // a = an array of types[b] with c elements, whose registers follow
  kResize,            // the array a gets b upper bounds, whose registers follow
  kFlatIndex,         // a = the place in b of c indices, whose registers follow
  kGetElementNumber,  // a = b[c]
  kGetElementString,
  kGetElementObject,
  kSetElementNumber,  // b[c] = a
  kSetElementString,
  kSetElementObject,
  kArrayLength,   // a = number of elements of b
  kArrayUpper,    // a = upper bound of b in the dimension c
  kArrayAppend,   // a gets b
  kArrayInsert,   // a gets c before b
  kArrayRemove,   // a loses b
  kArrayPop,      // a = the last of b, which loses it
  kArrayIndexOf,  // a = place of c in b
  kArguments,     // a = the script's arguments

  kPrint,  // a values; pairs of register and type follow, two to a word
};

/// No register, where one is optional.
inline constexpr uint16_t kNoRegister = 0xFFFF;

struct Instruction {
  Op op = Op::kReturn;
  uint16_t a = 0;
  uint16_t b = 0;
  uint16_t c = 0;

  int32_t wide() const { return static_cast<int32_t>(uint32_t{b} | (uint32_t{c} << 16)); }
  void set_wide(int32_t value) {
    b = static_cast<uint16_t>(static_cast<uint32_t>(value));
    c = static_cast<uint16_t>(static_cast<uint32_t>(value) >> 16);
  }
  /// The n-th register of an argument word, which has no operation.
  uint16_t register_at(size_t n) const {
    switch (n) {
      case 0:
        return static_cast<uint16_t>(op);
      case 1:
        return a;
      case 2:
        return b;
      default:
        return c;
    }
  }
  void set_register_at(size_t n, uint16_t reg) {
    if (n == 0) op = static_cast<Op>(reg);
    if (n == 1) a = reg;
    if (n == 2) b = reg;
    if (n == 3) c = reg;
  }
};
static_assert(sizeof(Instruction) == 8);

/// Where in the source an instruction that may raise comes from.
struct Mark {
  uint32_t instruction;
  SourceOffset position;
  SourceOffset receiver_begin;  // the expression that must not be Nil
  SourceOffset receiver_end;
};

/// Where an exception raised between two instructions goes on.
struct Handler {
  uint32_t begin;
  uint32_t end;
  uint32_t target;
  uint16_t exception;     // register that gets the exception object
  uint16_t position;      // register that gets the place it was raised at
  uint16_t string_level;  // entries of string_registers that keep their values
  uint16_t object_level;
};

struct RoutineCode {
  std::string_view name;
  std::vector<Instruction> code;
  std::vector<Mark> marks;
  std::vector<Handler> handlers;  // inner ones first
  std::vector<uint16_t> string_registers;
  std::vector<uint16_t> object_registers;
  std::vector<Storage>
      parameters;  // in registers 0, 1, …; a ByRef parameter is an address, a number
  uint16_t register_count = 0;
  Storage result = Storage::kNumber;
};

struct TextConstant {
  std::string_view text;
  REALstring string = nullptr;  // made at first use
};

/// A registered method that is looked up when it is first called.
struct LateMethod {
  const ClassInfo* owner = nullptr;  // null for a global function
  std::string_view declaration;
  bool shared = false;
};

/// A compiled script. The texts it views belong to the syntax tree and the source, which must
/// outlive it.
struct Program {
  std::vector<RoutineCode> routines;  // the first is the module's own code
  std::vector<uint64_t> numbers;
  std::vector<TextConstant> texts;
  std::vector<Type> types;
  std::vector<const ClassInfo*> classes;
  std::vector<const MethodInfo*> methods;  // null: late_methods tells which
  std::vector<const PropertyInfo*> properties;
  ScriptClassList script_classes;
  std::vector<LateMethod> late_methods;  // of a program that was read from bytecode: all of them
  const Registry* registry = nullptr;    // where those are looked up

  Program() = default;
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program();

  /// Null when the registry has no method of that declaration.
  const MethodInfo* method(size_t index) {
    return methods[index] != nullptr ? methods[index] : find_method(index);
  }

 private:
  const MethodInfo* find_method(size_t index);  // bytecode.cpp
};

}  // namespace krz
