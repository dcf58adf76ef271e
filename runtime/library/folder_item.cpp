#include "library/folder_item.h"

#include <sys/stat.h>

#include "library/parts.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

struct ItemData {
  REALstring path;
};

REALclassDefinition g_class;

ItemData& data_of(REALobject item) { return data_in<ItemData>(item, g_class); }

void destroy(REALobject item) { unlock_string(data_of(item).path); }

void construct(REALobject item, REALstring path) {
  lock_string(path);
  unlock_string(data_of(item).path);
  data_of(item).path = path;
}

bool read_status(REALobject item, struct stat& status) {
  return ::stat(string_utf8(data_of(item).path).c_str(), &status) == 0;
}

REALstring get_path(REALobject item, intptr_t) {
  lock_string(data_of(item).path);
  return data_of(item).path;
}

REALstring get_name(REALobject item, intptr_t) {
  std::string path = string_utf8(data_of(item).path);
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return make_string(std::string_view(path).substr(path.rfind('/') + 1));
}

bool get_exists(REALobject item, intptr_t) {
  struct stat status;
  return read_status(item, status);
}

bool get_is_folder(REALobject item, intptr_t) {
  struct stat status;
  return read_status(item, status) && S_ISDIR(status.st_mode);
}

int64_t get_length(REALobject item, intptr_t) {
  struct stat status;
  return read_status(item, status) ? int64_t{status.st_size} : 0;
}

REALfolderItemStruct* item_for_path(REALstring path) { return new_folder_item(string_utf8(path)); }

PropertyEntry g_properties[] = {
    KRZ_READ_ONLY(get_path, "Path", "String"),
    KRZ_READ_ONLY(get_path, "NativePath", "String"),
    KRZ_READ_ONLY(get_name, "Name", "String"),
    KRZ_READ_ONLY(get_exists, "Exists", "Boolean"),
    KRZ_READ_ONLY(get_is_folder, "IsFolder", "Boolean"),
    KRZ_READ_ONLY(get_length, "Length", "Int64"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(construct, "Constructor(path as string)"),
};

const FunctionEntry kFunctions[] = {
    KRZ_FUNCTION(item_for_path, "GetFolderItem(path as string) as FolderItem"),
};

}  // namespace

REALfolderItemStruct* new_folder_item(std::string_view path) {
  const ClassInfo* const class_info = Runtime::current().registry().find_class(g_class.name);
  const REALobject item = class_info ? new_instance(*class_info) : nullptr;
  if (item) data_of(item).path = make_string(path);
  return reinterpret_cast<REALfolderItemStruct*>(item);
}

std::string folder_item_path(REALfolderItemStruct* item) {
  const auto object = reinterpret_cast<REALobject>(item);
  const bool is_item = object && object->class_info && object->class_info->definition() == &g_class;
  return is_item ? string_utf8(data_of(object).path) : std::string();
}

void register_folder_item(Registry& registry) {
  g_class = class_of<ItemData>("FolderItem");
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_properties(g_class, g_properties);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
  registry.register_functions(kFunctions);
}

}  // namespace krz
