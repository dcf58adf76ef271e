#include "library/io_error.h"

#include <cerrno>
#include <cstring>

#include "object/exceptions.h"

namespace krz {

namespace {

struct Advice {
  int error;
  const char* what_to_do;
};

constexpr Advice kAdvice[] = {
    {ENOENT, "check the path, and that its folder exists"},
    {ENOTDIR, "check the path, a part of it is a file"},
    {EEXIST, "choose another name, or delete what is there first"},
    {EACCES, "check the permissions"},
    {EPERM, "check the permissions"},
    {EISDIR, "give the path of a file, this is a folder"},
    {ENOTEMPTY, "delete what is in the folder first"},
    {ENOSPC, "make room on the disk"},
    {EROFS, "choose a place that can be written to"},
    {EMFILE, "close files that are no longer needed"},
};

}  // namespace

void raise_io_error(std::string_view action, std::string_view path, int error) {
  std::string message = "cannot ";
  message.append(action).append(" \"").append(path).append("\": ").append(std::strerror(error));
  for (const Advice& advice : kAdvice) {
    if (advice.error == error) message.append("; ").append(advice.what_to_do);
  }
  raise_exception("IOException", message, error);
}

bool check_path(std::string_view path) {
  if (!path.empty() && path.find('\0') == std::string_view::npos) return true;
  raise_exception("IOException", path.empty()
                                     ? "the path is empty; give the path of a file or folder"
                                     : "the path holds a zero character; remove it from the path");
  return false;
}

}  // namespace krz
