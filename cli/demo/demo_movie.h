// The demonstration movie: ten seconds of moving colour bars, a scale of tones, and three chapters.
#pragma once

#include "base/bytes.h"
#include "base/status.h"

namespace cli {

/// The bytes of the whole file, the same every time. Fails: memFullErr.
toolbox::Result<toolbox::Bytes> demonstration_movie();

}  // namespace cli
