// The parts of the library, and what they share when they describe their classes.
#pragma once

#include <cstddef>

#include "registry/registry.h"

namespace krz {

void register_movie_samples(Registry& registry);
void register_movie_saves(Registry& registry);
void register_movie_chapters(Registry& registry);
void register_movie_sound(Registry& registry);
void register_movie_tools(Registry& registry);
void register_movie_timecode(Registry& registry);
void register_exception_classes(Registry& registry);
void register_audio_layout(Registry& registry);
void register_text_parts(Registry& registry);
void register_text_search(Registry& registry);
void register_text_convert(Registry& registry);
void register_encodings(Registry& registry);
void register_base64(Registry& registry);
void register_numbers(Registry& registry);
void register_system(Registry& registry);
void register_json(Registry& registry);
void register_dictionary(Registry& registry);
void register_text_input_stream(Registry& registry);
void register_text_output_stream(Registry& registry);
void register_binary_stream(Registry& registry);
void register_value_types(Registry& registry);
void register_random(Registry& registry);

/// A definition with no members yet.
inline REALclassDefinition class_without_data(const char* name, const char* superclass = nullptr) {
  REALclassDefinition definition{};
  definition.version = kPluginInterfaceVersion;
  definition.name = name;
  definition.superclass = superclass;
  return definition;
}

/// A definition whose instance data is one `Data`.
template <class Data>
REALclassDefinition class_of(const char* name) {
  REALclassDefinition definition = class_without_data(name);
  definition.data_size = sizeof(Data);
  return definition;
}

template <size_t kCount>
void set_properties(REALclassDefinition& definition, PropertyEntry (&table)[kCount]) {
  definition.properties = table;
  definition.property_count = kCount;
}
template <size_t kCount>
void set_methods(REALclassDefinition& definition, MethodEntry (&table)[kCount]) {
  definition.methods = table;
  definition.method_count = kCount;
}
template <size_t kCount>
void set_shared_methods(REALclassDefinition& definition, MethodEntry (&table)[kCount]) {
  definition.shared_methods = table;
  definition.shared_method_count = kCount;
}

/// The instance data that a definition declares, inside an object.
template <class Data>
Data& data_in(REALobject object, const REALclassDefinition& definition) {
  return *reinterpret_cast<Data*>(reinterpret_cast<char*>(object) + definition.host_slot);
}

}  // namespace krz
