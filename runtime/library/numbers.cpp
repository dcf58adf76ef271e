// Functions on numbers. Angles are in radians.
#include <algorithm>
#include <cmath>

#include "library/parts.h"
#include "registry/tables.h"

namespace krz {

namespace {

double absolute(double x) { return std::fabs(x); }
int32_t absolute_integer(int32_t x) {
  return x < 0 ? static_cast<int32_t>(0u - static_cast<uint32_t>(x)) : x;
}
double least(double a, double b) { return std::min(a, b); }
double greatest(double a, double b) { return std::max(a, b); }
int32_t least_integer(int32_t a, int32_t b) { return std::min(a, b); }
int32_t greatest_integer(int32_t a, int32_t b) { return std::max(a, b); }
int64_t least_int64(int64_t a, int64_t b) { return std::min(a, b); }
int64_t greatest_int64(int64_t a, int64_t b) { return std::max(a, b); }
double floor_of(double x) { return std::floor(x); }
double ceiling(double x) { return std::ceil(x); }
// In place of std::round, for which libm would be loaded: most commands print a time, and round it.
double rounded(double x) {
  const double whole = std::trunc(x);
  return std::fabs(x - whole) >= 0.5 ? whole + std::copysign(1.0, x) : whole;
}
double square_root(double x) { return std::sqrt(x); }
double power(double x, double y) { return std::pow(x, y); }
double sine(double x) { return std::sin(x); }
double cosine(double x) { return std::cos(x); }
double tangent(double x) { return std::tan(x); }
double arc_sine(double x) { return std::asin(x); }
double arc_cosine(double x) { return std::acos(x); }
double arc_tangent(double x) { return std::atan(x); }
double arc_tangent2(double y, double x) { return std::atan2(y, x); }
double logarithm(double x) { return std::log(x); }
double exponential(double x) { return std::exp(x); }
int32_t sign(double x) { return (x > 0) - (x < 0); }

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(absolute_integer, "Abs(x as integer) as integer"),
    KRZ_FUNCTION(absolute, "Abs(x as double) as double"),
    KRZ_FUNCTION(least_integer, "Min(a as integer, b as integer) as integer"),
    KRZ_FUNCTION(least_int64, "Min(a as int64, b as int64) as int64"),
    KRZ_FUNCTION(least, "Min(a as double, b as double) as double"),
    KRZ_FUNCTION(greatest_integer, "Max(a as integer, b as integer) as integer"),
    KRZ_FUNCTION(greatest_int64, "Max(a as int64, b as int64) as int64"),
    KRZ_FUNCTION(greatest, "Max(a as double, b as double) as double"),
    KRZ_FUNCTION(floor_of, "Floor(x as double) as double"),
    KRZ_FUNCTION(ceiling, "Ceil(x as double) as double"),
    KRZ_FUNCTION(rounded, "Round(x as double) as double"),
    KRZ_FUNCTION(sign, "Sign(x as double) as integer"),
    KRZ_FUNCTION(square_root, "Sqrt(x as double) as double"),
    KRZ_FUNCTION(power, "Pow(x as double, y as double) as double"),
    KRZ_FUNCTION(sine, "Sin(x as double) as double"),
    KRZ_FUNCTION(cosine, "Cos(x as double) as double"),
    KRZ_FUNCTION(tangent, "Tan(x as double) as double"),
    KRZ_FUNCTION(arc_sine, "Asin(x as double) as double"),
    KRZ_FUNCTION(arc_cosine, "Acos(x as double) as double"),
    KRZ_FUNCTION(arc_tangent, "Atan(x as double) as double"),
    KRZ_FUNCTION(arc_tangent2, "Atan2(y as double, x as double) as double"),
    KRZ_FUNCTION(logarithm, "Log(x as double) as double"),
    KRZ_FUNCTION(exponential, "Exp(x as double) as double"),
};

}  // namespace

void register_numbers(Registry& registry) { registry.register_functions(kFunctions); }

}  // namespace krz
