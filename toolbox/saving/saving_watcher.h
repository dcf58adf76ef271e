// Who is told how far a long save has come.
#pragma once

#include <cstdint>

namespace toolbox {

using SavingProc = void (*)(uint64_t written, uint64_t total, void* context);

/// One for the process; a null `tell` is nobody.
struct SavingWatcher {
  SavingProc tell = nullptr;
  void* context = nullptr;

  static SavingWatcher& current();
};

}  // namespace toolbox
