// The calls of Toolbox/Toolbox.h for the short list of chapters.
#include <Toolbox/Toolbox.h>

#include "calls/guard.h"
#include "calls/references.h"
#include "memory/handles.h"
#include "movie/short_chapters.h"

using namespace toolbox::calls;
using toolbox::Bytes;
using toolbox::Status;

TOOLBOX_CALL OSErr ToolboxGetShortChapters(Movie movie, Handle entries) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    TRY_ASSIGN(const Bytes list, toolbox::read_short_chapters(*found));
    const OSErr error = toolbox::handles::assign(entries, list);
    return error == noErr ? Status() : Status(error, "the chapters do not fit their handle");
  });
}

TOOLBOX_CALL OSErr ToolboxSetShortChapters(Movie movie, const void* entries, uint32_t size) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Movie * found, find_movie(movie));
    if (entries == nullptr && size > 0) return {paramErr, "the entries are missing"};
    return toolbox::set_short_chapters(*found, {static_cast<const uint8_t*>(entries), size});
  });
}
