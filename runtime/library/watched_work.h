// A line on the terminal while the toolbox is at a long piece of work.
#pragma once

#include <Toolbox/Toolbox.h>

#include <optional>
#include <string>

#include "library/progress.h"

namespace krz {

/// Shows what the toolbox tells of its work as long as this lives.
class WatchedWork {
 public:
  /// `unit` of the toolbox's numbers are shown as one.
  WatchedWork(std::string what, uint64_t unit) : what_(std::move(what)), unit_(unit) {
    ToolboxWatchWork(&show, this);
  }
  ~WatchedWork() { ToolboxWatchWork(nullptr, nullptr); }
  WatchedWork(const WatchedWork&) = delete;
  WatchedWork& operator=(const WatchedWork&) = delete;

 private:
  static void show(uint64_t done, uint64_t total, void* context) {
    WatchedWork& work = *static_cast<WatchedWork*>(context);
    if (!work.progress_) {
      work.progress_.emplace(work.what_, 0, static_cast<int64_t>(total / work.unit_));
    }
    work.progress_->show(static_cast<int64_t>(done / work.unit_));
  }

  std::string what_;
  uint64_t unit_;
  std::optional<Progress> progress_;
};

}  // namespace krz
