// The built module, loaded as a host loads it.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "plugin/fake_host.h"

namespace {

using fake_host::host;

const char* const kModulePath = KRZ_BINARY_DIR "/lib/krz/krz-movie.so";

/// The module, loaded afresh: nothing is left of an earlier load.
class LoadedModule {
 public:
  LoadedModule() {
    EXPECT_EQ(dlopen(kModulePath, RTLD_NOW | RTLD_NOLOAD), nullptr)
        << "an earlier load is still there";
    library_ = dlopen(kModulePath, RTLD_NOW | RTLD_LOCAL);
    if (!library_) {
      ADD_FAILURE() << dlerror();
      return;
    }
    main_ = reinterpret_cast<void (*)(REALResolver)>(dlsym(library_, "REALPluginMain"));
    if (main_) main_(fake_host::resolve);
    EXPECT_NE(main_, nullptr);
  }
  ~LoadedModule() {
    if (library_) dlclose(library_);
  }
  void main_again() { main_(fake_host::resolve); }

 private:
  void* library_ = nullptr;
  void (*main_)(REALResolver) = nullptr;
};

const std::vector<std::string> kClassesInOrder = {
    "QTUserDataKRZ",
    "QTChapterDataKRZ",
    "QTTimeCodeCreationParametersKRZ",
    "QTSampleDescriptionKRZ",
    "QTVideoSampleDescriptionKRZ",
    "QTSoundSampleDescriptionKRZ",
    "QTSpriteSampleDescriptionKRZ",
    "QTMusicSampleDescriptionKRZ",
    "QTThreeDeeSampleDescriptionKRZ",
    "QTFlashSampleDescriptionKRZ",
    "QTTextSampleDescriptionKRZ",
    "QTTrackKRZ",
    "QTChapterTrackKRZ",
    "QTTimeCodeKRZ",
    "QTMetaDataKRZ",
    "QTMetaDataItemKRZ",
};

int32_t track_count(REALmovieStruct* movie) {
  const MethodEntry& row = fake_host::method("movie", "TrackCountKRZ as integer");
  return fake_host::function<int32_t(REALmovieStruct*)>(row.function)(movie);
}

/// Makes objects of all classes, reads a movie and every property, and lets go of everything.
void use_the_module() {
  const bool has_classes = !host().classes.empty();
  if (!host().extensions.empty()) {
    EXPECT_EQ(track_count(nullptr), -1);
    REALmovieStruct* movie = fake_host::make_movie(0);
    EXPECT_EQ(track_count(movie), -1);
    fake_host::unlock(fake_host::as_object(movie));
  }
  for (const std::string& name : kClassesInOrder) {
    if (!has_classes) break;
    const REALobject object = fake_host::make_object(name.c_str());
    const REALclassDefinition& one = fake_host::definition(name);
    for (int32_t i = 0; i < one.property_count; ++i) {
      const PropertyEntry& property = one.properties[i];
      if (property.getter == kDirectField || std::string_view(property.type) != "String") continue;
      const auto getter = fake_host::function<REALstring(REALobject, intptr_t)>(property.getter);
      const REALstring text = getter(object, property.param);
      // The font that a new chapter has by its number; everything else is not there yet.
      if (std::string_view(property.name) != "FontName") {
        EXPECT_EQ(text, nullptr) << name << "." << property.name;
      }
      if (text) fake_host::unlock(text);
    }
    for (int32_t i = 0; i < one.shared_method_count; ++i) {
      const REALstring text = fake_host::function<REALstring()>(one.shared_methods[i].function)();
      if (text) fake_host::unlock(text);
    }
    fake_host::unlock(object);
  }
}

TEST(Module, AnnouncesItselfAndRegistersSuperclassesFirst) {
  fake_host::start();
  host().enter_movies_answer = 1;
  LoadedModule module;

  std::vector<std::string> expected = {"RegisterPluginVersion 9", "REALenterMovies"};
  for (const std::string& name : kClassesInOrder) expected.push_back("class " + name);
  expected.push_back("extension movie");
  EXPECT_EQ(host().calls, expected);
  ASSERT_GE(host().asked.size(), 2u);
  EXPECT_EQ(host().asked[0], "RegisterPluginVersion");
  EXPECT_EQ(host().asked[1], "REALGetRBVersion");

  for (const REALclassDefinition* one : host().classes) {
    SCOPED_TRACE(one->name);
    EXPECT_EQ(one->version, 9);
    EXPECT_EQ(one->data_size % 16, 0);
    EXPECT_EQ(one->data_size == 0, one->superclass != nullptr);
    EXPECT_EQ(one->events, nullptr);
    EXPECT_EQ(one->interfaces, nullptr);
    EXPECT_EQ(one->shared_properties, nullptr);
    EXPECT_EQ(one->flags, std::string_view(one->name) == "QTChapterDataKRZ" ? 4u : 0u);
  }
  EXPECT_EQ(host().extensions[0]->data_size, 0);
}

TEST(Module, RoundsASizeOnlyOnce) {
  fake_host::start();
  LoadedModule module;
  std::vector<int32_t> sizes;
  for (const REALclassDefinition* one : host().classes) sizes.push_back(one->data_size);
  host().classes.clear();
  module.main_again();
  for (size_t i = 0; i < sizes.size(); ++i) EXPECT_EQ(host().classes[i]->data_size, sizes[i]);
}

TEST(Module, PreparesMoviesOnlyWhenAProgramRuns) {
  fake_host::start();
  host().in_runtime = false;
  LoadedModule module;
  EXPECT_EQ(fake_host::times_asked("REALenterMovies"), 0);
  EXPECT_EQ(host().classes.size(), kClassesInOrder.size());
}

TEST(Module, AsksForAMissingEntryAgainAndForAFoundOneNever) {
  fake_host::start();
  host().withheld = {"getMovieMovie"};
  LoadedModule module;
  EXPECT_EQ(fake_host::times_asked("getMovieMovie"), 0) << "looked up before it was needed";

  REALmovieStruct* movie = fake_host::make_movie(0);
  EXPECT_EQ(track_count(movie), -1);
  EXPECT_EQ(track_count(movie), -1);
  EXPECT_EQ(fake_host::times_asked("getMovieMovie"), 2);
  host().withheld.clear();
  track_count(movie);
  track_count(movie);
  EXPECT_EQ(fake_host::times_asked("getMovieMovie"), 3);
  fake_host::unlock(fake_host::as_object(movie));
}

TEST(Module, AnswersOnEveryHostThatLacksAnEntry) {
  for (const double version : {0.0, 2012.0, 2015.0}) {
    for (const std::string& entry : fake_host::entry_names()) {
      if (entry == "RegisterPluginVersion") continue;  // no host is without it
      SCOPED_TRACE(entry + " withheld");
      fake_host::start();
      host().version = version;
      host().withheld = {entry};
      LoadedModule module;
      use_the_module();
      fake_host::sweep();
    }
  }
}

TEST(Module, AnswersOnAHostThatHasNextToNothing) {
  fake_host::start();
  for (const std::string& entry : fake_host::entry_names()) host().withheld.insert(entry);
  host().withheld.erase("RegisterPluginVersion");
  {
    LoadedModule module;
    EXPECT_EQ(host().calls, std::vector<std::string>{"RegisterPluginVersion 9"});
  }
  host().withheld.erase("PluginRegisterClass");
  host().withheld.erase("PluginRegisterClassExtension");
  LoadedModule module;
  use_the_module();
  fake_host::sweep();
}

TEST(Module, LeavesNothingAliveOnANewHost) {
  fake_host::start();
  LoadedModule module;
  use_the_module();
  EXPECT_EQ(fake_host::live_objects(), 0);
  EXPECT_EQ(fake_host::live_strings(), 0);
  EXPECT_EQ(fake_host::live_string_data(), 0);
}

}  // namespace
