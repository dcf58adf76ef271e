#include "runtime.h"

#include <dlfcn.h>
#include <limits.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <cstdlib>

#include "entries/entries.h"
#include "library/library.h"
#include "object/exceptions.h"
#include "object/memory_budget.h"
#include "object/object.h"
#include "registry/registry.h"

namespace krz {

namespace {

Runtime* g_current = nullptr;

constexpr size_t kOutputBufferSize = 16 * 1024;

void write_all(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<size_t>(written));
  }
}

/// What to do is the same whatever is wrong with a module.
std::string refused(const std::string& path, const std::string& reason) {
  return "module \"" + path + "\" " + reason +
         "; install krz again, or set KRZ_MODULE to the path of a module that fits";
}

}  // namespace

struct Runtime::State {
  RuntimeOptions options;
  Registry registry;
  std::string output;  // not yet written
  std::vector<void*> modules;
};

Runtime::Runtime(RuntimeOptions options) : state_(std::make_unique<State>()) {
  assert(!g_current);
  g_current = this;
  state_->options = std::move(options);
  memory_budget::set_limit(state_->options.memory_budget);
  register_library(state_->registry);
}

Runtime::~Runtime() {
  flush_output();
  unlock_object(take_pending_exception());
  g_current = nullptr;
  if (live_objects() != 0) {
    // Somebody keeps objects. Their destructors are code of the modules and their classes belong to
    // the registry, so both stay.
    (void)state_.release();
    return;
  }
  const std::vector<void*> modules = std::move(state_->modules);
  state_.reset();
  for (void* module : modules) dlclose(module);
}

Runtime& Runtime::current() {
  assert(g_current);
  return *g_current;
}

std::string Runtime::load_module(const std::string& path) {
  if (access(path.c_str(), F_OK) != 0) {
    return refused(path, "does not exist");
  }
  // A name without a slash would be looked for in the system's library folders.
  const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
  void* const module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!module) {
    const char* const reason = dlerror();
    return refused(path, std::string("cannot be loaded: ") + (reason ? reason : "no reason given"));
  }
  using Main = void (*)(REALResolver);
  const auto entry = reinterpret_cast<Main>(dlsym(module, "REALPluginMain"));
  if (!entry) {
    dlclose(module);
    return refused(path, "is no module for this runtime: it has no REALPluginMain");
  }
  set_announced_version(kPluginInterfaceVersion);
  entry(&resolve_entry);
  state_->modules.push_back(module);
  if (const int32_t version = announced_version(); version != kPluginInterfaceVersion) {
    return refused(path, "speaks interface version " + std::to_string(version) +
                             ", this runtime speaks " + std::to_string(kPluginInterfaceVersion));
  }
  return {};
}

std::string Runtime::default_module_path() {
  if (const char* const path = std::getenv("KRZ_MODULE"); path && *path) return path;
  Dl_info here{};
  if (!dladdr(reinterpret_cast<void*>(&Runtime::default_module_path), &here) || !here.dli_fname) {
    return "krz/krz-movie.so";
  }
  // Links are followed: the module lies beside the library itself.
  char real[PATH_MAX];
  const std::string_view file = realpath(here.dli_fname, real) ? real : here.dli_fname;
  const size_t slash = file.rfind('/');
  const std::string_view folder = slash == std::string_view::npos ? "." : file.substr(0, slash);
  return std::string(folder) + "/krz/krz-movie.so";
}

Registry& Runtime::registry() { return state_->registry; }

const RuntimeOptions& Runtime::options() const { return state_->options; }

void Runtime::write_output(std::string_view text) {
  if (state_->options.standard_output) return state_->options.standard_output(text);
  std::string& output = state_->output;
  output.append(text);
  if (output.size() >= kOutputBufferSize) flush_output();
}

void Runtime::write_error(std::string_view text) {
  flush_output();
  if (state_->options.standard_error) return state_->options.standard_error(text);
  write_all(STDERR_FILENO, text);
}

void Runtime::flush_output() {
  write_all(STDOUT_FILENO, state_->output);
  state_->output.clear();
}

}  // namespace krz
