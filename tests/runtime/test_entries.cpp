// The host services by name, called as a module calls them: through the resolver alone.
#include <dlfcn.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

#include "entries/entries.h"
#include "host_test.h"

namespace krz {
namespace {

constexpr char kEntryNames[] =
    "RegisterPluginVersion REALGetRBVersion PluginRegisterClass PluginRegisterClassExtension "
    "REALinRuntime REALenterMovies getMovieMovie PluginNewInstance pluginObjectType "
    "REALLockObject REALUnlockObject REALBuildString REALLockString REALUnlockString "
    "REALGetStringEncoding REALSetStringEncoding REALConvertString PluginGetStringData "
    "PluginDisposeStringData StringGetCString REALLoadGlobalMethod newMemoryBlock "
    "memoryBlockGetPtr memoryBlockGetSize RuntimeUBound RuntimeDirectReadObjectArray "
    "RuntimeRaiseException REALGetPropValueInt REALGetPropValueBool REALSetPropValueString "
    "REALLoadObjectMethod FolderItemFromFSSpec REALFSRefFromFolderItem newPicture "
    "REALBuildPictureFromBuffer pluginPictureGraphicsGetter REALPictureClearCache "
    "lockPictureDescription REALLockPictureDescription unlockPictureDescription ";

template <class Result, class... Arguments>
Result entry(const char* name, Arguments... arguments) {
  auto* const function = reinterpret_cast<Result (*)(Arguments...)>(resolve_entry(name));
  EXPECT_NE(function, nullptr) << name;
  return function(arguments...);
}

using EntriesTest = HostTest;

TEST_F(EntriesTest, EveryServiceIsThereAndAnythingElseIsNot) {
  std::istringstream names(kEntryNames);
  int count = 0;
  for (std::string name; names >> name; ++count) {
    EXPECT_NE(resolve_entry(name.c_str()), nullptr) << name;
  }
  EXPECT_EQ(count, 40);
  for (const char* name : {"", "REALLockobject", "RuntimeGraphicsDrawPicture", "Newest"}) {
    EXPECT_EQ(resolve_entry(name), nullptr) << name;
  }
  EXPECT_EQ(resolve_entry(nullptr), nullptr);
}

TEST_F(EntriesTest, OptionsDecideVersionRuntimeAndWhatIsWithheld) {
  EXPECT_EQ(entry<double>("REALGetRBVersion"), 2013.0);
  EXPECT_TRUE(entry<bool>("REALinRuntime"));
  RuntimeOptions options;
  options.host_version = 2011.5;
  options.in_runtime = false;
  options.withheld_entries = {"PluginGetStringData", "REALLockObject"};
  start(std::move(options));
  EXPECT_EQ(entry<double>("REALGetRBVersion"), 2011.5);
  EXPECT_FALSE(entry<bool>("REALinRuntime"));
  EXPECT_EQ(resolve_entry("PluginGetStringData"), nullptr);
  EXPECT_EQ(resolve_entry("REALLockObject"), nullptr);
  EXPECT_NE(resolve_entry("REALUnlockObject"), nullptr);
}

TEST_F(EntriesTest, StringsAreBuiltMarkedConvertedAndHandedOut) {
  const auto string = entry<REALstring>("REALBuildString", "\xA9nam+", int32_t{4});
  EXPECT_EQ(entry<uint32_t>("REALGetStringEncoding", string), kEncodingUnknown);
  entry<void>("REALSetStringEncoding", string, encoding::kMacRoman);
  EXPECT_EQ(entry<uint32_t>("REALGetStringEncoding", string), encoding::kMacRoman);
  const auto wide = entry<REALstring>("REALConvertString", string, encoding::kUtf16);
  EXPECT_EQ(string_bytes(wide), std::string_view("\xA9\0n\0a\0m\0", 8));

  REALstringData data{};
  EXPECT_TRUE(entry<bool>("PluginGetStringData", string, encoding::kUtf8, &data));
  EXPECT_EQ(data.length, 5);
  EXPECT_EQ(data.encoding, encoding::kUtf8);
  EXPECT_EQ(std::string_view(static_cast<char*>(data.data), 9),
            std::string_view("\xC2\xA9nam\0\0\0\0", 9));
  entry<void>("PluginDisposeStringData", &data);
  EXPECT_TRUE(entry<bool>("PluginGetStringData", string, kEncodingUnknown, &data));
  EXPECT_EQ(data.length, 4);
  EXPECT_EQ(data.encoding, kEncodingUnknown);
  entry<void>("PluginDisposeStringData", &data);
  EXPECT_FALSE(entry<bool>("PluginGetStringData", REALstring{nullptr}, encoding::kUtf8, &data));

  // The older way to the same bytes.
  EXPECT_EQ(std::string_view(entry<const char*>("StringGetCString", string)), "\xA9nam");
  const auto length = reinterpret_cast<int32_t (*)(REALstring)>(entry<REALfunction>(
      "REALLoadGlobalMethod", static_cast<void*>(nullptr), "LenB( s as string ) as integer"));
  ASSERT_NE(length, nullptr);
  EXPECT_EQ(length(wide), 8);
  EXPECT_EQ(length(nullptr), 0);

  EXPECT_EQ(entry<REALstring>("REALBuildString", "x", int32_t{-1}), nullptr);
  EXPECT_EQ(entry<REALstring>("REALConvertString", REALstring{nullptr}, encoding::kUtf8), nullptr);
  entry<void>("REALLockString", string);
  entry<void>("REALUnlockString", string);
  entry<void>("REALUnlockString", string);
  entry<void>("REALUnlockString", wide);
}

TEST_F(EntriesTest, ObjectsAreMadeByNameAndTheirPropertiesFoundByName) {
  EXPECT_EQ(entry<void*>("pluginObjectType", "NoSuchClass"), nullptr);
  EXPECT_NE(entry<void*>("pluginObjectType", "ioexception"), nullptr);
  EXPECT_EQ(entry<REALobject>("PluginNewInstance", "NoSuchClass"), nullptr);
  const auto exception = entry<REALobject>("PluginNewInstance", "IOException");
  const OwnedString message("no such file");
  EXPECT_TRUE(entry<bool>("REALSetPropValueString", exception, "message",
                          static_cast<REALstring>(message)));
  EXPECT_FALSE(entry<bool>("REALSetPropValueString", exception, "ErrorNumber",
                           static_cast<REALstring>(message)));
  int32_t number = 77;
  EXPECT_TRUE(entry<bool>("REALGetPropValueInt", exception, "ErrorNumber", &number));
  EXPECT_EQ(number, 0);
  uint8_t flag = 9;
  EXPECT_FALSE(entry<bool>("REALGetPropValueBool", exception, "ErrorNumber", &flag));
  EXPECT_EQ(flag, 9);
  entry<void>("RuntimeRaiseException", exception);
  entry<void>("REALUnlockObject", exception);
  EXPECT_EQ(take_message(), "IOException: no such file");

  const auto block = entry<REALmemoryBlockStruct*>("newMemoryBlock", int32_t{8});
  const auto object = reinterpret_cast<REALobject>(block);
  EXPECT_EQ(entry<int32_t>("memoryBlockGetSize", block), 8);
  auto* const bytes = entry<uint8_t*>("memoryBlockGetPtr", block);
  EXPECT_EQ(bytes[7], 0);
  bytes[7] = 200;
  EXPECT_TRUE(entry<bool>("REALGetPropValueBool", object, "LittleEndian", &flag));
  EXPECT_EQ(flag, 1);
  const auto get_byte = reinterpret_cast<int32_t (*)(REALobject, int32_t)>(
      entry<REALfunction>("REALLoadObjectMethod", object, "byte(Index as Integer) as Integer"));
  ASSERT_NE(get_byte, nullptr);
  EXPECT_EQ(get_byte(object, 7), 200);
  for (const char* wrong : {"Byte(x as string) as integer", "Byte as integer", "Byte(", "Bit"}) {
    EXPECT_EQ(entry<REALfunction>("REALLoadObjectMethod", object, wrong), nullptr) << wrong;
  }
  entry<void>("REALUnlockObject", object);
  EXPECT_EQ(entry<REALmemoryBlockStruct*>("newMemoryBlock", int32_t{-1}), nullptr);
}

TEST_F(EntriesTest, ArrayElementsComeOutLocked) {
  ArrayObject* const array = new_array(registry().type_named("MemoryBlock"), {1});
  const REALobject block = create("MemoryBlock");
  array->elements[1].object = block;
  auto* const handle = reinterpret_cast<REALobjectArrayStruct*>(array);
  EXPECT_EQ(entry<int32_t>("RuntimeUBound", handle), 1);
  EXPECT_EQ(entry<REALobject>("RuntimeDirectReadObjectArray", handle, int32_t{1}), block);
  EXPECT_EQ(block->locks, 2);
  unlock_object(block);
  for (const int32_t index : {-1, 0, 2, INT32_MAX}) {
    EXPECT_EQ(entry<REALobject>("RuntimeDirectReadObjectArray", handle, index), nullptr) << index;
  }
  EXPECT_EQ(entry<int32_t>("RuntimeUBound", reinterpret_cast<REALobjectArrayStruct*>(block)), -1);
  unlock_object(array);
}

class ModuleTest : public HostTest {
 protected:
  static std::string small_module(int version) {
    return KRZ_BINARY_DIR "/tests/small_module_" + std::to_string(version) + ".so";
  }
};

TEST_F(ModuleTest, ALoadedModulesClassesWorkInOneRuntimeAfterAnother) {
  for (const bool withheld : {false, true}) {
    RuntimeOptions options;
    if (withheld) options.withheld_entries = {"REALBuildString"};
    start(std::move(options));
    ASSERT_EQ(runtime_->load_module(small_module(9)), "");
    const REALobject counter = create("testcounter");
    ASSERT_NE(counter, nullptr);
    const MethodInfo& add = *counter->class_info->find_methods("Add")[0];
    EXPECT_EQ(add.signature.parameters[0].default_value.integer, 1);
    const Slot five = integer_slot(5);
    Slot total;
    call_method(add, counter, &five, &total);
    call_method(add, counter, &five, &total);
    EXPECT_EQ(total.integer, 10);
    call_method(*counter->class_info->find_methods("Text")[0], counter, nullptr, &total);
    EXPECT_EQ(OwnedString(total.string).bytes(), withheld ? "" : "counting");
    unlock_object(counter);
  }
}

TEST_F(ModuleTest, AnotherInterfaceVersionIsRefused) {
  const std::string error = runtime_->load_module(small_module(8));
  EXPECT_NE(error.find("module_8.so\" speaks interface version 8, this runtime speaks 9; install"),
            std::string::npos)
      << error;
  EXPECT_EQ(registry().find_class("TestCounter"), nullptr);
}

TEST_F(ModuleTest, AModuleThatFindsNoServicesRegistersNothing) {
  RuntimeOptions options;
  options.withheld_entries = {"PluginRegisterClass"};
  start(std::move(options));
  EXPECT_EQ(runtime_->load_module(small_module(9)), "");
  EXPECT_EQ(registry().find_class("TestCounter"), nullptr);
}

TEST_F(ModuleTest, WhatCannotBeLoadedIsExplained) {
  EXPECT_EQ(
      runtime_->load_module("/nowhere/x.so"),
      "module \"/nowhere/x.so\" does not exist; install krz again, or set KRZ_MODULE to the path "
      "of a module that fits");
  const std::string text_file = ::testing::TempDir() + "krz-no-module.so";
  std::ofstream(text_file) << "this is no shared object";
  EXPECT_NE(runtime_->load_module(text_file).find("\" cannot be loaded: "), std::string::npos);
  unlink(text_file.c_str());
  Dl_info c_library{};
  ASSERT_NE(dladdr(reinterpret_cast<void*>(&dlopen), &c_library), 0);
  const std::string error = runtime_->load_module(c_library.dli_fname);
  EXPECT_NE(error.find("has no REALPluginMain"), std::string::npos) << error;
}

TEST_F(ModuleTest, ThePathOfTheModuleCanBeChosen) {
  setenv("KRZ_MODULE", "/elsewhere/module.so", 1);
  EXPECT_EQ(Runtime::default_module_path(), "/elsewhere/module.so");
  unsetenv("KRZ_MODULE");
  EXPECT_TRUE(Runtime::default_module_path().ends_with("/krz/krz-movie.so"));
}

}  // namespace
}  // namespace krz
