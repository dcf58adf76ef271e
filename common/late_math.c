// The functions of libm that krz uses. Each finds the real one when it is first called, so that a
// command which calculates nothing does not load the library: that took a tenth of its time.
//
// Linked into each of our shared objects in place of libm, where the C++ library finds them, too.
// A new function of <math.h> needs a line here; without one the object loads libm at its start, as
// it would have without this file.
#include <dlfcn.h>
#include <gnu/lib-names.h>
#include <stdio.h>
#include <stdlib.h>

static void* find(const char* name) {
  void* const library = dlopen(LIBM_SO, RTLD_LAZY | RTLD_LOCAL);
  void* const function = library ? dlsym(library, name) : NULL;
  if (function == NULL) {
    fprintf(stderr, "krz: %s of " LIBM_SO " cannot be loaded: %s\n", name, dlerror());
    abort();
  }
  return function;
}

// Several threads may find the same pointer at once.
#define LATE(result, name, parameters, arguments)                         \
  result name parameters;                                                 \
  result name parameters {                                                \
    static result(*known) parameters;                                     \
    result(*real) parameters = __atomic_load_n(&known, __ATOMIC_RELAXED); \
    if (real == NULL) {                                                   \
      real = (result(*) parameters)find(#name);                           \
      __atomic_store_n(&known, real, __ATOMIC_RELAXED);                   \
    }                                                                     \
    return real arguments;                                                \
  }
#define LATE_1(name) LATE(double, name, (double x), (x))
#define LATE_2(name) LATE(double, name, (double x, double y), (x, y))

LATE_1(acos)
LATE_1(asin)
LATE_1(atan)
LATE_1(cos)
LATE_1(exp)
LATE_1(log)
LATE_1(nearbyint)
LATE_1(round)
LATE_1(sin)
LATE_1(sqrt)
LATE_1(tan)
LATE_2(atan2)
LATE_2(fmax)
LATE_2(fmin)
LATE_2(fmod)
LATE_2(hypot)
LATE_2(pow)
LATE(long, lround, (double x), (x))
LATE(long, lroundf, (float x), (x))
LATE(long long, llround, (double x), (x))
LATE(int, fegetround, (void), ())
LATE(int, fesetround, (int direction), (direction))

void sincos(double x, double* sine, double* cosine);
void sincos(double x, double* sine, double* cosine) {
  *sine = sin(x);
  *cosine = cos(x);
}
