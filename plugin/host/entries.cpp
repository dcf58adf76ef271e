// Host services for classes, objects, arrays, memory blocks, movies and files.
#include "host/entries.h"

#include "host/resolver.h"

namespace krz {

void REALRegisterClass(REALclassDefinition* definition) {
  static constinit HostEntry<void(REALclassDefinition*)> pRegisterClass("PluginRegisterClass");
  pRegisterClass(definition);
}

void REALRegisterClassExtension(REALclassDefinition* definition) {
  static constinit HostEntry<void(REALclassDefinition*)> pRegisterClassExtension(
      "PluginRegisterClassExtension");
  pRegisterClassExtension(definition);
}

bool REALinRuntime() {
  static constinit HostEntry<bool()> pInRuntime("REALinRuntime");
  return pInRuntime();
}

int32_t REALenterMovies() {
  static constinit HostEntry<int32_t()> pEnterMovies("REALenterMovies");
  return pEnterMovies();
}

REALobject REALnewInstance(const char* class_name) {
  static constinit HostEntry<REALobject(const char*)> pNewInstance("PluginNewInstance");
  return pNewInstance(class_name);
}

void* REALGetClassRef(const char* class_name) {
  static constinit HostEntry<void*(const char*)> pGetClassRef("pluginObjectType");
  return pGetClassRef(class_name);
}

void REALLockObject(REALobject object) {
  static constinit HostEntry<void(REALobject)> pLockObject("REALLockObject");
  pLockObject(object);
}

void REALUnlockObject(REALobject object) {
  static constinit HostEntry<void(REALobject)> pUnlockObject("REALUnlockObject");
  pUnlockObject(object);
}

bool REALGetPropValueInt32(REALobject object, const char* property, int32_t* value) {
  static constinit HostEntry<bool(REALobject, const char*, int32_t*)> pGetPropValueInt32(
      "REALGetPropValueInt");
  return pGetPropValueInt32(object, property, value);
}

bool REALGetPropValueUInt8(REALobject object, const char* property, uint8_t* value) {
  static constinit HostEntry<bool(REALobject, const char*, uint8_t*)> pGetPropValueUInt8(
      "REALGetPropValueBool");
  return pGetPropValueUInt8(object, property, value);
}

bool REALSetPropValueString(REALobject object, const char* property, REALstring value) {
  static constinit HostEntry<bool(REALobject, const char*, REALstring)> pSetPropValueString(
      "REALSetPropValueString");
  return pSetPropValueString(object, property, value);
}

void REALRaiseException(REALobject exception) {
  static constinit HostEntry<void(REALobject)> pRaiseException("RuntimeRaiseException");
  pRaiseException(exception);
}

REALfunction REALLoadObjectMethod(REALobject object, const char* declaration) {
  static constinit HostEntry<REALfunction(REALobject, const char*)> pLoadObjectMethod(
      "REALLoadObjectMethod");
  return pLoadObjectMethod(object, declaration);
}

REALfunction REALLoadFrameworkMethod(const char* declaration) {
  // The first argument would name a module of the host; the global ones have none.
  static constinit HostEntry<REALfunction(void*, const char*)> pLoadGlobalMethod(
      "REALLoadGlobalMethod");
  return pLoadGlobalMethod(nullptr, declaration);
}

int32_t REALGetArrayUBound(REALobjectArrayStruct* array) {
  static constinit HostEntry<int32_t(REALobjectArrayStruct*)> pGetArrayUBound("RuntimeUBound");
  return pGetArrayUBound(array);
}

REALobject REALGetArrayObject(REALobjectArrayStruct* array, int32_t index) {
  static constinit HostEntry<REALobject(REALobjectArrayStruct*, int32_t)> pGetArrayObject(
      "RuntimeDirectReadObjectArray");
  return pGetArrayObject(array, index);
}

REALmemoryBlockStruct* REALNewMemoryBlockOriginal(int32_t size) {
  static constinit HostEntry<REALmemoryBlockStruct*(int32_t)> pNewMemoryBlock("newMemoryBlock");
  return pNewMemoryBlock(size);
}

void* REALMemoryBlockGetPtr(REALmemoryBlockStruct* block) {
  static constinit HostEntry<void*(REALmemoryBlockStruct*)> pMemoryBlockGetPtr("memoryBlockGetPtr");
  return pMemoryBlockGetPtr(block);
}

int32_t REALMemoryBlockGetSize(REALmemoryBlockStruct* block) {
  static constinit HostEntry<int32_t(REALmemoryBlockStruct*)> pMemoryBlockGetSize(
      "memoryBlockGetSize");
  return pMemoryBlockGetSize(block);
}

Movie REALgetMovieMovie(REALmovieStruct* movie) {
  static constinit HostEntry<Movie(REALmovieStruct*)> pGetMovieMovie("getMovieMovie");
  return pGetMovieMovie(movie);
}

REALfolderItemStruct* REALFolderItemFromFSSpec(const FSSpec* spec) {
  static constinit HostEntry<REALfolderItemStruct*(const FSSpec*)> pFolderItemFromFSSpec(
      "FolderItemFromFSSpec");
  return pFolderItemFromFSSpec(spec);
}

bool REALFSRefFromFolderItem(REALfolderItemStruct* item, FSRef* ref, HFSUniStr255* name) {
  static constinit HostEntry<bool(REALfolderItemStruct*, FSRef*, HFSUniStr255*)>
      pFSRefFromFolderItem("REALFSRefFromFolderItem");
  return pFSRefFromFolderItem(item, ref, name);
}

}  // namespace krz
