// Who is told how far a long piece of work has come.
#pragma once

#include <cstdint>

namespace toolbox {

using WorkProc = void (*)(uint64_t done, uint64_t total, void* context);

/// One for the process; a null `tell` is nobody.
struct WorkWatcher {
  WorkProc tell = nullptr;
  void* context = nullptr;

  static WorkWatcher& current();
};

/// Tells the one who watches, if anybody does.
void tell_watcher(uint64_t done, uint64_t total);

}  // namespace toolbox
