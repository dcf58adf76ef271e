// A drawing framework with one world, which records what is asked of it.
#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <string>
#include <vector>

namespace fake_drawing {

using Calls = std::vector<std::string>;

/// The one world of the fake drawing framework.
struct World {
  Rect bounds = {};
  SInt16 depth = 32;
  Boolean locks = true;
  Ptr base = nullptr;
  SInt32 row_bytes = 0;
  OSErr new_error = noErr;
  OSErr region_error = noErr;
  Calls calls;
};
extern World drawn;

GWorldPtr some_world();
CGrafPtr some_port();

/// Gives the fake toolbox a framework with all the routines of pictures.
void provide_drawing();

}  // namespace fake_drawing
