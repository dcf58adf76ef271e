// The syntax tree. The parser makes it; the checker turns names into what they mean, in place, and
// fills in types; the compiler reads the result. Nodes live in an arena and own nothing.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "language/names.h"
#include "language/source.h"
#include "object/type.h"

namespace krz {

struct ClassDecl;
struct ConstantInfo;
struct MethodInfo;
struct PropertyInfo;
struct Routine;
struct Stmt;

enum class ExprKind : uint8_t {
  // Made by the parser.
  kLiteral,  // type.kind says which; the value lies in `literal`, a string in `text`
  kName,
  kMember,  // left.name
  kCall,    // left(args): a call, an element, or a conversion
  kNew,
  kUnary,
  kBinary,
  kIsA,
  // Made by the checker.
  kError,  // reported already; whatever depends on it stays silent
  kVariable,
  kIndex,    // left[args]
  kConvert,  // op is a Conversion
  kCast,     // to the class in `type`, checked when run
  kField,    // left.variable: a property of a class of the script
  kRoutine,  // a call of a Sub or Function of the script, or of a method of one of its classes,
             // with
             // the receiver in left and a Dispatch in op
  kMethod,   // a call of a registered method; left is the receiver, null when shared or global
  kProperty,
  kRegisteredText,  // a registered string constant
  kBuiltin,         // op is a Builtin
};

enum class Operator : uint8_t {
  kNegate,
  kNot,
  kPower,
  kMultiply,
  kDivide,
  kIntegerDivide,
  kModulo,
  kAdd,
  kSubtract,
  kConcatenate,
  kEqual,
  kNotEqual,
  kLess,
  kLessEqual,
  kGreater,
  kGreaterEqual,
  kIs,
  kAnd,
  kOr,
  kXor,
};

/// How the operator is written: "Mod".
std::string_view operator_text(Operator op);

/// What the language itself offers beside registered functions.
enum class Builtin : uint8_t {
  kNone,
  kArgs,
  kQuit,
  kUBound,
  kArray,  // Array(a, b, …)
  // Members of arrays.
  kCount,
  kLastIndex,
  kAppend,
  kInsert,
  kRemoveAt,
  kPop,
  kIndexOf,
};

enum class Conversion : uint8_t {
  kRetype,  // the same bits under another type: a subclass as its superclass, Integer as Color, Nil
            // as anything
  kBooleanToInteger,
  kIntegerToInt64,
  kIntegerToDouble,
  kInt64ToInteger,
  kInt64ToDouble,
  kSingleToDouble,
  kDoubleToInteger,
  kDoubleToInt64,
  kDoubleToSingle,
  kToBoolean,    // from Integer or Int64: is it other than zero
  kToText,       // from anything that prints
  kTextToInt64,  // the number a text begins with, 0 when none
  kTextToDouble,
  kBox,    // into a Variant
  kUnbox,  // out of a Variant, checked when run
};

/// How a call of a script's routine finds it.
enum class Dispatch : uint8_t {
  kFixed,    // the one that the checker chose
  kVirtual,  // the one that the receiver's own class has in its place
};

/// A variable of the script: a parameter, a local, one of the module's, or a property of a class.
struct Variable {
  NameId name = kNoName;
  SourceOffset position = 0;
  Type type;
  bool by_ref = false;
  bool global = false;  // declared at module level, outside blocks, or living as long as such a one
  bool fixed = false;   // Self: cannot be assigned to
  bool placed = false;  // has its register already: an earlier piece of a session declared it
  uint16_t reg = 0;     // given by the compiler; of a property its slot in the instance
};

struct Expr {
  ExprKind kind = ExprKind::kError;
  uint8_t op = 0;           // Operator, Conversion or Builtin
  bool calls = false;       // evaluating it may run other code, which may change variables
  bool has_parens = false;  // kCall written without arguments, kNew with any: "x()" is not "x"
  uint16_t depth = 1;       // of the tree below, to bound recursion
  uint16_t arg_count = 0;
  SourceOffset position = 0;  // what a message points at
  SourceOffset begin = 0;     // its source text
  SourceOffset end = 0;
  Type type;
  union {
    Expr* left = nullptr;
    const char* text;
  };
  union {
    Expr** args = nullptr;
    Expr* right;
  };
  union {
    Slot literal{};
    size_t text_length;
    NameId name;
    Variable* variable;
    Routine* routine;
    const MethodInfo* method;
    const PropertyInfo* property;
    const ConstantInfo* constant;
    const ClassInfo* class_info;
  };

  bool is(ExprKind other) const { return kind == other; }
  Operator operator_kind() const { return static_cast<Operator>(op); }
  Builtin builtin() const { return static_cast<Builtin>(op); }
  Conversion conversion() const { return static_cast<Conversion>(op); }
  std::string_view text_value() const { return {text, text_length}; }
  std::span<Expr*> arguments() const { return {args, arg_count}; }
};

/// A type as written: "Integer", "QTTrackKRZ".
struct TypeName {
  NameId name = kNoName;  // none: no type was written
  SourceOffset position = 0;
  uint8_t rank = 0;  // of "()" behind the name of what is declared
};

struct Block {
  Stmt* first = nullptr;
};

enum class StmtKind : uint8_t {
  kDim,
  kReDim,
  kConst,
  kAssign,
  kExpression,
  kPrint,
  kIf,
  kSelect,
  kFor,
  kForEach,
  kWhile,
  kDo,
  kExit,
  kContinue,
  kReturn,
  kTry,
  kRaise,
};

struct Stmt {
  StmtKind kind;
  bool damaged = false;  // something in it did not parse; only of statements at module level
  SourceOffset position;
  Stmt* next = nullptr;
};

/// One variable of a Dim; one Dim makes as many of these statements as it names variables.
struct DimStmt : Stmt {
  NameId name = kNoName;
  TypeName type_name;
  bool as_new = false;
  Expr* initial = nullptr;  // of "= value" or "As New"
  std::span<Expr*> bounds;  // of an array that is made at once
  Variable* variable = nullptr;
  Variable* reached = nullptr;  // of a Static: whether it has its first value
  bool is_static = false;
};

struct ReDimStmt : Stmt {
  Expr* array = nullptr;
  std::span<Expr*> bounds;
};

struct ConstStmt : Stmt {
  NameId name = kNoName;
  TypeName type_name;
  Expr* value = nullptr;
  bool declared = false;
};

/// A part of an assignment's target that is evaluated once, into a variable without a name.
struct HeldPart {
  Variable* variable;
  Expr* value;
};

struct AssignStmt : Stmt {
  Expr* target = nullptr;
  Expr* value = nullptr;      // of "target += x": target + x; null: the target is a call that takes
                              // the value as its last argument
  bool reads_target = false;  // "+=" and the like: the left side of the value is the target
  std::span<HeldPart> held;
};

struct ExpressionStmt : Stmt {
  Expr* expression = nullptr;
};

struct PrintStmt : Stmt {
  std::span<Expr*> values;
};

/// If, its ElseIfs as a chain, and Else as a last link without a condition.
struct IfStmt : Stmt {
  Expr* condition = nullptr;
  Block body;
  IfStmt* otherwise = nullptr;
};

enum class CaseTest : uint8_t { kValue, kRange, kCompare };

struct CaseItem {
  CaseTest test;
  Operator compare;  // of "Is > 5"
  Expr* value;
  Expr* upper;  // of a range
};

struct CaseClause {
  std::span<CaseItem> items;  // empty: Case Else
  Block body;
  CaseClause* next = nullptr;
  SourceOffset position = 0;
};

struct SelectStmt : Stmt {
  Expr* subject = nullptr;
  CaseClause* clauses = nullptr;
  Variable* hidden = nullptr;  // what the cases compare with
};

struct ForStmt : Stmt {
  Expr* target = nullptr;
  TypeName type_name;  // of a variable declared here
  Variable* declared = nullptr;
  Expr* first = nullptr;
  Expr* last = nullptr;
  Expr* step = nullptr;
  bool down = false;
  Block body;
};

struct ForEachStmt : Stmt {
  Expr* target = nullptr;
  TypeName type_name;
  Variable* declared = nullptr;
  Expr* array = nullptr;
  Variable* element = nullptr;  // as the array holds it
  Expr* value = nullptr;        // the element as the loop's variable takes it
  Block body;
};

struct WhileStmt : Stmt {
  Expr* condition = nullptr;
  Block body;
};

struct DoStmt : Stmt {
  Expr* condition = nullptr;  // null: for ever
  bool until = false;
  bool at_end = false;
  Block body;
};

enum class Leaves : uint8_t { kInnermostLoop, kFor, kWhile, kDo, kSelect, kRoutine };

/// Exit and Continue.
struct LeaveStmt : Stmt {
  Leaves what = Leaves::kInnermostLoop;
};

struct ReturnStmt : Stmt {
  Expr* value = nullptr;
};

struct CatchClause {
  NameId name = kNoName;  // none: a bare Catch
  TypeName type_name;
  Variable* variable = nullptr;
  const ClassInfo* class_info = nullptr;  // null: any exception
  Block body;
  CatchClause* next = nullptr;
  SourceOffset position = 0;
};

struct TryStmt : Stmt {
  Block body;
  CatchClause* catches = nullptr;
  bool has_finally = false;
  Block finally;
};

struct RaiseStmt : Stmt {
  Expr* exception = nullptr;
};

struct RoutineParameter {
  Variable variable;
  TypeName type_name;
  bool optional = false;
  bool assigns = false;  // takes the value of object.Name = value
  Expr* default_value = nullptr;
};

enum class Access : uint8_t { kPublic, kProtected, kPrivate };

/// A Sub or Function.
struct Routine {
  NameId name = kNoName;
  SourceOffset position = 0;  // of its name
  SourceOffset header_begin = 0;
  SourceOffset header_end = 0;
  bool function = false;
  bool header_whole = true;  // nothing was wrong up to the end of its first line
  bool whole = true;         // nor behind it
  std::span<RoutineParameter> parameters;
  TypeName result_name;
  Type result;
  Block body;
  SourceOffset end = 0;  // of its End
  uint32_t index = 0;
  Routine* next = nullptr;
  Routine* next_overload = nullptr;
  const Routine* replaced = nullptr;  // one of an earlier piece of a session, called just like it

  // Of methods alone.
  ClassDecl* owner = nullptr;
  Variable* self = nullptr;  // null: shared
  Access access = Access::kPublic;
  bool shared = false;
  bool constructor = false;
  bool destructor = false;
  bool calls_super = false;    // of a constructor: it calls the superclass's itself
  Expr* super_call = nullptr;  // of a constructor: the call that is made before its body
  uint16_t method_number = 0;  // of an instance method: its place in the class's table
};

class ScriptClass;

/// A property of a class of the script.
struct ClassField {
  DimStmt* declaration = nullptr;
  Access access = Access::kPublic;
  bool shared = false;
  ClassField* next = nullptr;
};

struct ClassConstant {
  ConstStmt* declaration = nullptr;
  Access access = Access::kPublic;
  Expr* value = nullptr;  // null while it is not known, or in error
  ClassConstant* next = nullptr;
};

/// Class … End Class.
struct ClassDecl {
  enum class State : uint8_t { kNew, kInProgress, kDone };

  NameId name = kNoName;
  SourceOffset position = 0;
  SourceOffset end = 0;
  TypeName superclass_name;
  ClassField* fields = nullptr;
  ClassConstant* constants = nullptr;
  Routine* methods = nullptr;
  Routine initialiser;  // gives the properties their first values
  ScriptClass* info = nullptr;
  ClassDecl* superclass = nullptr;  // null: a registered class or none
  State state = State::kNew;
  int depth = 0;  // classes of the script above it
  ClassDecl* next = nullptr;
};

struct ScriptTree {
  Block body;
  Routine* routines = nullptr;
  uint32_t routine_count = 0;  // methods and initialisers included
  ClassDecl* classes = nullptr;
  std::span<Variable*> hidden_globals;  // Static variables and shared properties
  Variable* shown = nullptr;            // gets the value of an expression alone
  bool body_whole = true;               // nothing was wrong in the code outside of routines
  bool classes_whole = true;            // nor in a class
  bool names_lost = false;              // what was wrong may have declared names that others use
};

}  // namespace krz
