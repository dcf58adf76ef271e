// The calls over data references and the alias records in them.
#include <Carbon/Aliases.h>
#include <sys/stat.h>

#include "calls/guard.h"
#include "calls/references.h"
#include "foundation/file_locations.h"
#include "foundation/file_references.h"
#include "memory/handles.h"
#include "movie/media_references.h"

using namespace toolbox::calls;
using toolbox::Result;
using toolbox::Status;

namespace {

toolbox::ByteView bytes_of(Handle handle) {
  return {reinterpret_cast<const uint8_t*>(*handle),
          static_cast<size_t>(toolbox::handles::size(handle))};
}

/// The caller disposes it.
Result<Handle> handle_of(toolbox::ByteView bytes) {
  Handle made = toolbox::handles::make(0);
  if (made == nullptr || toolbox::handles::assign(made, bytes) != noErr) {
    toolbox::handles::dispose(made);
    return Status(memFullErr, "there is no memory for the data reference");
  }
  return made;
}

}  // namespace

TOOLBOX_CALL OSErr GetMediaDataRef(Media media, SInt16 index, Handle* dataRef, OSType* dataRefType,
                                   SInt32* dataRefAttributes) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const toolbox::Media* found, find_media(media));
    TRY_ASSIGN(const toolbox::MediaReference reference, toolbox::media_reference(*found, index));
    if (dataRef != nullptr) {
      TRY_ASSIGN(*dataRef, handle_of(reference.data));
    }
    if (dataRefType != nullptr) *dataRefType = reference.type;
    if (dataRefAttributes != nullptr) {
      *dataRefAttributes = (reference.is_self ? SInt32{dataRefSelfReference} : 0) |
                           (reference.is_resolved ? 0 : SInt32{dataRefWasNotResolved});
    }
    return {};
  });
}

TOOLBOX_CALL OSErr SetMediaDataRef(Media media, SInt16 index, Handle dataRef, OSType dataRefType) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(toolbox::Media * found, find_media(media));
    if (!toolbox::handles::is_live(dataRef)) {
      return {invalidDataRef, "there is no data reference to set"};
    }
    return toolbox::set_media_reference(*found, index, dataRefType, bytes_of(dataRef));
  });
}

TOOLBOX_CALL OSErr QTNewDataReferenceFromFSRef(const FSRef* fileRef, UInt32 flags,
                                               Handle* outDataRef, OSType* outDataRefType) {
  return guarded([&]() -> Status {
    if (fileRef == nullptr || outDataRef == nullptr || outDataRefType == nullptr || flags != 0) {
      return {paramErr, "a file and places for the data reference are needed, and no flags"};
    }
    const char* const path = toolbox::file_references::path_of(*fileRef);
    if (path == nullptr) return {errFSBadFSRef, "this file reference stands for no file"};
    struct stat info;
    if (::stat(path, &info) != 0) return {fnfErr, std::string(path) + ": there is no such file"};
    const std::string alias = toolbox::file_locations::alias_to(path);
    TRY_ASSIGN(*outDataRef,
               handle_of({reinterpret_cast<const uint8_t*>(alias.data()), alias.size()}));
    *outDataRefType = toolbox::four_cc("alis");
    return {};
  });
}

TOOLBOX_CALL OSErr ResolveAlias(const FSSpec* fromFile, AliasHandle alias, FSSpec* target,
                                Boolean* wasChanged) {
  if (wasChanged != nullptr) *wasChanged = 0;
  return guarded([&]() -> Status {
    if (!toolbox::handles::is_live(alias) || target == nullptr) {
      return {paramErr, "an alias and a place for its file are needed"};
    }
    const char* const from =
        fromFile == nullptr ? nullptr : toolbox::file_references::path_of(*fromFile);
    const std::string folder =
        from == nullptr ? std::string() : toolbox::file_locations::folder_of(from);
    const std::vector<std::string> places =
        toolbox::file_locations::paths_of_alias(bytes_of(alias), folder);
    if (places.empty()) return {paramErr, "the alias record describes no file of this system"};
    struct stat info;
    for (const std::string& place : places) {
      if (::stat(place.c_str(), &info) != 0) continue;
      *target = toolbox::file_references::spec_of(place);
      return {};
    }
    const std::string& wanted = places.front();
    if (toolbox::file_locations::folder_of(wanted).empty()) {
      return {dirNFErr, wanted + ": the folder of this file is not there"};
    }
    *target = toolbox::file_references::spec_of(wanted);
    return {fnfErr, wanted + ": there is no such file"};
  });
}
