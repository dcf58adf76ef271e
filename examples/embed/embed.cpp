// Runs a script on a movie, then asks the plug-in about the same movie without one.
#include <krz/runtime.h>
#include <krz/script.h>
#include <krz/value.h>

#include <iostream>

constexpr char kScript[] = R"(
Dim m As Movie = OpenMovie(Args(0))
Print m.TrackCountKRZ, "tracks,", m.Duration / m.TimeScale, "seconds"
)";

int main(int argc, char** argv) {
  if (argc != 2) return std::cerr << "usage: embed MOVIE\n", 2;
  krz::RuntimeOptions options;
  options.arguments = {argv[1]};
  krz::Runtime runtime(options);
  const std::string problem = runtime.load_module(krz::Runtime::default_module_path());
  if (!problem.empty()) return std::cerr << problem << '\n', 1;

  std::vector<krz::Diagnostic> diagnostics;
  const auto script = krz::Script::compile(runtime, kScript, "embedded", diagnostics);
  for (const krz::Diagnostic& one : diagnostics) std::cerr << one.text();
  if (!script || script->run() != 0) return 1;
  runtime.flush_output();

  // A failed call fails whatever is asked of it, so one look at the end is enough.
  const krz::Value movie = krz::call(runtime, "OpenMovie", {argv[1]});
  const krz::Value track = movie.call("GetVideoTrackKRZ", {1});
  const krz::Value samples = track.get("MediaSampleCount");
  if (!samples.ok()) return std::cerr << samples.error() << '\n', 1;
  std::cout << "track " << track.get("TrackID").integer() << " has " << samples.integer()
            << " pictures of " << track.get("Width").real() << " x " << track.get("Height").real()
            << '\n';
}
