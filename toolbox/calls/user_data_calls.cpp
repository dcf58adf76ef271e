// The calls of QuickTime/UserData.h.
#include <algorithm>

#include "calls/guard.h"
#include "calls/references.h"
#include "memory/handles.h"

using namespace toolbox::calls;
using toolbox::Bytes;
using toolbox::ByteView;
using toolbox::Result;
using toolbox::Status;
using toolbox::UserDataList;
namespace handles = toolbox::handles;

namespace {

Status no_handle() { return {paramErr, "a handle is needed"}; }

Result<ByteView> bytes_in(Handle handle) {
  if (!handles::is_live(handle)) return no_handle();
  return ByteView(reinterpret_cast<const uint8_t*>(*handle),
                  static_cast<size_t>(handles::size(handle)));
}

Status give(Handle handle, const Result<Bytes>& bytes) {
  if (!bytes.ok()) return Status(bytes.status().code(), bytes.status().message());
  if (!handles::is_live(handle)) return no_handle();
  const OSErr error = handles::assign(handle, bytes.value());
  return error == noErr ? Status() : Status(error, "the handle cannot take the bytes");
}

template <class Owner>
Result<UserData> list_of(Owner& owner) {
  TRY_ASSIGN(toolbox::Annotations* const lists, owner.annotations());
  return reference_to(lists->user_data());
}

}  // namespace

TOOLBOX_CALL OSErr NewUserData(UserData* theUserData) {
  return guarded([&]() -> Status {
    if (theUserData == nullptr) return {paramErr, "a place for the list is needed"};
    auto list = std::make_unique<UserDataList>(UserDataList::Owner::kCaller);
    TRY_ASSIGN(*theUserData, reference_to(*list));
    static_cast<void>(list.release());  // DisposeUserData takes it back
    return {};
  });
}

TOOLBOX_CALL OSErr NewUserDataFromHandle(Handle h, UserData* theUserData) {
  return guarded([&]() -> Status {
    if (theUserData == nullptr) return {paramErr, "a place for the list is needed"};
    *theUserData = nullptr;
    TRY_ASSIGN(const ByteView bytes, bytes_in(h));
    auto list = std::make_unique<UserDataList>(UserDataList::Owner::kCaller);
    TRY(list->read_flat(bytes));
    TRY_ASSIGN(*theUserData, reference_to(*list));
    static_cast<void>(list.release());
    return {};
  });
}

TOOLBOX_CALL OSErr DisposeUserData(UserData theUserData) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(UserDataList* const list, find_user_data(theUserData));
    if (list->owner() != UserDataList::Owner::kCaller) {
      return {paramErr, "the list belongs to a movie and lives as long as that"};
    }
    delete list;
    return {};
  });
}

TOOLBOX_CALL OSErr PutUserDataIntoHandle(UserData theUserData, Handle h) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(const UserDataList* list, find_user_data(theUserData));
    return give(h, list->flat());
  });
}

TOOLBOX_CALL UserData GetMovieUserData(Movie theMovie) {
  return guarded_value<UserData>(nullptr, [&]() -> Result<UserData> {
    TRY_ASSIGN(toolbox::Movie* const movie, find_movie(theMovie));
    return list_of(*movie);
  });
}

TOOLBOX_CALL UserData GetTrackUserData(Track theTrack) {
  return guarded_value<UserData>(nullptr, [&]() -> Result<UserData> {
    TRY_ASSIGN(toolbox::Track* const track, find_track(theTrack));
    return list_of(*track);
  });
}

TOOLBOX_CALL OSErr AddUserData(UserData theUserData, Handle data, OSType udType) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(UserDataList* const list, find_user_data(theUserData));
    TRY_ASSIGN(const ByteView bytes, bytes_in(data));
    return list->add(udType, bytes);
  });
}

TOOLBOX_CALL OSErr GetUserData(UserData theUserData, Handle data, OSType udType, SInt32 index) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(UserDataList* const list, find_user_data(theUserData));
    return give(data, list->data(udType, index));
  });
}

TOOLBOX_CALL OSErr RemoveUserData(UserData theUserData, OSType udType, SInt32 index) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(UserDataList* const list, find_user_data(theUserData));
    return list->remove(udType, index);
  });
}

TOOLBOX_CALL SInt16 CountUserDataType(UserData theUserData, OSType udType) {
  return ask(SInt16{0}, find_user_data, theUserData, [&](auto& list) {
    return static_cast<SInt16>(std::min<size_t>(list.count(udType), INT16_MAX));
  });
}

TOOLBOX_CALL OSType GetNextUserDataType(UserData theUserData, OSType udType) {
  return ask(OSType{0}, find_user_data, theUserData,
             [&](auto& list) { return list.next_type(udType); });
}

TOOLBOX_CALL OSErr AddUserDataText(UserData theUserData, Handle data, OSType udType, SInt32 index,
                                   SInt16 itlRegionTag) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(UserDataList* const list, find_user_data(theUserData));
    TRY_ASSIGN(const ByteView bytes, bytes_in(data));
    return list->set_text(udType, index, static_cast<uint16_t>(itlRegionTag), bytes);
  });
}

TOOLBOX_CALL OSErr GetUserDataText(UserData theUserData, Handle data, OSType udType, SInt32 index,
                                   SInt16 itlRegionTag) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(UserDataList* const list, find_user_data(theUserData));
    return give(data, list->text(udType, index, static_cast<uint16_t>(itlRegionTag)));
  });
}

TOOLBOX_CALL OSErr RemoveUserDataText(UserData theUserData, OSType udType, SInt32 index,
                                      SInt16 itlRegionTag) {
  return guarded([&]() -> Status {
    TRY_ASSIGN(UserDataList* const list, find_user_data(theUserData));
    return list->remove_text(udType, index, static_cast<uint16_t>(itlRegionTag));
  });
}
