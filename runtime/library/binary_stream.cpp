// The class BinaryStream: bytes and numbers anywhere in a file.
#include <algorithm>
#include <bit>
#include <cstring>

#include "library/stream.h"
#include "registry/tables.h"

namespace krz {

namespace {

struct BinaryData {
  StreamData stream;
  bool little_endian;
};

REALclassDefinition g_class;

BufferedFile* file_of(REALobject stream) { return open_file(stream, g_class); }
bool is_little_endian(REALobject stream) {
  return data_in<BinaryData>(stream, g_class).little_endian;
}

void initialise(REALobject stream) { data_in<BinaryData>(stream, g_class).little_endian = true; }

BufferedFile::Mode opening(bool writable) {
  return writable ? BufferedFile::Mode::kReadWrite : BufferedFile::Mode::kRead;
}
REALobject open_item(REALfolderItemStruct* item, bool writable) {
  return open_stream(g_class, item, opening(writable));
}
REALobject open_path(REALstring path, bool writable) {
  return open_stream(g_class, string_path(path), opening(writable));
}
REALobject create_item(REALfolderItemStruct* item, bool overwrite) {
  return open_stream(g_class, item, creating(overwrite));
}
REALobject create_path(REALstring path, bool overwrite) {
  return open_stream(g_class, string_path(path), creating(overwrite));
}

// Grows with the bytes that really arrive.
REALstring read(REALobject stream, int32_t count) {
  BufferedFile* const file = file_of(stream);
  if (!file) return nullptr;
  if (count < 0 || static_cast<size_t>(count) > kMaxReadBytes) {
    raise_exception("OutOfBoundsException",
                    "cannot read " + std::to_string(count) + " bytes; ask for 0 to 256 MiB");
    return nullptr;
  }
  std::string bytes;
  for (auto left = static_cast<size_t>(count); left > 0;) {
    const std::string_view piece = file->ahead().substr(0, left);
    if (piece.empty()) break;
    bytes.append(piece);
    file->skip(piece.size());
    left -= piece.size();
  }
  return make_string(bytes, kEncodingUnknown);
}

void write(REALobject stream, REALstring bytes) {
  if (BufferedFile* const file = file_of(stream)) file->write(string_bytes(bytes));
}

// A number as it is stored, and as a script sees it.
template <class Stored, class Seen>
struct Number {
  static Seen read(REALobject stream) {
    BufferedFile* const file = file_of(stream);
    if (!file) return {};
    char bytes[sizeof(Stored)];
    if (file->read(bytes, sizeof bytes) < sizeof bytes) {
      raise_exception("IOException", "a number of " + std::to_string(sizeof bytes) +
                                         " bytes goes beyond the end of the file; ask EndOfFile "
                                         "before");
      return {};
    }
    if (!is_little_endian(stream)) std::reverse(std::begin(bytes), std::end(bytes));
    Stored stored;
    std::memcpy(&stored, bytes, sizeof stored);
    return static_cast<Seen>(stored);
  }
  static void write(REALobject stream, Seen value) {
    BufferedFile* const file = file_of(stream);
    if (!file) return;
    const auto stored = static_cast<Stored>(value);
    char bytes[sizeof(Stored)];
    std::memcpy(bytes, &stored, sizeof stored);
    if (!is_little_endian(stream)) std::reverse(std::begin(bytes), std::end(bytes));
    file->write({bytes, sizeof bytes});
  }
};
static_assert(std::endian::native == std::endian::little);
using Int8 = Number<int8_t, int32_t>;
using UInt8 = Number<uint8_t, int32_t>;
using Int16 = Number<int16_t, int32_t>;
using UInt16 = Number<uint16_t, int32_t>;
using Int32 = Number<int32_t, int32_t>;
using UInt32 = Number<uint32_t, int64_t>;
using Int64 = Number<int64_t, int64_t>;
using Single = Number<float, float>;
using Double = Number<double, double>;

int64_t position(REALobject stream, intptr_t) {
  const BufferedFile* const file = file_of(stream);
  return file ? file->position() : 0;
}
void set_position(REALobject stream, intptr_t, int64_t position) {
  BufferedFile* const file = file_of(stream);
  if (!file) return;
  if (position < 0) {
    return raise_exception("OutOfBoundsException",
                           "position " + std::to_string(position) + " is before the file begins");
  }
  file->seek(position);
}

int64_t length(REALobject stream, intptr_t) {
  BufferedFile* const file = file_of(stream);
  return file ? file->length() : 0;
}

bool end_of_file(REALobject stream) {
  BufferedFile* const file = file_of(stream);
  return !file || file->ahead().empty();
}

void close(REALobject stream) { close_stream(stream, g_class); }
void destroy(REALobject stream) { destroy_stream(stream, g_class); }

PropertyEntry g_properties[] = {
    KRZ_PROPERTY(position, set_position, "Position", "Int64"),
    KRZ_READ_ONLY(length, "Length", "Int64"),
    KRZ_FIELD(BinaryData, little_endian, "LittleEndian", "Boolean"),
};

MethodEntry g_shared_methods[] = {
    KRZ_SHARED(open_item, "Open(file as FolderItem, writable as boolean = false) as BinaryStream"),
    KRZ_SHARED(open_path, "Open(path as string, writable as boolean = false) as BinaryStream"),
    KRZ_SHARED(create_item,
               "Create(file as FolderItem, overwrite as boolean = false) as BinaryStream"),
    KRZ_SHARED(create_path, "Create(path as string, overwrite as boolean = false) as BinaryStream"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(read, "Read(count as integer) as string"),
    KRZ_METHOD(write, "Write(bytes as string)"),
    KRZ_METHOD(Int8::read, "ReadInt8() as integer"),
    KRZ_METHOD(UInt8::read, "ReadUInt8() as integer"),
    KRZ_METHOD(Int16::read, "ReadInt16() as integer"),
    KRZ_METHOD(UInt16::read, "ReadUInt16() as integer"),
    KRZ_METHOD(Int32::read, "ReadInt32() as integer"),
    KRZ_METHOD(UInt32::read, "ReadUInt32() as int64"),
    KRZ_METHOD(Int64::read, "ReadInt64() as int64"),
    KRZ_METHOD(Single::read, "ReadSingle() as single"),
    KRZ_METHOD(Double::read, "ReadDouble() as double"),
    KRZ_METHOD(UInt8::write, "WriteInt8(value as integer)"),
    KRZ_METHOD(UInt16::write, "WriteInt16(value as integer)"),
    KRZ_METHOD(UInt32::write, "WriteInt32(value as int64)"),
    KRZ_METHOD(Int64::write, "WriteInt64(value as int64)"),
    KRZ_METHOD(Single::write, "WriteSingle(value as single)"),
    KRZ_METHOD(Double::write, "WriteDouble(value as double)"),
    KRZ_METHOD(end_of_file, "EndOfFile as boolean"),
    KRZ_METHOD(close, "Close()"),
};

}  // namespace

void register_binary_stream(Registry& registry) {
  g_class = class_of<BinaryData>("BinaryStream");
  g_class.constructor = reinterpret_cast<REALfunction>(&initialise);
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_properties(g_class, g_properties);
  set_shared_methods(g_class, g_shared_methods);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
