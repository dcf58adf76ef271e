// Random numbers: the functions that every run answers differently, and the class Random, whose
// sequences can be repeated.
#include <ctime>
#include <string>

#include "library/parts.h"
#include "object/exceptions.h"
#include "registry/tables.h"

namespace krz {

namespace {

struct RandomData {
  uint64_t state;
};

uint64_t next_bits(RandomData& data) {
  data.state += 0x9E3779B97F4A7C15u;
  uint64_t mixed = data.state;
  mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9u;
  mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EBu;
  return mixed ^ mixed >> 31;
}

// At least 0 and below 1.
double next_number(RandomData& data) {
  return static_cast<double>(next_bits(data) >> 11) * 0x1p-53;
}

int32_t next_in_range(RandomData& data, int32_t least, int32_t greatest) {
  if (least > greatest) {
    raise_exception("OutOfBoundsException", std::to_string(least) + " is above " +
                                                std::to_string(greatest) +
                                                "; give the smaller number first");
    return 0;
  }
  const auto count = static_cast<uint64_t>(int64_t{greatest} - least + 1);
  // 32 random bits times the count, of which the upper half is below the count.
  const uint64_t offset = (next_bits(data) >> 32) * count >> 32;
  return static_cast<int32_t>(int64_t{least} + static_cast<int64_t>(offset));
}

RandomData fresh() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return {static_cast<uint64_t>(now.tv_sec) * 1'000'000'007u + static_cast<uint64_t>(now.tv_nsec)};
}

RandomData& shared_state() {
  static RandomData data = fresh();
  return data;
}

double random_number() { return next_number(shared_state()); }
int32_t random_in_range(int32_t least, int32_t greatest) {
  return next_in_range(shared_state(), least, greatest);
}

REALclassDefinition g_class;

RandomData& data_of(REALobject random) { return data_in<RandomData>(random, g_class); }

void initialise(REALobject random) { data_of(random) = {next_bits(shared_state())}; }
void construct(REALobject random, int32_t seed) { data_of(random) = {static_cast<uint32_t>(seed)}; }
double number(REALobject random) { return next_number(data_of(random)); }
int32_t in_range(REALobject random, int32_t least, int32_t greatest) {
  return next_in_range(data_of(random), least, greatest);
}

MethodEntry g_methods[] = {
    KRZ_METHOD(construct, "Constructor(seed as integer)"),
    KRZ_METHOD(number, "Number() as double"),
    KRZ_METHOD(in_range, "InRange(least as integer, greatest as integer) as integer"),
};

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(random_number, "Rnd as double"),
    KRZ_FUNCTION(random_in_range,
                 "RandomInRange(least as integer, greatest as integer) as integer"),
};

}  // namespace

void register_random(Registry& registry) {
  g_class = class_of<RandomData>("Random");
  g_class.constructor = reinterpret_cast<REALfunction>(&initialise);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
  registry.register_functions(kFunctions);
}

}  // namespace krz
