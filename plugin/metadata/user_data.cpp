// The class "QTUserDataKRZ": a list of typed items that belongs to a movie, a track, or the object.
#include "metadata/user_data.h"

#include "host/class_table.h"
#include "host/encodings.h"
#include "host/entries.h"
#include "host/instance_data.h"
#include "host/memory.h"
#include "host/registration.h"
#include "host/strings.h"
#include "host/text_view.h"
#include "movie/movie.h"
#include "track/track.h"

namespace krz {
namespace {

constexpr uint32_t kTag = 0x51545544;  // 'QTUD'
constexpr OSErr kNotAttempted = -1;

QTUserDataClassData& user_data(REALobject object) {
  return instance_data<QTUserDataClassData>(object, QTUserDataClass);
}

UserData list_of(const QTUserDataClassData& data) { return to_reference<UserData>(data.handle); }

void UserDataConstructor(REALobject object) { user_data(object).tag = kTag; }

void UserDataDestructor(REALobject object) {
  QTUserDataClassData& data = user_data(object);
  if (data.release && data.handle) DisposeUserData(list_of(data));
  data.handle = 0;
}

/// The flattened list in a handle; null when there is none.
OwnedHandle flattened(QTUserDataClassData& data) {
  data.lasterror = kNotAttempted;
  if (!data.handle) return nullptr;
  OwnedHandle handle(NewHandle(0));
  if (!handle) return nullptr;
  data.lasterror = PutUserDataIntoHandle(list_of(data), handle.get());
  return data.lasterror == noErr ? std::move(handle) : nullptr;
}

/// Lets go of the list, first of all. A movie's list stays with its movie, unchanged: whatever is
/// assigned becomes a list of the object's own.
void drop_list(QTUserDataClassData& data) {
  if (data.release && data.handle) DisposeUserData(list_of(data));
  data.handle = 0;
  data.lasterror = kNotAttempted;
}

/// Takes a list of its own from the flattened form.
void take_list(QTUserDataClassData& data, const OwnedHandle& bytes) {
  if (!bytes) return;
  UserData list = nullptr;
  data.lasterror = NewUserDataFromHandle(bytes.get(), &list);
  if (data.lasterror != noErr) return;
  data.release = 1;
  data.handle = to_token(list);
}

REALstring rbGetDataS(REALobject object) {
  return HandleToString(flattened(user_data(object)).get(), kEncodingUnknown);
}

void rbSetDataS(REALobject object, REALstring value) {
  QTUserDataClassData& data = user_data(object);
  drop_list(data);
  if (value) take_list(data, OwnedHandle(NewHandleWithString(value, false)));
}

REALmemoryBlockStruct* rbGetDataM(REALobject object) {
  return HandleToMemory(flattened(user_data(object)).get());
}

void rbSetDataM(REALobject object, REALmemoryBlockStruct* value) {
  QTUserDataClassData& data = user_data(object);
  drop_list(data);
  if (value) take_list(data, OwnedHandle(NewHandleWithMemory(value, false)));
}

/// Adds to the list, which is made when there is none. `make_handle()` copies what is to be added,
/// null for nothing; `add(list, handle)` is the call of the toolbox.
template <class MakeHandle, class Add>
void add_item(REALobject object, MakeHandle make_handle, Add add) {
  QTUserDataClassData& data = user_data(object);
  OSErr result = kNotAttempted;
  if (!data.handle) {
    UserData list = nullptr;
    result = NewUserData(&list);
    if (result == noErr) {
      data.handle = to_token(list);
      data.release = 1;
    }
  }
  if (data.handle) {
    const OwnedHandle handle(make_handle());
    if (handle) result = add(list_of(data), handle.get());
  }
  data.lasterror = result;
}

void rbAddUserDataText(REALobject object, REALstring type, int32_t index, int32_t region,
                       REALstring text) {
  add_item(
      object, [&] { return NewHandleWithString(text, false); },
      [&](UserData list, Handle handle) {
        return AddUserDataText(list, handle, REALstringToOSType(type), index,
                               static_cast<SInt16>(region));
      });
}

void rbAddUserDataS(REALobject object, REALstring type, REALstring item) {
  add_item(
      object, [&] { return NewHandleWithString(item, false); },
      [&](UserData list, Handle handle) {
        return AddUserData(list, handle, REALstringToOSType(type));
      });
}

void rbAddUserDataM(REALobject object, REALstring type, REALmemoryBlockStruct* item) {
  add_item(
      object, [&] { return NewHandleWithMemory(item, false); },
      [&](UserData list, Handle handle) {
        return AddUserData(list, handle, REALstringToOSType(type));
      });
}

/// What `get(list, handle)` puts into a handle, as MacRoman text; nil when that fails or is empty.
template <class Get>
REALstring read_item(REALobject object, Get get) {
  QTUserDataClassData& data = user_data(object);
  data.lasterror = kNotAttempted;
  if (!data.handle) return nullptr;
  const OwnedHandle handle(NewHandle(0));
  if (!handle) return nullptr;
  data.lasterror = get(list_of(data), handle.get());
  return data.lasterror == noErr ? HandleToString(handle.get(), kMacRoman) : nullptr;
}

REALstring rbGetUserDataText(REALobject object, REALstring type, int32_t index, int32_t region) {
  return read_item(object, [&](UserData list, Handle handle) {
    return GetUserDataText(list, handle, REALstringToOSType(type), index,
                           static_cast<SInt16>(region));
  });
}

REALstring rbGetUserData(REALobject object, REALstring type, int32_t index) {
  return read_item(object, [&](UserData list, Handle handle) {
    return GetUserData(list, handle, REALstringToOSType(type), index);
  });
}

void rbRemoveUserDataText(REALobject object, REALstring type, int32_t index, int32_t region) {
  QTUserDataClassData& data = user_data(object);
  data.lasterror = kNotAttempted;
  if (!data.handle) return;
  data.lasterror = RemoveUserDataText(list_of(data), REALstringToOSType(type), index,
                                      static_cast<SInt16>(region));
}

void rbRemoveUserData(REALobject object, REALstring type, int32_t index) {
  QTUserDataClassData& data = user_data(object);
  data.lasterror = kNotAttempted;
  if (!data.handle) return;
  data.lasterror = RemoveUserData(list_of(data), REALstringToOSType(type), index);
}

REALstring rbGetNextUserDataType(REALobject object, REALstring type) {
  QTUserDataClassData& data = user_data(object);
  const bool begins = rbData(type).size() == 0;  // nil or empty
  const OSType code = begins ? 0 : REALstringToOSType(type);
  const OSType next = data.handle ? GetNextUserDataType(list_of(data), code) : 0;
  // Set behind the call, whatever it gave: scripts find -1 after every walk.
  data.lasterror = kNotAttempted;
  return next ? REALBuildOSTypeString(next) : nullptr;
}

int32_t rbCountUserDataType(REALobject object, REALstring type) {
  const QTUserDataClassData& data = user_data(object);
  if (!type || !data.handle) return 0;
  return CountUserDataType(list_of(data), REALstringToOSType(type));
}

PropertyEntry user_data_properties[] = {
    DIRECT_FIELD(QTUserDataClassData, handle, "Handle", "Integer"),
    DIRECT_FIELD(QTUserDataClassData, lasterror, "Lasterror", "Integer"),
    DIRECT_FIELD(QTUserDataClassData, release, "Release", "Boolean"),
};

// clang-format off
MethodEntry user_data_methods[] = {
    ASSIGNABLE(rbGetDataS, rbSetDataS, "BinaryData as string"),
    ASSIGNABLE(rbGetDataM, rbSetDataM, "Memory as Memoryblock"),
    METHOD(rbRemoveUserDataText, "RemoveText(type as string, index as integer, region as integer)"),
    METHOD(rbGetUserDataText, "GetText(type as string, index as integer, region as integer) as string"),
    METHOD(rbAddUserDataText, "AddText(type as string, index as integer, region as integer, text as string)"),
    METHOD(rbGetNextUserDataType, "GetNextType(type as string) as string"),
    METHOD(rbCountUserDataType, "CountType(type as string) as integer"),
    METHOD(rbRemoveUserData, "RemoveData(type as string, index as integer)"),
    METHOD(rbGetUserData, "GetData(type as string, index as integer) as string"),
    METHOD(rbAddUserDataS, "AddData(type as string, data as string)"),
    METHOD(rbAddUserDataM, "AddData(type as string, data as memoryblock)"),
    METHOD(UserDataDestructor, "Close"),
};
// clang-format on

}  // namespace

REALclassDefinition QTUserDataClass = {
    .version = kPluginInterfaceVersion,
    .name = "QTUserDataKRZ",
    .data_size = sizeof(QTUserDataClassData),
    .constructor = HOST_FUNCTION(UserDataConstructor),
    .destructor = HOST_FUNCTION(UserDataDestructor),
    .properties = user_data_properties,
    .property_count = std::size(user_data_properties),
    .methods = user_data_methods,
    .method_count = std::size(user_data_methods),
};

REALobject CreateQTUserData(UserData list, bool release) {
  const REALobject object = REALnewInstance("QTUserDataKRZ");
  if (!object) return nullptr;
  QTUserDataClassData& data = user_data(object);
  data.handle = to_token(list);
  data.release = release;
  return object;
}

REALobject rbMovieUserData(REALmovieStruct* host_movie) {
  const Movie movie = movie_of(host_movie);
  const UserData list = movie ? GetMovieUserData(movie) : nullptr;
  return list ? CreateQTUserData(list, false) : nullptr;
}

REALobject rbTrackUserData(REALobject object) {
  QTTrackClassData& track = track_data(object);
  // Nothing is stored behind the call: the error of a track stays as it is here.
  track.lasterror = kNotAttempted;
  const UserData list = GetTrackUserData(to_reference<Track>(track.track));
  return list ? CreateQTUserData(list, false) : nullptr;
}

}  // namespace krz
