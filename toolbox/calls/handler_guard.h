// The way into the engine for the calls of media handlers, whose results are 32 bits wide.
#pragma once

#include <QuickTime/QuickTime.h>

#include "calls/guard.h"
#include "movie/media.h"

namespace toolbox::calls {

/// Runs `body(handler)`, which answers a Status, on the handler behind a reference; answers its
/// code. Fails: badComponentInstance for a nil or stale reference, badComponentSelector when
/// `answers(type)` is false for the type of its media.
template <class Answers, class Body>
ComponentResult guarded_handler_that(::MediaHandler reference, Answers answers, Body body) {
  ComponentResult component_failure = noErr;
  const OSErr code = guarded([&]() -> Status {
    auto* const handler = static_cast<MediaHandler*>(
        tokens::find(Kind::kMediaHandler, reinterpret_cast<uintptr_t>(reference)));
    if (handler == nullptr) {
      component_failure = badComponentInstance;
      return {static_cast<OSErr>(badComponentInstance), "there is no such media handler"};
    }
    if (!answers(handler->media().type())) {
      component_failure = badComponentSelector;
      return {static_cast<OSErr>(badComponentSelector),
              "the media handler does not answer that call: its media is of another type"};
    }
    return body(*handler);
  });
  return component_failure != noErr ? component_failure : code;
}

/// The same for the calls of one type of media.
template <class Body>
ComponentResult guarded_handler(::MediaHandler reference, FourCC type, Body body) {
  return guarded_handler_that(
      reference, [type](FourCC each) { return each == type; }, body);
}

}  // namespace toolbox::calls
