// The calls of Toolbox/Toolbox.h that make file records from paths and find the paths again.
#include <Toolbox/Toolbox.h>
#include <unistd.h>

#include "calls/guard.h"
#include "foundation/file_references.h"

using namespace toolbox;
using namespace toolbox::calls;

TOOLBOX_CALL OSErr ToolboxMakeFSSpec(const char* path, FSSpec* spec) {
  return guarded([&]() -> Status {
    if (path == nullptr || spec == nullptr)
      return Status(paramErr, "a path and a record are needed");
    TRY_ASSIGN(const std::string absolute, file_references::absolute_path(path));
    *spec = file_references::spec_of(absolute);
    return {};
  });
}

TOOLBOX_CALL OSErr ToolboxMakeFSRef(const char* path, FSRef* ref) {
  return guarded([&]() -> Status {
    if (path == nullptr || ref == nullptr)
      return Status(paramErr, "a path and a record are needed");
    TRY_ASSIGN(const std::string absolute, file_references::absolute_path(path));
    if (access(absolute.c_str(), F_OK) != 0)
      return Status(fnfErr, absolute + ": there is no such file");
    *ref = file_references::ref_of(absolute);
    return {};
  });
}

TOOLBOX_CALL const char* ToolboxPathOfFSSpec(const FSSpec* spec) {
  return spec == nullptr ? nullptr : file_references::path_of(*spec);
}

TOOLBOX_CALL const char* ToolboxPathOfFSRef(const FSRef* ref) {
  return ref == nullptr ? nullptr : file_references::path_of(*ref);
}
