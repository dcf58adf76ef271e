// A host without mercy: it serves the entries that a module looks up, records what is asked of it,
// and ends the process when a contract is broken (a lock too few or too many, a dead string, data
// given back twice).
#pragma once

#include <krz/abi.h>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace fake_host {

struct Raised {
  std::string class_name;
  std::string message;
  bool has_message = false;
};

/// What the host does and what was asked of it. Reset by start().
struct Host {
  double version = 2015.0;
  bool in_runtime = true;
  int32_t enter_movies_answer = 0;
  bool fail_picture_locks = false;  // of objects that are no pictures
  bool makes_pictures = true;
  REALfunction draw_picture = nullptr;             // the method of graphics; null: they have none
  int32_t memory_block_limit = 1 << 20;            // larger blocks cannot be made
  std::set<std::string> withheld;                  // entries that it does not have
  std::map<std::string, int32_t> foreign_classes;  // classes of others, and their data sizes

  std::optional<int32_t> claimed_upper_bound;  // of every array, in place of the true one

  std::vector<std::string> asked;  // names given to the resolver, in order
  std::vector<std::string> calls;  // start-up and picture services, in order
  std::vector<REALclassDefinition*> classes;
  std::vector<REALclassDefinition*> extensions;
  std::vector<Raised> raised;
};
Host& host();

/// A new host with the exception classes, and nothing alive.
void start();

/// Frees all that is alive, without destructors: for hosts that lack the entries by which a module
/// gives things back.
void sweep();

/// The function that a module is handed.
void* resolve(const char* entry_name);

/// Every entry that the host can serve.
std::vector<std::string> entry_names();

int times_asked(std::string_view entry_name);

/// What is alive: objects, strings and handed-out string data. All are zero when nothing leaks.
int live_objects();
int live_strings();
int live_string_data();

// Values, locked once for the caller.
REALstring make_string(std::string_view bytes, uint32_t encoding);
std::string bytes_of(REALstring string);
uint32_t encoding_of(REALstring string);
void unlock(REALstring string);
REALobject make_object(const char* class_name);
void unlock(REALobject object);
int locks_of(REALobject object);
REALmovieStruct* make_movie(uint32_t toolbox_movie);
REALobject as_object(REALmovieStruct* movie);

/// The host's array of these objects, which borrows them.
inline REALobjectArrayStruct* as_array(std::vector<REALobject>& objects) {
  return reinterpret_cast<REALobjectArrayStruct*>(&objects);
}
REALmemoryBlockStruct* make_memory_block(std::string_view bytes);
std::string bytes_of(REALmemoryBlockStruct* block);
REALobject as_object(REALmemoryBlockStruct* block);

/// The data that a class declared, in one of its objects.
char* data_of(REALobject object);

/// The registered definition, extensions included. Ends the process when there is none.
REALclassDefinition& definition(std::string_view name);
const MethodEntry& method(std::string_view class_name, std::string_view declaration);
const PropertyEntry& property(std::string_view class_name, std::string_view name);

template <class Function>
Function* function(REALfunction stored) {
  return reinterpret_cast<Function*>(stored);
}

/// Reads a direct field as the host does.
template <class T>
T& field(REALobject object, std::string_view class_name, std::string_view name) {
  return *reinterpret_cast<T*>(data_of(object) + property(class_name, name).param);
}

[[noreturn]] void broken_contract(const std::string& what);

}  // namespace fake_host
