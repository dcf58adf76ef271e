#include "library/library.h"

#include "library/date_time.h"
#include "library/folder_item.h"
#include "library/graphics.h"
#include "library/memory_block.h"
#include "library/movie.h"
#include "library/parts.h"
#include "library/picture.h"
#include "library/regex.h"
#include "library/rgb_surface.h"

namespace krz {

void register_library(Registry& registry) {
  register_exception_classes(registry);
  register_memory_block(registry);
  register_folder_item(registry);
  register_movie(registry);
  register_movie_samples(registry);
  register_movie_saves(registry);
  register_movie_sound(registry);
  register_movie_tools(registry);
  register_movie_chapters(registry);
  register_movie_timecode(registry);
  register_audio_layout(registry);
  register_text_parts(registry);
  register_text_search(registry);
  register_text_convert(registry);
  register_value_types(registry);
  register_encodings(registry);
  register_base64(registry);
  register_numbers(registry);
  register_system(registry);
  register_json(registry);
  register_dictionary(registry);
  register_text_input_stream(registry);
  register_text_output_stream(registry);
  register_binary_stream(registry);
  register_date_time(registry);
  register_random(registry);
  register_regex_match(registry);
  register_regex(registry);
  register_picture(registry);
  register_graphics(registry);
  register_rgb_surface(registry);
}

}  // namespace krz
