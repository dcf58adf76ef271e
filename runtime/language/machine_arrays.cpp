// Arrays: making, resizing, and what their members do.
#include <algorithm>
#include <limits>

#include "language/machine.h"
#include "language/text.h"
#include "object/memory_budget.h"
#include "runtime.h"

namespace krz {
namespace {

constexpr size_t kMostElements = size_t{1} << 27;

/// The elements that arrays of these bounds have; more than kMostElements when there are too many,
/// or a bound is below -1.
size_t element_count(const std::vector<int32_t>& bounds) {
  size_t count = 1;
  for (const int32_t bound : bounds) {
    if (bound < -1) return kMostElements + 1;
    count *= static_cast<size_t>(int64_t{bound} + 1);
    if (count > kMostElements) return kMostElements + 1;
  }
  return count;
}

std::string shown_bounds(const std::vector<int32_t>& bounds) {
  std::string text;
  for (const int32_t bound : bounds) text += (text.empty() ? "" : ", ") + std::to_string(bound);
  return text;
}

}  // namespace

bool Machine::new_array_at(const Instruction& instruction, const Instruction* words,
                           Slot* registers) {
  std::vector<int32_t> bounds;
  for (size_t i = 0; i < instruction.c; ++i)
    bounds.push_back(registers[word_register(words, i)].integer);
  if (element_count(bounds) > kMostElements) {
    raise("OutOfBoundsException", "no array has the upper bounds " + shown_bounds(bounds));
    return false;
  }
  ArrayObject* array = new_array(program_.types[instruction.b], bounds);
  if (array == nullptr) return raise_out_of_memory("an array");
  set_object(registers[instruction.a], array);
  return true;
}

bool Machine::make_array_at(const Instruction& instruction, const Instruction* words,
                            Slot* registers) {
  const Type& type = program_.types[instruction.b];
  ArrayObject* array = new_array(type, {instruction.c - 1});
  if (array == nullptr) {
    return raise_out_of_memory("an array");
  }
  for (size_t i = 0; i < instruction.c; ++i) {
    array->elements[i] = registers[word_register(words, i)];
    lock_slot(type, array->elements[i]);
  }
  set_object(registers[instruction.a], array);
  return true;
}

/// Elements whose indices both shapes have keep their values.
bool Machine::resize_array(ArrayObject& array, const Instruction* words, size_t rank,
                           const Slot* registers) {
  const Undisturbed undisturbed(*this);  // what is let go of may be all that holds the array
  std::vector<int32_t> bounds;
  for (size_t i = 0; i < rank; ++i) bounds.push_back(registers[word_register(words, i)].integer);
  const size_t count = element_count(bounds);
  if (count > kMostElements || rank != array.upper_bounds.size()) {
    raise("OutOfBoundsException", "no array has the upper bounds " + shown_bounds(bounds));
    return false;
  }
  // The new elements are counted before the old ones are given back, as both live for a moment.
  const size_t bytes = count * sizeof(Slot);
  if (!memory_budget::take(bytes)) return raise_out_of_memory("the array");
  std::vector<Slot> kept;
  std::vector<Slot> dropped;
  try {
    kept.resize(count);
    size_t staying = 1;
    for (size_t d = 0; d < rank; ++d)
      staying *= static_cast<size_t>(int64_t{std::min(bounds[d], array.upper_bounds[d])} + 1);
    dropped.reserve(array.elements.size() - staying);
  } catch (const std::bad_alloc&) {
    memory_budget::give_back(bytes);
    return raise_out_of_memory("the array");
  }
  std::vector<int32_t> index(rank, 0);
  for (const Slot& element : array.elements) {
    size_t place = 0;
    bool inside = true;
    for (size_t d = 0; d < rank; ++d) {
      inside = inside && index[d] <= bounds[d];
      place = place * static_cast<size_t>(int64_t{bounds[d]} + 1) + static_cast<size_t>(index[d]);
    }
    if (inside) {
      kept[place] = element;
    } else {
      dropped.push_back(element);
    }
    for (size_t d = rank; d > 0; --d) {
      if (++index[d - 1] <= array.upper_bounds[d - 1]) break;
      index[d - 1] = 0;
    }
  }
  array.elements = std::move(kept);
  memory_budget::give_back(array.counted);
  array.counted = bytes;
  array.upper_bounds = std::move(bounds);
  for (const Slot& element : dropped) unlock_slot(array.element_type, element);
  return true;
}

bool Machine::flat_index(const ArrayObject& array, const Instruction* words, size_t rank,
                         const Slot* registers, Slot& target) {
  int64_t place = 0;
  for (size_t d = 0; d < rank; ++d) {
    const int32_t index = registers[word_register(words, d)].integer;
    if (rank != array.upper_bounds.size() || index < 0 || index > array.upper_bounds[d]) {
      raise("OutOfBoundsException",
            "the index " + std::to_string(index) + " of dimension " + std::to_string(d + 1) +
                " is outside 0 To " +
                std::to_string(d < array.upper_bounds.size() ? array.upper_bounds[d] : -1));
      return false;
    }
    place = place * (int64_t{array.upper_bounds[d]} + 1) + index;
  }
  target.bits = 0;
  target.integer = static_cast<int32_t>(place);
  return true;
}

bool Machine::array_upper(const ArrayObject& array, const Slot* dimension, Slot& target) {
  const int32_t number = dimension != nullptr ? dimension->integer : 1;
  if (number < 1 || static_cast<size_t>(number) > array.upper_bounds.size()) {
    raise("OutOfBoundsException", "the array has no dimension " + std::to_string(number));
    return false;
  }
  target.bits = 0;
  target.integer = array.upper_bounds[static_cast<size_t>(number) - 1];
  return true;
}

bool Machine::array_insert(ArrayObject& array, int32_t index, const Slot& value) {
  if (index < 0 || static_cast<size_t>(index) > array.elements.size())
    return raise_bounds(array, index);
  if (array.elements.size() >= kMostElements) {
    raise("OutOfMemoryException", "the array is full");
    return false;
  }
  if (!reserve_elements(array, array.elements.size() + 1)) return raise_out_of_memory("the array");
  lock_slot(array.element_type, value);
  array.elements.insert(array.elements.begin() + index, value);
  ++array.upper_bounds[0];
  return true;
}

/// Takes an element out. Its lock goes to `taken`, or is given back without one.
bool Machine::array_remove(ArrayObject& array, int32_t index, Slot* taken) {
  const Undisturbed undisturbed(*this);  // what is let go of may be all that holds the array
  if (index < 0 || static_cast<size_t>(index) >= array.elements.size())
    return raise_bounds(array, index);
  const Slot element = array.elements[static_cast<size_t>(index)];
  array.elements.erase(array.elements.begin() + index);
  --array.upper_bounds[0];
  if (taken != nullptr) {
    set_owned(*taken, storage_of(array.element_type.kind), element);
  } else {
    unlock_slot(array.element_type, element);
  }
  return true;
}

int32_t Machine::array_index_of(const ArrayObject& array, const Slot& value) const {
  const Kind kind = array.element_type.kind;
  for (size_t i = 0; i < array.elements.size(); ++i) {
    const Slot& element = array.elements[i];
    bool same = false;
    switch (kind) {
      case Kind::kBoolean:
        same = (element.boolean != 0) == (value.boolean != 0);
        break;
      case Kind::kInteger:
      case Kind::kColor:
        same = element.integer == value.integer;
        break;
      case Kind::kInt64:
        same = element.int64 == value.int64;
        break;
      case Kind::kSingle:
        same = element.single == value.single;
        break;
      case Kind::kDouble:
        same = element.real == value.real;
        break;
      case Kind::kString:
        same = compare_strings(element.string, value.string) == 0;
        break;
      default:
        same = element.object == value.object;
        break;
    }
    if (same) return static_cast<int32_t>(i);
  }
  return -1;
}

bool Machine::raise_bounds(const ArrayObject& array, int32_t index) {
  std::string message = "the index " + std::to_string(index) + " is outside ";
  message += array.elements.empty() ? "an array without elements"
                                    : "0 To " + std::to_string(array.elements.size() - 1);
  raise("OutOfBoundsException", std::move(message));
  return false;
}

/// Args is one array for the whole run.
bool Machine::script_arguments(Slot& target) {
  if (script_arguments_ == nullptr) {
    const std::vector<std::string>& given = runtime_.options().arguments;
    ArrayObject* array =
        new_array(simple_type(Kind::kString), {static_cast<int32_t>(given.size()) - 1});
    if (array == nullptr) {
      return raise_out_of_memory("an array");
    }
    for (size_t i = 0; i < given.size(); ++i) array->elements[i].string = make_string(given[i]);
    script_arguments_ = array;
  }
  lock_object(script_arguments_);
  set_object(target, script_arguments_);
  return true;
}

}  // namespace krz
