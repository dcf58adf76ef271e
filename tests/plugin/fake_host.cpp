// A host without mercy.
#include "plugin/fake_host.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "plugin/fake_pictures.h"
#include "plugin/fake_texts.h"
#include "plugin/host/encodings.h"

// An object: a head, then the data of its class and of the classes above it.
struct alignas(16) REALobjectStruct {
  int32_t locks;
  uint32_t toolbox_movie;
  const char* class_name;
  REALstringStruct* message;
  std::string* bytes;  // of a memory block
};
struct REALstringStruct : REALstringRecord {};

namespace fake_host {
namespace {

constexpr int32_t kDataOffset = sizeof(REALobjectStruct);
constexpr int32_t kAllData = 2048;

Host current;
std::set<const void*> objects;
std::set<const void*> strings;
std::set<const void*> string_data;

REALclassDefinition* find_definition(std::string_view name) {
  for (const auto* list : {&current.classes, &current.extensions}) {
    for (REALclassDefinition* one : *list) {
      if (name == one->name) return one;
    }
  }
  return nullptr;
}

void check_object(const void* object, const char* doing) {
  if (!objects.count(object)) broken_contract(std::string(doing) + " an object that is not alive");
}

void check_string(const void* string, const char* doing) {
  if (!strings.count(string)) broken_contract(std::string(doing) + " a string that is not alive");
}

REALobject new_block(const char* class_name) {
  void* block = std::aligned_alloc(alignof(REALobjectStruct), kDataOffset + kAllData);
  std::memset(block, 0, kDataOffset + kAllData);
  auto* object = static_cast<REALobject>(block);
  object->locks = 1;
  object->class_name = class_name;
  objects.insert(object);
  return object;
}

using Lifecycle = void(REALobject);

void construct(REALobject object, const char* class_name) {
  const REALclassDefinition* one = class_name ? find_definition(class_name) : nullptr;
  if (!one) return;
  construct(object, one->superclass);
  if (one->constructor) function<Lifecycle>(one->constructor)(object);
}

void destroy(REALobject object) {
  for (const char* name = object->class_name; name;) {
    const REALclassDefinition* one = find_definition(name);
    if (!one) break;
    if (one->destructor) function<Lifecycle>(one->destructor)(object);
    name = one->superclass;
  }
  objects.erase(object);
  fake_pictures::forget(object);
  if (object->message) unlock(object->message);
  delete object->bytes;
  std::free(object);
}

// ---- the entries ----

void register_version(int32_t version) {
  current.calls.push_back("RegisterPluginVersion " + std::to_string(version));
}
double version() { return current.version; }
uint8_t in_runtime() { return current.in_runtime; }
int32_t enter_movies() {
  current.calls.push_back("REALenterMovies");
  return current.enter_movies_answer;
}
void register_class(REALclassDefinition* one) {
  one->host_slot = one->data_size ? kDataOffset : 0;
  current.calls.push_back("class " + std::string(one->name));
  current.classes.push_back(one);
}
void register_extension(REALclassDefinition* one) {
  current.calls.push_back("extension " + std::string(one->name));
  current.extensions.push_back(one);
}

REALobject new_instance(const char* class_name) {
  if (!find_definition(class_name) && !current.foreign_classes.count(class_name)) return nullptr;
  return make_object(class_name);
}
void* class_ref(const char* class_name) {
  const auto foreign = current.foreign_classes.find(class_name);
  return foreign != current.foreign_classes.end() ? &foreign->second
                                                  : static_cast<void*>(find_definition(class_name));
}
void lock_object(REALobject object) {
  check_object(object, "locking");
  ++object->locks;
}
void unlock_object(REALobject object) { unlock(object); }
REALpictureStruct* as_picture(REALobject object) {
  return reinterpret_cast<REALpictureStruct*>(object);
}
uint8_t get_integer(REALobject object, const char* property, int32_t* value) {
  check_object(object, "reading");
  if (!fake_pictures::is_picture(object)) return 0;
  const fake_pictures::Picture& picture = fake_pictures::of(as_picture(object));
  const bool is_width = std::strcmp(property, "Width") == 0;
  if (!is_width && std::strcmp(property, "Height") != 0) return 0;
  *value = is_width ? picture.width : picture.height;
  return 1;
}
uint8_t get_boolean(REALobject object, const char* property, uint8_t* value) {
  check_object(object, "reading");
  if (!fake_pictures::is_picture(object) || std::strcmp(property, "HasAlphaChannel") != 0) return 0;
  *value = fake_pictures::of(as_picture(object)).has_alpha;
  return 1;
}
uint8_t set_string(REALobject object, const char* property, REALstring value) {
  check_object(object, "writing");
  if (std::strcmp(property, "Message") != 0) return 0;
  if (value) {
    check_string(value, "storing");
    ++value->locks;
  }
  object->message = value;
  return 1;
}
void raise(REALobject exception) {
  check_object(exception, "raising");
  Raised raised{exception->class_name, "", exception->message != nullptr};
  if (exception->message) raised.message = bytes_of(exception->message);
  current.raised.push_back(raised);
}
REALfunction object_method(REALobject object, const char* declaration) {
  check_object(object, "asking");
  current.calls.push_back(declaration);
  return current.draw_picture;
}

REALstring build_string(const char* bytes, int32_t count) {
  return make_string({bytes, static_cast<size_t>(count)}, kEncodingUnknown);
}
void lock_string(REALstring string) {
  check_string(string, "locking");
  ++string->locks;
}
void unlock_string(REALstring string) { unlock(string); }
uint32_t get_encoding(REALstring string) {
  check_string(string, "reading");
  return string->encoding;
}
void set_encoding(REALstring string, uint32_t encoding) {
  check_string(string, "writing");
  string->encoding = encoding;
}
REALstring convert(REALstring string, uint32_t encoding) {
  if (!string) return nullptr;
  check_string(string, "converting");
  return make_string(converted(bytes_of(string), string->encoding, encoding), encoding);
}
uint8_t get_string_data(REALstring string, uint32_t encoding, REALstringData* data) {
  if (!string) return 0;
  check_string(string, "reading");
  const std::string bytes = encoding == kEncodingUnknown
                                ? bytes_of(string)
                                : converted(bytes_of(string), string->encoding, encoding);
  // Not a byte more than the text, so that reading past its end is caught.
  data->data = std::malloc(bytes.size() ? bytes.size() : 1);
  std::memcpy(data->data, bytes.data(), bytes.size());
  data->length = static_cast<int32_t>(bytes.size());
  data->encoding = encoding;
  string_data.insert(data->data);
  return 1;
}
void dispose_string_data(REALstringData* data) {
  if (!string_data.erase(data->data))
    broken_contract("giving back string data that is not handed out");
  std::free(data->data);
  data->data = nullptr;
}
const char* c_string(REALstring string) {
  check_string(string, "reading");
  return string->storage + 1;
}
int32_t len_b(REALstring string) {
  check_string(string, "measuring");
  return string->length;
}
REALfunction global_method(void* module, const char* declaration) {
  if (module || std::strcmp(declaration, "LenB( s as string ) as integer") != 0) return nullptr;
  return reinterpret_cast<REALfunction>(&len_b);
}

REALmemoryBlockStruct* new_memory_block(int32_t size) {
  if (size > current.memory_block_limit) return nullptr;
  return make_memory_block(std::string(static_cast<size_t>(size), '\0'));
}
REALobject block_object(REALmemoryBlockStruct* block, const char* doing) {
  check_object(block, doing);
  return reinterpret_cast<REALobject>(block);
}
void* memory_block_bytes(REALmemoryBlockStruct* block) {
  return block_object(block, "reading")->bytes->data();
}
int32_t memory_block_size(REALmemoryBlockStruct* block) {
  return static_cast<int32_t>(block_object(block, "measuring")->bytes->size());
}

void* movie_movie(REALmovieStruct* movie) {
  check_object(movie, "opening");
  return reinterpret_cast<void*>(uintptr_t{reinterpret_cast<REALobject>(movie)->toolbox_movie});
}

void lock_picture_older(REALpictureStruct* picture, REALpictureDescription* description) {
  current.calls.push_back("lock picture");
  if (fake_pictures::is_picture(picture)) {
    fake_pictures::lock(picture, description, fake_pictures::of(picture).kind);
  } else {
    description->type = 8;
  }
}
// Only the low 8 bits of a truth value count: this one says false.
uint32_t lock_picture(REALpictureStruct* picture, REALpictureDescription* description,
                      int32_t type) {
  current.calls.push_back("lock picture as " + std::to_string(type));
  if (fake_pictures::is_picture(picture))
    return fake_pictures::lock(picture, description, type) ? 0x101 : 0x100;
  description->type = type;
  return current.fail_picture_locks ? 0x100 : 0x101;
}
void unlock_picture(REALpictureStruct* picture) {
  current.calls.push_back("unlock picture");
  if (fake_pictures::is_picture(picture)) fake_pictures::unlock(picture);
}
REALpictureStruct* new_picture(int32_t width, int32_t height, int32_t depth) {
  current.calls.push_back("new picture of depth " + std::to_string(depth));
  return current.makes_pictures ? fake_pictures::make(width, height) : nullptr;
}
REALpictureStruct* picture_from_buffer(int32_t, int32_t, RBPixelType, void*, int32_t) {
  return nullptr;
}
REALgraphicsStruct* picture_graphics(REALpictureStruct* picture) {
  check_object(picture, "drawing on");
  return reinterpret_cast<REALgraphicsStruct*>(new_block("graphics"));
}
void clear_cache(REALpictureStruct* picture) {
  check_object(picture, "clearing");
  current.calls.push_back("clear cache");
}
std::vector<REALobject>& elements_of(REALobjectArrayStruct* array) {
  return *reinterpret_cast<std::vector<REALobject>*>(array);
}
int32_t upper_bound(REALobjectArrayStruct* array) {
  if (current.claimed_upper_bound) return *current.claimed_upper_bound;
  return static_cast<int32_t>(elements_of(array).size()) - 1;
}
REALobject array_object(REALobjectArrayStruct* array, int32_t index) {
  if (index < 0 || static_cast<size_t>(index) >= elements_of(array).size())
    broken_contract("reading element " + std::to_string(index) + " of an array");
  const REALobject element = elements_of(array)[static_cast<size_t>(index)];
  if (element) lock_object(element);
  return element;
}
void* item_from_spec(const FSSpec*) { return nullptr; }
uint8_t ref_from_item(REALfolderItemStruct*, FSRef*, HFSUniStr255*) { return 0; }

#define ENTRY(name, function) \
  { name, reinterpret_cast<void*>(&function) }
const std::map<std::string, void*>& entries() {
  static const std::map<std::string, void*> all = {
      ENTRY("RegisterPluginVersion", register_version),
      ENTRY("REALGetRBVersion", version),
      ENTRY("REALinRuntime", in_runtime),
      ENTRY("REALenterMovies", enter_movies),
      ENTRY("PluginRegisterClass", register_class),
      ENTRY("PluginRegisterClassExtension", register_extension),
      ENTRY("PluginNewInstance", new_instance),
      ENTRY("pluginObjectType", class_ref),
      ENTRY("REALLockObject", lock_object),
      ENTRY("REALUnlockObject", unlock_object),
      ENTRY("REALGetPropValueInt", get_integer),
      ENTRY("REALGetPropValueBool", get_boolean),
      ENTRY("REALSetPropValueString", set_string),
      ENTRY("RuntimeRaiseException", raise),
      ENTRY("REALLoadObjectMethod", object_method),
      ENTRY("REALLoadGlobalMethod", global_method),
      ENTRY("REALBuildString", build_string),
      ENTRY("REALLockString", lock_string),
      ENTRY("REALUnlockString", unlock_string),
      ENTRY("REALGetStringEncoding", get_encoding),
      ENTRY("REALSetStringEncoding", set_encoding),
      ENTRY("REALConvertString", convert),
      ENTRY("PluginGetStringData", get_string_data),
      ENTRY("PluginDisposeStringData", dispose_string_data),
      ENTRY("StringGetCString", c_string),
      ENTRY("newMemoryBlock", new_memory_block),
      ENTRY("memoryBlockGetPtr", memory_block_bytes),
      ENTRY("memoryBlockGetSize", memory_block_size),
      ENTRY("getMovieMovie", movie_movie),
      ENTRY("lockPictureDescription", lock_picture_older),
      ENTRY("REALLockPictureDescription", lock_picture),
      ENTRY("unlockPictureDescription", unlock_picture),
      ENTRY("newPicture", new_picture),
      ENTRY("REALBuildPictureFromBuffer", picture_from_buffer),
      ENTRY("pluginPictureGraphicsGetter", picture_graphics),
      ENTRY("REALPictureClearCache", clear_cache),
      ENTRY("RuntimeUBound", upper_bound),
      ENTRY("RuntimeDirectReadObjectArray", array_object),
      ENTRY("FolderItemFromFSSpec", item_from_spec),
      ENTRY("REALFSRefFromFolderItem", ref_from_item),
  };
  return all;
}

}  // namespace

Host& host() { return current; }

void start() {
  current = Host();
  fake_pictures::start();
  current.foreign_classes = {
      {"RuntimeException", 0}, {"NilObjectException", 0}, {"OutOfMemoryException", 0}};
  if (live_objects() || live_strings() || live_string_data())
    broken_contract("starting with something alive");
}

void sweep() {
  for (const void* one : string_data) std::free(const_cast<void*>(one));
  string_data.clear();
  while (!objects.empty()) {
    auto* object = static_cast<REALobject>(const_cast<void*>(*objects.begin()));
    objects.erase(objects.begin());
    delete object->bytes;
    std::free(object);
  }
  while (!strings.empty()) {
    auto* string = static_cast<REALstring>(const_cast<void*>(*strings.begin()));
    string->locks = 1;
    unlock(string);
  }
}

void* resolve(const char* entry_name) {
  current.asked.push_back(entry_name);
  if (current.withheld.count(entry_name)) return nullptr;
  const auto found = entries().find(entry_name);
  return found == entries().end() ? nullptr : found->second;
}

std::vector<std::string> entry_names() {
  std::vector<std::string> names;
  for (const auto& [name, function] : entries()) names.push_back(name);
  return names;
}

int times_asked(std::string_view entry_name) {
  int count = 0;
  for (const std::string& name : current.asked) count += name == entry_name;
  return count;
}

int live_objects() { return static_cast<int>(objects.size()); }
int live_strings() { return static_cast<int>(strings.size()); }
int live_string_data() { return static_cast<int>(string_data.size()); }

REALstring make_string(std::string_view bytes, uint32_t encoding) {
  auto* string = new REALstringStruct();
  string->locks = 1;
  string->encoding = encoding;
  string->length = static_cast<int32_t>(bytes.size());
  string->storage = static_cast<char*>(std::malloc(bytes.size() + 1));
  std::memcpy(string->storage + 1, bytes.data(), bytes.size());
  strings.insert(string);
  return string;
}

std::string bytes_of(REALstring string) {
  if (!string) return "(nil)";
  check_string(string, "reading");
  return std::string(string->storage + 1, static_cast<size_t>(string->length));
}

uint32_t encoding_of(REALstring string) { return get_encoding(string); }

void unlock(REALstring string) {
  check_string(string, "unlocking");
  if (--string->locks > 0) return;
  strings.erase(string);
  std::free(string->storage);
  delete string;
}

REALobject make_object(const char* class_name) {
  const REALobject object = new_block(class_name);
  construct(object, class_name);
  return object;
}

void unlock(REALobject object) {
  check_object(object, "unlocking");
  if (--object->locks == 0) destroy(object);
}

int locks_of(REALobject object) {
  check_object(object, "reading");
  return object->locks;
}

REALmovieStruct* make_movie(uint32_t toolbox_movie) {
  const REALobject object = new_block("a movie");
  object->toolbox_movie = toolbox_movie;
  return reinterpret_cast<REALmovieStruct*>(object);
}

REALobject as_object(REALmovieStruct* movie) { return reinterpret_cast<REALobject>(movie); }

REALmemoryBlockStruct* make_memory_block(std::string_view bytes) {
  const REALobject object = new_block("a memory block");
  object->bytes = new std::string(bytes);
  return reinterpret_cast<REALmemoryBlockStruct*>(object);
}

std::string bytes_of(REALmemoryBlockStruct* block) {
  return *block_object(block, "reading")->bytes;
}

REALobject as_object(REALmemoryBlockStruct* block) { return reinterpret_cast<REALobject>(block); }

char* data_of(REALobject object) {
  check_object(object, "reading");
  return reinterpret_cast<char*>(object) + kDataOffset;
}

REALclassDefinition& definition(std::string_view name) {
  REALclassDefinition* found = find_definition(name);
  if (!found) broken_contract("no class " + std::string(name));
  return *found;
}

const MethodEntry& method(std::string_view class_name, std::string_view declaration) {
  const REALclassDefinition& one = definition(class_name);
  for (int32_t i = 0; i < one.method_count; ++i) {
    if (declaration == one.methods[i].declaration) return one.methods[i];
  }
  broken_contract("no method " + std::string(declaration));
}

const PropertyEntry& property(std::string_view class_name, std::string_view name) {
  const REALclassDefinition& one = definition(class_name);
  for (int32_t i = 0; i < one.property_count; ++i) {
    if (name == one.properties[i].name) return one.properties[i];
  }
  broken_contract("no property " + std::string(name));
}

void broken_contract(const std::string& what) {
  std::fprintf(stderr, "broken contract: %s\n", what.c_str());
  std::abort();
}

}  // namespace fake_host
