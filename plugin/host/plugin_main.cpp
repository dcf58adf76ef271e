// The module's entry: takes the host's resolver, announces itself and registers the classes.
#include <initializer_list>

#include "host/entries.h"
#include "host/registration.h"
#include "host/resolver.h"

namespace krz {

REALResolver gResolver = nullptr;
double rbversion = 0.0;
int32_t REALenterMoviesResult = 0;

void MyREALRegisterClass(REALclassDefinition* definition) {
  definition->data_size = rounded_data_size(definition->data_size);
  REALRegisterClass(definition);
}

void MyREALRegisterClassExtension(REALclassDefinition* definition) {
  REALRegisterClassExtension(definition);
}

void PluginEntry() {
  // While the host merely loads the module there is no movie to prepare for.
  if (REALinRuntime()) REALenterMoviesResult = REALenterMovies();

  for (REALclassDefinition* definition :
       {&QTUserDataClass, &QTChapterDataClass, &QTTimeCodeCreationParametersClass,
        &QTSampleDescriptionClass, &QTVideoSampleDescriptionClass, &QTSoundSampleDescriptionClass,
        &QTSpriteSampleDescriptionClass, &QTMusicSampleDescriptionClass,
        &QTThreeDeeSampleDescriptionClass, &QTFlashSampleDescriptionClass,
        &QTTextSampleDescriptionClass, &QTTrackClass, &QTChapterTrackClass, &QTTimeCodeClass,
        &QTMetaDataClass, &QTMetaDataItemClass}) {
    MyREALRegisterClass(definition);
  }
  MyREALRegisterClassExtension(&movieClass);
}

}  // namespace krz

/// Called once by the host when it loads the module, with a function that knows the host's services
/// by name.
extern "C" __attribute__((visibility("default"))) void REALPluginMain(REALResolver resolver) {
  krz::gResolver = resolver;

  // Every host that loads modules has this entry.
  using RegisterVersion = void (*)(int32_t);
  reinterpret_cast<RegisterVersion>(resolver("RegisterPluginVersion"))(kPluginInterfaceVersion);

  using HostVersion = double (*)();
  const auto host_version = reinterpret_cast<HostVersion>(resolver("REALGetRBVersion"));
  krz::rbversion = host_version ? host_version() : 0.0;

  krz::PluginEntry();
}
