// Writes the seeds that fuzzing of movie files starts from: every test movie, plain and compressed.
#include <cstdio>
#include <filesystem>
#include <string>

#include "test_movies.h"

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: fuzz_seeds FOLDER\n");
    return 2;
  }
  std::error_code error;
  std::filesystem::create_directories(arguments[1], error);
  for (const char* name : toolbox::kTestMovies) {
    for (const bool compressed : {false, true}) {
      toolbox::BuiltMovie movie = toolbox::test_movie(name);
      movie.compressed = compressed;
      for (toolbox::BuiltTrack& track : movie.tracks) {
        track.sample_size =
            track.sample_size > 0 ? 1 : 0;  // the media data teaches a fuzzer nothing
        track.sample_count = std::min(track.sample_count, 64u);
      }
      const std::string path =
          std::string(arguments[1]) + '/' + name + (compressed ? "-compressed.mov" : ".mov");
      const toolbox::Status status = write_movie(movie, path);
      if (!status.ok()) {
        std::fprintf(stderr, "%s\n", status.message().c_str());
        return 1;
      }
    }
  }
  return 0;
}
