#include "drawing_speed.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "file/movie_builder.h"

namespace bench {

namespace {

// The least of a few rounds of each.
constexpr char kMaskScript[] = R"(
Dim t As QTTrackKRZ = OpenMovie(Args(0)).GetVideoTrackKRZ(1)
Dim mask As New Picture(4096, 4096, 32)
mask.Graphics.ForeColor = &c000000
For i As Integer = 0 To 7
  mask.Graphics.FillOval(i * 512, i * 400, 900, 1200)
Next
Dim setting As Double = 1e12, getting As Double = 1e12
For round As Integer = 1 To 5
  Dim begun As Double = Microseconds
  t.TrackClipMask = mask
  Dim between As Double = Microseconds
  Dim back As Picture = t.TrackClipMask
  Dim done As Double = Microseconds
  If back Is Nil Then Quit(1)
  setting = Min(setting, between - begun)
  getting = Min(getting, done - between)
Next
Print setting / 1000, getting / 1000
)";

/// The two numbers that a command prints.
void read_numbers(const std::string& command, double& first, double& second) {
  FILE* const pipe = popen(command.c_str(), "r");
  const bool found = pipe != nullptr && std::fscanf(pipe, "%lf %lf", &first, &second) == 2;
  if ((pipe != nullptr && pclose(pipe) != 0) || !found) {
    std::fprintf(stderr, "%s did not say what it took\n", command.c_str());
    std::exit(1);
  }
}

}  // namespace

DrawingSpeed measure_drawing(const std::filesystem::path& folder,
                             const std::filesystem::path& bin) {
  toolbox::BuiltMovie movie;
  movie.tracks = {toolbox::video_track(4096, 4096, 2, 60)};
  const std::filesystem::path path = folder / "large.mov", script = folder / "mask.bas";
  if (const toolbox::Status written = write_movie(movie, path.string()); !written.ok()) {
    std::fprintf(stderr, "%s\n", written.message().c_str());
    std::exit(1);
  }
  std::ofstream(script) << kMaskScript;
  DrawingSpeed speed;
  read_numbers((bin / "krz").string() + " run " + script.string() + " " + path.string(),
               speed.set_mask_ms, speed.get_mask_ms);
  read_numbers((bin / "build_pictures").string(), speed.build_picture_ms, speed.copy_ms);
  return speed;
}

}  // namespace bench
