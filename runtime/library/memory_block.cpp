#include "library/memory_block.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

#include "library/parts.h"
#include "object/exceptions.h"
#include "object/memory_budget.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

struct BlockData {
  uint8_t* bytes;
  int32_t size;
  bool little_endian;
};

REALclassDefinition g_class;

BlockData& data_of(REALobject block) { return data_in<BlockData>(block, g_class); }

void initialise(REALobject block) { data_of(block).little_endian = true; }

void destroy(REALobject block) { memory_budget::free_block(data_of(block).bytes); }

// A larger block is new memory, whose zero bytes cost nothing until they are used; a block that
// grew in place would have to be filled with them.
bool resize(REALobject block, int32_t size) {
  BlockData& data = data_of(block);
  if (size < 0) return false;
  // One byte more than asked for, so that a block of no bytes has an address.
  auto* const bytes =
      static_cast<uint8_t*>(memory_budget::take_block(std::calloc(size_t(size) + 1, 1)));
  if (!bytes) return false;
  if (data.bytes) std::memcpy(bytes, data.bytes, size_t(std::min(size, data.size)));
  memory_budget::free_block(data.bytes);
  data.bytes = bytes;
  data.size = size;
  return true;
}

void construct(REALobject block, int32_t size) {
  if (size < 0)
    return raise_exception("OutOfBoundsException",
                           "a memory block's size is negative; give 0 or more");
  if (!resize(block, size)) {
    raise_exception("OutOfMemoryException",
                    "there is no memory for a block of " + std::to_string(size) + " bytes");
  }
}

// The place of `count` bytes in a block; null, with the exception raised, when they are not all
// inside.
uint8_t* place(REALobject block, int32_t offset, int32_t count) {
  const BlockData& data = data_of(block);
  if (offset >= 0 && count >= 0 && count <= data.size && offset <= data.size - count) {
    return data.bytes + offset;
  }
  raise_exception("OutOfBoundsException",
                  std::to_string(count) + " bytes at offset " + std::to_string(offset) +
                      " are not inside a memory block of " + std::to_string(data.size) + " bytes");
  return nullptr;
}

// A number as it is stored, and as a script sees it.
template <class Stored, class Seen>
struct Number {
  static Seen get(REALobject block, int32_t offset) {
    const uint8_t* const from = place(block, offset, sizeof(Stored));
    if (!from) return {};
    uint8_t bytes[sizeof(Stored)];
    std::memcpy(bytes, from, sizeof bytes);
    if (!data_of(block).little_endian) std::reverse(std::begin(bytes), std::end(bytes));
    return static_cast<Seen>(std::bit_cast<Stored>(bytes));
  }
  static void set(REALobject block, int32_t offset, Seen value) {
    uint8_t* const to = place(block, offset, sizeof(Stored));
    if (!to) return;
    struct Bytes {
      uint8_t bytes[sizeof(Stored)];
    };
    auto stored = std::bit_cast<Bytes>(static_cast<Stored>(value));
    if (!data_of(block).little_endian)
      std::reverse(std::begin(stored.bytes), std::end(stored.bytes));
    std::memcpy(to, stored.bytes, sizeof stored.bytes);
  }
};
using Int8 = Number<int8_t, int32_t>;
using UInt8 = Number<uint8_t, int32_t>;
using Int16 = Number<int16_t, int32_t>;
using UInt16 = Number<uint16_t, int32_t>;
using Int32 = Number<int32_t, int32_t>;
using UInt32 = Number<uint32_t, int64_t>;
using Int64 = Number<int64_t, int64_t>;
using Single = Number<float, float>;
using Double = Number<double, double>;

bool get_boolean(REALobject block, int32_t offset) { return UInt8::get(block, offset) != 0; }
void set_boolean(REALobject block, int32_t offset, bool value) { UInt8::set(block, offset, value); }

// Four bytes: the color's 0x00RRGGBB as an integer.
uint32_t get_color(REALobject block, int32_t offset) {
  return static_cast<uint32_t>(UInt32::get(block, offset)) & 0xFFFFFF;
}
void set_color(REALobject block, int32_t offset, uint32_t color) {
  UInt32::set(block, offset, int64_t{color});
}

REALstring get_string(REALobject block, int32_t offset, int32_t length) {
  const uint8_t* const from = place(block, offset, length);
  if (!from) return nullptr;
  return make_string({reinterpret_cast<const char*>(from), size_t(length)}, kEncodingUnknown);
}

// Writes exactly `length` bytes: a longer text is cut, a shorter one filled with zero bytes.
void set_string(REALobject block, int32_t offset, int32_t length, REALstring value) {
  uint8_t* const to = place(block, offset, length);
  if (!to) return;
  const std::string_view text = string_bytes(value).substr(0, size_t(length));
  if (!text.empty()) std::memcpy(to, text.data(), text.size());
  std::memset(to + text.size(), 0, size_t(length) - text.size());
}

REALstring get_c_string(REALobject block, int32_t offset) {
  const uint8_t* const from = place(block, offset, 0);
  if (!from) return nullptr;
  const auto* const text = reinterpret_cast<const char*>(from);
  return make_string({text, strnlen(text, size_t(data_of(block).size - offset))}, kEncodingUnknown);
}

void set_c_string(REALobject block, int32_t offset, REALstring value) {
  const std::string_view text = string_bytes(value);
  const int32_t length = value ? value->length : 0;
  if (!place(block, offset, length == INT32_MAX ? length : length + 1)) return;
  uint8_t* const to = data_of(block).bytes + offset;
  if (!text.empty()) std::memcpy(to, text.data(), text.size());
  to[text.size()] = 0;
}

int32_t get_size(REALobject block, intptr_t) { return data_of(block).size; }
void set_size(REALobject block, intptr_t, int32_t size) { construct(block, size); }

PropertyEntry g_properties[] = {
    KRZ_PROPERTY(get_size, set_size, "Size", "Integer"),
    KRZ_FIELD(BlockData, little_endian, "LittleEndian", "Boolean"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(construct, "Constructor(size as integer)"),
    KRZ_ASSIGNABLE(UInt8::get, UInt8::set, "Byte(offset as integer) as integer"),
    KRZ_ASSIGNABLE(get_boolean, set_boolean, "BooleanValue(offset as integer) as boolean"),
    KRZ_ASSIGNABLE(Int8::get, Int8::set, "Int8Value(offset as integer) as integer"),
    KRZ_ASSIGNABLE(UInt8::get, UInt8::set, "UInt8Value(offset as integer) as integer"),
    KRZ_ASSIGNABLE(Int16::get, Int16::set, "Int16Value(offset as integer) as integer"),
    KRZ_ASSIGNABLE(UInt16::get, UInt16::set, "UInt16Value(offset as integer) as integer"),
    KRZ_ASSIGNABLE(Int32::get, Int32::set, "Int32Value(offset as integer) as integer"),
    KRZ_ASSIGNABLE(UInt32::get, UInt32::set, "UInt32Value(offset as integer) as int64"),
    KRZ_ASSIGNABLE(Int64::get, Int64::set, "Int64Value(offset as integer) as int64"),
    KRZ_ASSIGNABLE(Int64::get, Int64::set, "UInt64Value(offset as integer) as int64"),
    KRZ_ASSIGNABLE(Single::get, Single::set, "SingleValue(offset as integer) as single"),
    KRZ_ASSIGNABLE(Double::get, Double::set, "DoubleValue(offset as integer) as double"),
    KRZ_ASSIGNABLE(get_color, set_color, "ColorValue(offset as integer) as color"),
    KRZ_ASSIGNABLE(get_string, set_string,
                   "StringValue(offset as integer, length as integer) as string"),
    KRZ_ASSIGNABLE(get_c_string, set_c_string, "CString(offset as integer) as string"),
};

bool is_block(REALmemoryBlockStruct* block) {
  const auto object = reinterpret_cast<REALobject>(block);
  return object && object->class_info && object->class_info->definition() == &g_class;
}

}  // namespace

REALmemoryBlockStruct* new_memory_block(int32_t size) {
  const ClassInfo* const class_info = Runtime::current().registry().find_class(g_class.name);
  const REALobject block = class_info && size >= 0 ? new_instance(*class_info) : nullptr;
  if (!block) return nullptr;
  if (!resize(block, size)) {
    unlock_object(block);
    return nullptr;
  }
  return reinterpret_cast<REALmemoryBlockStruct*>(block);
}

uint8_t* memory_block_bytes(REALmemoryBlockStruct* block) {
  return is_block(block) ? data_of(reinterpret_cast<REALobject>(block)).bytes : nullptr;
}

int32_t memory_block_size(REALmemoryBlockStruct* block) {
  return is_block(block) ? data_of(reinterpret_cast<REALobject>(block)).size : 0;
}

void register_memory_block(Registry& registry) {
  g_class = class_of<BlockData>("MemoryBlock");
  g_class.constructor = reinterpret_cast<REALfunction>(&initialise);
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_properties(g_class, g_properties);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
