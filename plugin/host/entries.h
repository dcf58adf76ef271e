// The host's services, one function an entry.
//
// Every function forwards its arguments unchanged and answers null, 0 or false, or does nothing,
// while the host lacks the entry. "New" results come with one lock that is the caller's.
#pragma once

#include <QuickTime/QuickTime.h>
#include <krz/abi.h>

namespace krz {

// Classes and start-up.
void REALRegisterClass(REALclassDefinition* definition);
void REALRegisterClassExtension(REALclassDefinition* definition);
bool REALinRuntime();
int32_t REALenterMovies();

// Objects. Nothing here checks for nil: the host does.
REALobject REALnewInstance(const char* class_name);
void* REALGetClassRef(const char* class_name);
void REALLockObject(REALobject object);
void REALUnlockObject(REALobject object);
bool REALGetPropValueInt32(REALobject object, const char* property, int32_t* value);
bool REALGetPropValueUInt8(REALobject object, const char* property, uint8_t* value);
bool REALSetPropValueString(REALobject object, const char* property, REALstring value);
void REALRaiseException(REALobject exception);

// Methods of the host, found by their declaration in the host language.
REALfunction REALLoadObjectMethod(REALobject object, const char* declaration);
REALfunction REALLoadFrameworkMethod(const char* declaration);

// Arrays. The array type's other name is an alias, so these serve both. An element comes out
// locked.
int32_t REALGetArrayUBound(REALobjectArrayStruct* array);
REALobject REALGetArrayObject(REALobjectArrayStruct* array, int32_t index);

// Strings.
REALstring originalREALBuildString(const char* bytes, int32_t count);
void REALLockString(REALstring string);
void REALUnlockString(REALstring string);
uint32_t REALGetStringEncoding(REALstring string);
void REALSetStringEncoding(REALstring string, uint32_t encoding);
REALstring REALConvertString(REALstring string, uint32_t encoding);

/// A string's bytes in an encoding, or as stored for 0xFFFF. On success the caller owns `data` and
/// gives it back with REALDisposeStringData. Hosts without the entry are served from older ones; at
/// least four zero bytes then follow the text. Fails: false, with `data` untouched.
bool REALGetStringData(REALstring string, uint32_t encoding, REALstringData* data);
void REALDisposeStringData(REALstringData* data);

// Memory blocks. Sizes in bytes.
REALmemoryBlockStruct* REALNewMemoryBlockOriginal(int32_t size);
void* REALMemoryBlockGetPtr(REALmemoryBlockStruct* block);
int32_t REALMemoryBlockGetSize(REALmemoryBlockStruct* block);

// Movies, files and pictures.
Movie REALgetMovieMovie(REALmovieStruct* movie);
REALfolderItemStruct* REALFolderItemFromFSSpec(const FSSpec* spec);
bool REALFSRefFromFolderItem(REALfolderItemStruct* item, FSRef* ref, HFSUniStr255* name);
REALpictureStruct* REALNewPicture(int32_t width, int32_t height, int32_t depth);
REALpictureStruct* REALBuildPictureFromBuffer(int32_t width, int32_t height, RBPixelType type,
                                              void* buffer, int32_t row_bytes);
REALgraphicsStruct* REALGetPictureGraphics(REALpictureStruct* picture);
void REALPictureClearCache(REALpictureStruct* picture);

/// Two ways to look inside a picture: the older one cannot fail visibly, the newer one asks for a
/// kind of description.
void REALLockPictureDescription(REALpictureStruct* picture, REALpictureDescription* description);
bool REALLockPictureDescription(REALpictureStruct* picture, REALpictureDescription* description,
                                int32_t type);
void REALUnlockPictureDescription(REALpictureStruct* picture);

/// As the newer way; on hosts before 2012 a failed lock leaves the picture locked, so it is
/// unlocked again.
bool REALLockPictureDescriptionX(REALpictureStruct* picture, REALpictureDescription* description,
                                 int32_t type);

}  // namespace krz
