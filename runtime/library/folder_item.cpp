#include "library/folder_item.h"

#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <utility>
#include <vector>

#include "library/date_time.h"
#include "library/file_operations.h"
#include "library/io_error.h"
#include "library/parts.h"
#include "object/exceptions.h"
#include "object/object.h"
#include "object/string.h"
#include "registry/tables.h"
#include "runtime.h"

namespace krz {

namespace {

struct ItemData {
  REALstring path;
  std::vector<std::string>* names;  // what the folder held when it was last listed, or null
};

REALclassDefinition g_class;

ItemData& data_of(REALobject item) { return data_in<ItemData>(item, g_class); }

void destroy(REALobject item) {
  unlock_string(data_of(item).path);
  delete data_of(item).names;
}

void construct(REALobject item, REALstring path) {
  lock_string(path);
  unlock_string(data_of(item).path);
  data_of(item).path = path;
  delete std::exchange(data_of(item).names, nullptr);
}

std::string path_of(REALobject item) { return string_path(data_of(item).path); }

bool read_status(REALobject item, struct stat& status) {
  return ::stat(string_path(data_of(item).path).c_str(), &status) == 0;
}

REALstring get_path(REALobject item, intptr_t) {
  lock_string(data_of(item).path);
  return data_of(item).path;
}

// A path without slashes behind it, the root's own excepted.
std::string without_last_slashes(std::string path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::string name_of(REALobject item) {
  const std::string path = without_last_slashes(path_of(item));
  return path.substr(path.rfind('/') + 1);
}

REALstring get_name(REALobject item, intptr_t) { return make_string(name_of(item)); }

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

REALobject get_modification_date(REALobject item, intptr_t) {
  struct stat status;
  if (!read_status(item, status)) {
    raise_io_error("find", path_of(item), errno);
    return nullptr;
  }
  return new_date_time(
      local_moment(status.st_mtim.tv_sec, static_cast<int32_t>(status.st_mtim.tv_nsec / 1000)));
}

// Only by its name: the folder need not exist. Null at the root.
REALfolderItemStruct* parent(REALobject item) {
  const std::string path = without_last_slashes(path_of(item));
  if (path == "/") return nullptr;
  const std::string name = name_of(item);
  if (name == "." || name == "..") return new_folder_item(path + "/..");
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return new_folder_item(".");
  return new_folder_item(without_last_slashes(path.substr(0, slash + 1)));
}

std::string child_path(REALobject item, const std::string& name) {
  const std::string path = path_of(item);
  return path.ends_with('/') ? path + name : path + "/" + name;
}

REALfolderItemStruct* child(REALobject item, REALstring name_text) {
  const std::string name = string_path(name_text);
  if (!name.empty() && name.find('/') == std::string::npos)
    return new_folder_item(child_path(item, name));
  raise_exception("InvalidArgumentException",
                  "\"" + name + "\" is no name of a file; give one name, without slashes");
  return nullptr;
}

// Lists the folder anew.
int32_t count(REALobject item) {
  auto names = std::make_unique<std::vector<std::string>>(folder_names(path_of(item)));
  delete std::exchange(data_of(item).names, names.release());
  return static_cast<int32_t>(data_of(item).names->size());
}

// Of the last listing, so that a walk by number meets each name once whatever it deletes.
REALfolderItemStruct* child_at(REALobject item, int32_t index) {
  if (!data_of(item).names) count(item);
  if (exception_pending()) return nullptr;
  const std::vector<std::string>& names = *data_of(item).names;
  if (index >= 0 && static_cast<size_t>(index) < names.size())
    return new_folder_item(child_path(item, names[static_cast<size_t>(index)]));
  raise_exception("OutOfBoundsException", "index " + std::to_string(index) +
                                              " is not below the folder's Count of " +
                                              std::to_string(names.size()));
  return nullptr;
}

void delete_item(REALobject item) { delete_file(path_of(item)); }
void create_folder_here(REALobject item) { create_folder(path_of(item)); }

using Transfer = void (*)(const std::string& from, const std::string& to);

// Into the target when it is a folder, else to its path.
bool transfer(Transfer transfer_file, REALobject item, REALfolderItemStruct* target,
              std::string& to) {
  const auto object = reinterpret_cast<REALobject>(target);
  if (!object) {
    raise_exception("NilObjectException", "the target is Nil; give a FolderItem");
    return false;
  }
  to = get_is_folder(object, 0) ? child_path(object, name_of(item)) : path_of(object);
  transfer_file(path_of(item), to);
  return !exception_pending();
}

void copy_to(REALobject item, REALfolderItemStruct* target) {
  std::string to;
  transfer(copy_file, item, target, to);
}

// The item goes along with its file.
void move_to(REALobject item, REALfolderItemStruct* target) {
  std::string to;
  if (!transfer(move_file, item, target, to)) return;
  const REALstring path = make_string(to);
  construct(item, path);
  unlock_string(path);
}

REALfolderItemStruct* item_for_path(REALstring path) { return new_folder_item(string_path(path)); }

PropertyEntry g_properties[] = {
    KRZ_READ_ONLY(get_path, "Path", "String"),
    KRZ_READ_ONLY(get_path, "NativePath", "String"),
    KRZ_READ_ONLY(get_name, "Name", "String"),
    KRZ_READ_ONLY(get_exists, "Exists", "Boolean"),
    KRZ_READ_ONLY(get_is_folder, "IsFolder", "Boolean"),
    KRZ_READ_ONLY(get_is_folder, "Directory", "Boolean"),
    KRZ_READ_ONLY(get_length, "Length", "Int64"),
    KRZ_READ_ONLY(get_modification_date, "ModificationDate", "DateTime"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(construct, "Constructor(path as string)"),
    KRZ_METHOD(parent, "Parent as FolderItem"),
    KRZ_METHOD(child, "Child(name as string) as FolderItem"),
    KRZ_METHOD(count, "Count as integer"),
    KRZ_METHOD(child_at, "ChildAt(index as integer) as FolderItem"),
    KRZ_METHOD(delete_item, "Delete()"),
    KRZ_METHOD(create_folder_here, "CreateFolder()"),
    KRZ_METHOD(copy_to, "CopyTo(target as FolderItem)"),
    KRZ_METHOD(move_to, "MoveTo(target as FolderItem)"),
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
  return is_item ? string_path(data_of(object).path) : std::string();
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
