// The records that host and module hand to each other, and the handles neither side looks into.
//
// Built for a 32-bit target every record has the sizes and offsets of the system it comes from;
// built for 64 bits it is as wide as pointers make it. Host integers are 32 bits wide on every
// build.
#pragma once

#include <Carbon/Carbon.h>

#include <cstddef>
#include <cstdint>

// Handles of the host. The module sees addresses only.
struct REALobjectStruct;
struct REALstringStruct;
struct REALmovieStruct;
struct REALmemoryBlockStruct;
struct REALpictureStruct;
struct REALgraphicsStruct;
struct REALfolderItemStruct;
struct REALobjectArrayStruct;
using _REALarrayObject = REALobjectArrayStruct;
using REALobject = REALobjectStruct*;
using REALstring = REALstringStruct*;

/// Answers the address of the host service of that name, null when this host has none.
using REALResolver = void* (*)(const char* entry_name);

/// The version of these records, announced at start-up and stated in every class definition.
inline constexpr int32_t kPluginInterfaceVersion = 9;

/// The text encoding number that stands for "as stored" and for "unknown".
inline constexpr uint32_t kEncodingUnknown = 0xFFFF;

/// What a host function looks like before its real type is known.
using REALfunction = void (*)();

/// In both function slots of a property: the host reads and writes the instance data itself.
inline const REALfunction kDirectField = reinterpret_cast<REALfunction>(~std::uintptr_t{0});

/// A property of a class. Ten consecutive slots.
struct PropertyEntry {
  const char* group;  // null: properties are not grouped
  const char* name;
  const char* type;     // host-language type name
  uint32_t flags;       // handed through
  REALfunction getter;  // (object, param) -> value, or all ones for a direct field
  REALfunction setter;  // (object, param, value), all ones for a direct field, null when read-only
  intptr_t param;  // second argument of getter and setter; byte position of a direct field in the
                   // instance data
  intptr_t reserved[3];
};

/// A method of a class, or a method that reads like a property and may be assigned to.
struct MethodEntry {
  REALfunction function;    // (object, declared parameters...) -> result
  REALfunction setter;      // (object, value), null for an ordinary method
  const char* declaration;  // host-language text
  uint32_t flags;
};

/// A class constant.
struct ConstantEntry {
  const char* declaration;  // "name = value"
  intptr_t reserved[2];
};

/// A class as the module describes it to the host. Twenty-five consecutive slots; what a class does
/// not name is null or 0.
struct REALclassDefinition {
  int32_t version = 0;
  const char* name = nullptr;
  const char* superclass = nullptr;  // null for none
  int32_t data_size = 0;             // bytes of instance data
  int32_t host_slot = 0;  // written by the host: byte offset of the instance data in every instance
  REALfunction constructor = nullptr;  // (object), null for none
  REALfunction destructor = nullptr;   // (object), null for none
  PropertyEntry* properties = nullptr;
  int32_t property_count = 0;
  MethodEntry* methods = nullptr;
  int32_t method_count = 0;
  void* events = nullptr;
  int32_t event_count = 0;
  void* event_instances = nullptr;
  int32_t event_instance_count = 0;
  const char* interfaces = nullptr;
  void* bindings = nullptr;
  int32_t binding_count = 0;
  ConstantEntry* constants = nullptr;
  int32_t constant_count = 0;
  uint32_t flags = 0;  // handed through
  PropertyEntry* shared_properties = nullptr;
  int32_t shared_property_count = 0;
  MethodEntry* shared_methods = nullptr;
  int32_t shared_method_count = 0;
};

/// A string's bytes, as the host hands them out. Whoever received them gives them back through the
/// disposing entry.
struct REALstringData {
  void* data;
  int32_t length;     // bytes
  uint32_t encoding;  // text encoding number
};

/// The string record of hosts before 2013, which module code of that time reads directly.
struct REALstringRecord {
  int32_t locks;
  char* storage;  // the text begins one byte into it
  uint32_t encoding;
  int32_t length;  // bytes of text
};

/// The instance data of the host class "QTAudioChannelDescriptionKRZ".
struct REALaudioChannelDescriptionData {
  uint32_t label;
  uint32_t flags;
  double coordinates[3];
};

/// How many description objects a layout object can hold.
inline constexpr int32_t kMaxAudioChannelDescriptions = 64;

/// The instance data of the host class "QTAudioChannelLayoutKRZ".
struct REALaudioChannelLayoutData {
  uint32_t tag;
  uint32_t bitmap;
  int32_t description_count;
  REALobject descriptions[kMaxAudioChannelDescriptions];  // each locked by the layout object
};

/// The kinds of descriptions of a picture.
enum REALpictureDescriptionType : int32_t {
  kPictureBitmapContext = 8,  // data: a CGContextRef, components in their own order in memory
  kPicturePixelBuffer = 10,   // data: a REALpixelBuffer
};

/// What is inside a locked picture. A host's pictures are all of one kind.
struct REALpictureDescription {
  int32_t type;   // 0: nothing
  void* data;     // the host's; stays until the picture is unlocked
  int32_t width;  // pixels
  int32_t height;
};

/// The older kind of picture: rows of 32-bit numbers 0xAARRGGBB, each at an address of its own.
struct REALpixelBuffer {
  uint32_t has_alpha;  // 0: the top byte of a number means nothing; 1: colours are multiplied by it
  void** rows;         // the address of each row, the top one first
};

/// The pixel layout of a buffer that becomes a picture: an alpha info of bitmap contexts, 1 to 6,
/// components in their own order in memory.
enum RBPixelType : int32_t { kRBPixelNone = 0 };

#if INTPTR_MAX == INT32_MAX
static_assert(sizeof(PropertyEntry) == 10 * 4);
static_assert(sizeof(MethodEntry) == 4 * 4);
static_assert(sizeof(ConstantEntry) == 3 * 4);
static_assert(sizeof(REALclassDefinition) == 25 * 4);
static_assert(offsetof(REALclassDefinition, host_slot) == 4 * 4);
static_assert(offsetof(REALclassDefinition, shared_method_count) == 24 * 4);
static_assert(sizeof(REALstringData) == 3 * 4);
static_assert(offsetof(REALstringRecord, length) == 3 * 4);
static_assert(sizeof(REALaudioChannelDescriptionData) == 32);
static_assert(sizeof(REALaudioChannelLayoutData) == 12 + 64 * 4);
#endif
