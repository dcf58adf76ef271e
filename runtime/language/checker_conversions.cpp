// Which values may stand where a type is wanted, and what happens to them on the way.
#include <algorithm>
#include <cmath>

#include "language/checker.h"
#include "language/types.h"

namespace krz {
namespace {

constexpr int kImpossible = -1;
constexpr int kBoxCost = 20;

/// What widening from one kind of number to another costs in the choice of an overload.
int widening_cost(Kind from, Kind to) {
  if (from == Kind::kInteger && to == Kind::kInt64) return 1;
  if (from == Kind::kInteger && to == Kind::kDouble) return 2;
  if (from == Kind::kInteger && to == Kind::kSingle) return 4;
  if (from == Kind::kInt64 && to == Kind::kDouble) return 2;
  if (from == Kind::kInt64 && to == Kind::kSingle) return 4;
  if (from == Kind::kSingle && to == Kind::kDouble) return 1;
  if (from == Kind::kDouble && to == Kind::kSingle) return 4;
  return kImpossible;
}

/// Array(…), whose elements can still take another type.
bool is_array_literal(const Expr* expr) {
  return expr->is(ExprKind::kBuiltin) && expr->builtin() == Builtin::kArray;
}

double literal_number(const Expr* literal) {
  switch (literal->type.kind) {
    case Kind::kInteger:
      return literal->literal.integer;
    case Kind::kInt64:
      return static_cast<double>(literal->literal.int64);
    case Kind::kSingle:
      return literal->literal.single;
    default:
      return literal->literal.real;
  }
}

}  // namespace

int Checker::conversion_cost(const Expr* expr, const Type& target) const {
  const Type& from = expr->type;
  if (from == target) return 0;
  if (from.kind == Kind::kVoid || target.kind == Kind::kVoid) return kImpossible;
  if (from.kind == Kind::kNil) {
    const bool holds_nil = target.kind == Kind::kObject || target.kind == Kind::kArray ||
                           target.kind == Kind::kVariant;
    return holds_nil ? 1 : kImpossible;
  }
  if (from.is_number() && target.is_number()) return widening_cost(from.kind, target.kind);
  if (from.kind == Kind::kObject && target.kind == Kind::kObject) {
    if (target.class_info == nullptr) return 2;
    return from.class_info != nullptr && from.class_info->is_a(target.class_info) ? 1 : kImpossible;
  }
  if (is_array_literal(expr) && target.kind == Kind::kArray && target.rank == 1) {
    int most = 0;
    for (const Expr* element : expr->arguments()) {
      const int cost = conversion_cost(element, target.element_type());
      if (cost == kImpossible) return kImpossible;
      most = std::max(most, cost);
    }
    return most;
  }
  if (target.kind == Kind::kVariant) return kBoxCost;
  if (from.kind == Kind::kVariant) return kBoxCost + 1;
  return kImpossible;
}

Expr* Checker::make_conversion(Expr* expr, Conversion conversion, const Type& target) {
  Expr* result = arena_.make<Expr>();
  result->kind = ExprKind::kConvert;
  result->op = static_cast<uint8_t>(conversion);
  result->position = expr->position;
  result->begin = expr->begin;
  result->end = expr->end;
  result->calls = expr->calls;
  result->type = target;
  result->left = expr;
  return result;
}

/// To a wider kind of number, or from Double to Single.
Expr* Checker::widen(Expr* expr, Kind target) {
  const Kind from = expr->type.kind;
  if (from == target) return expr;
  if (expr->is(ExprKind::kLiteral)) {
    Expr* folded = arena_.make<Expr>(*expr);
    folded->literal = {};
    folded->type.kind = target;
    if (target == Kind::kInt64) {
      folded->literal.int64 = expr->literal.integer;
    } else if (target == Kind::kSingle) {
      folded->literal.single = static_cast<float>(literal_number(expr));
    } else {
      folded->literal.real = literal_number(expr);
    }
    return folded;
  }
  const Type type = simple_type(target);
  if (target == Kind::kInt64) return make_conversion(expr, Conversion::kIntegerToInt64, type);
  if (target == Kind::kSingle) {
    Expr* real = widen(expr, Kind::kDouble);
    return make_conversion(real, Conversion::kDoubleToSingle, type);
  }
  switch (from) {
    case Kind::kInteger:
      return make_conversion(expr, Conversion::kIntegerToDouble, type);
    case Kind::kInt64:
      return make_conversion(expr, Conversion::kInt64ToDouble, type);
    default:
      return make_conversion(expr, Conversion::kSingleToDouble, type);
  }
}

/// The value as `target`, as far as that needs no word of the script's writer. `purpose` is what
/// the value is for: "the argument “index”".
Expr* Checker::convert(Expr* expr, const Type& target, std::string_view purpose) {
  if (expr->is(ExprKind::kError) || target.kind == Kind::kVoid) return make_error(expr);
  if (expr->type == target) return expr;
  if (conversion_cost(expr, target) == kImpossible) {
    report(expr->begin, std::string(purpose) + " must be " + a_type(target) + ", not " +
                            a_type(expr->type) + conversion_advice(expr, target));
    return make_error(expr);
  }
  if (expr->type.is_number() && target.is_number()) return widen(expr, target.kind);
  if (expr->type.kind == Kind::kNil) return make_conversion(expr, Conversion::kRetype, target);
  if (is_array_literal(expr) && target.kind == Kind::kArray) {
    for (Expr*& element : expr->arguments())
      element = convert(element, target.element_type(), "this element");
    expr->type = target;
    return expr;
  }
  if (target.kind == Kind::kVariant) return make_conversion(expr, Conversion::kBox, target);
  if (expr->type.kind == Kind::kVariant) return make_conversion(expr, Conversion::kUnbox, target);
  return make_conversion(expr, Conversion::kRetype, target);
}

std::string Checker::conversion_advice(const Expr* expr, const Type& target) const {
  const Type& from = expr->type;
  const std::string wanted = type_text(target);
  if (from.kind == Kind::kObject && target.kind == Kind::kObject) {
    const bool may_be = from.class_info == nullptr || target.class_info->is_a(from.class_info);
    return may_be ? "; " + wanted + "(…) converts it when it is one" : "";
  }
  const bool plain = target.is_number() || target.kind == Kind::kString ||
                     target.kind == Kind::kBoolean || target.kind == Kind::kColor;
  const bool from_plain = from.is_number() || from.kind == Kind::kString ||
                          from.kind == Kind::kBoolean || from.kind == Kind::kColor;
  return plain && from_plain ? "; " + wanted + "(…) converts it" : "";
}

Expr* Checker::to_text(Expr* expr) {
  if (expr->type.kind == Kind::kString || expr->is(ExprKind::kError)) return expr;
  if (expr->type.kind == Kind::kArray || expr->type.kind == Kind::kVoid ||
      expr->type.kind == Kind::kObject || expr->type.kind == Kind::kNil) {
    report(expr->begin, a_type(expr->type) + " has no text");
    return make_error(expr);
  }
  return make_conversion(expr, Conversion::kToText, simple_type(Kind::kString));
}

/// A conversion that has no instruction of its own.
Expr* Checker::through_variant(Expr* expr, const Type& target) {
  Expr* boxed = make_conversion(expr, Conversion::kBox, simple_type(Kind::kVariant));
  return make_conversion(boxed, Conversion::kUnbox, target);
}

/// The conversions that a script asks for by a type's name: Integer(x).
Expr* Checker::convert_freely(Expr* expr, const Type& target) {
  const Type& from = expr->type;
  if (expr->is(ExprKind::kError) || conversion_cost(expr, target) != kImpossible)
    return convert(expr, target, "this");
  if (target.kind == Kind::kString) return to_text(expr);
  if (target.kind == Kind::kObject && from.kind == Kind::kObject) {
    if (from.class_info != nullptr && !target.class_info->is_a(from.class_info)) {
      report(expr->begin, a_type(from) + " is never " + a_type(target));
      return make_error(expr);
    }
    Expr* cast = make_conversion(expr, Conversion::kRetype, target);
    cast->kind = ExprKind::kCast;
    return cast;
  }
  if (from.kind == Kind::kString && target.kind == Kind::kBoolean)
    return through_variant(expr, target);
  if (from.kind == Kind::kString && target.is_number()) {
    if (!is_integral(target))
      return widen(make_conversion(expr, Conversion::kTextToDouble, simple_type(Kind::kDouble)),
                   target.kind);
    Expr* number = make_conversion(expr, Conversion::kTextToInt64, simple_type(Kind::kInt64));
    return target.kind == Kind::kInt64 ? number : convert_freely(number, target);
  }
  if (from.kind == Kind::kBoolean || from.kind == Kind::kColor) {
    const Conversion how =
        from.kind == Kind::kBoolean ? Conversion::kBooleanToInteger : Conversion::kRetype;
    Expr* number = make_conversion(expr, how, simple_type(Kind::kInteger));
    if (target.is_number()) return convert_freely(number, target);
  } else if (from.is_number()) {
    switch (target.kind) {
      case Kind::kBoolean:
        if (is_integral(from))
          return make_conversion(widen(expr, Kind::kInt64), Conversion::kToBoolean, target);
        return through_variant(expr, target);
      case Kind::kColor: {
        if (!is_integral(from)) break;
        Expr* integer = convert_freely(expr, simple_type(Kind::kInteger));
        return make_conversion(integer, Conversion::kRetype, target);
      }
      case Kind::kInteger:
        if (from.kind == Kind::kInt64)
          return make_conversion(expr, Conversion::kInt64ToInteger, target);
        return make_conversion(widen(expr, Kind::kDouble), Conversion::kDoubleToInteger, target);
      case Kind::kInt64:
        return make_conversion(widen(expr, Kind::kDouble), Conversion::kDoubleToInt64, target);
      default:
        break;
    }
  }
  report(expr->begin, a_type(from) + " cannot be converted to " + a_type(target));
  return make_error(expr);
}

}  // namespace krz
