#include "base/work_watcher.h"

namespace toolbox {

WorkWatcher& WorkWatcher::current() {
  static WorkWatcher watcher;
  return watcher;
}

void tell_watcher(uint64_t done, uint64_t total) {
  const WorkWatcher& watcher = WorkWatcher::current();
  if (watcher.tell) watcher.tell(done, total, watcher.context);
}

}  // namespace toolbox
