// The embedded host: loads modules, owns the classes and functions that scripts can name, and runs
// scripts.
#pragma once

#include <krz/abi.h>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "export.h"

namespace krz {

class Registry;

struct RuntimeOptions {
  /// What "REALGetRBVersion" answers.
  double host_version = 2013.0;

  /// Names of host entries that the resolver pretends not to have.
  std::set<std::string, std::less<>> withheld_entries;

  /// What "REALinRuntime" answers.
  bool in_runtime = true;

  /// How this host keeps the pixels of pictures and shows them to modules.
  REALpictureDescriptionType picture_kind = kPictureBitmapContext;

  /// Where scripts print; standard output and standard error when empty.
  std::function<void(std::string_view)> standard_output;
  std::function<void(std::string_view)> standard_error;

  /// Bytes that scripts may hold in strings, arrays, objects and blocks before an
  /// OutOfMemoryException; 0 for three quarters of what the machine and the process's limits leave.
  size_t memory_budget = 0;

  /// Whether movies that scripts open may have media data in files outside of their folders.
  bool allow_external_files = false;

  /// What scripts see as `Args`, in UTF-8.
  std::vector<std::string> arguments;
};

/// One host. There is one at a time in a process; several one after another are fine. Everything of
/// it is used on one thread.
class KRZ_API Runtime {
 public:
  explicit Runtime(RuntimeOptions options);
  ~Runtime();
  Runtime(const Runtime&) = delete;
  Runtime& operator=(const Runtime&) = delete;

  /// The runtime that lives now. REQUIRES: there is one.
  static Runtime& current();

  /// Loads a module and lets it register; it stays as long as the runtime. Returns what is wrong
  /// with it, empty when it is loaded: the file, and what to do. Scripts do not see the classes of
  /// a module that was refused for its interface version.
  std::string load_module(const std::string& path);

  /// Path of the module that ships with the runtime: beside the runtime library, or where
  /// KRZ_MODULE says.
  static std::string default_module_path();

  /// All classes and functions that scripts can name (registry/registry.h, which is not installed:
  /// programs use value.h, and add classes and functions with a module).
  Registry& registry();
  const RuntimeOptions& options() const;

  /// Writes bytes to the script's standard output (buffered) or standard error (after flushing the
  /// output).
  void write_output(std::string_view text);
  void write_error(std::string_view text);
  void flush_output();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace krz
