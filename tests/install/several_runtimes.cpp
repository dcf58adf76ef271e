// Runtimes one after another in one process: each loads the module anew, runs a script, calls
// methods, and leaves nothing behind. usage: several_runtimes MOVIE
#include <Toolbox/Toolbox.h>
#include <krz/runtime.h>
#include <krz/script.h>
#include <krz/value.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  for (int round = 1; round <= 3; ++round) {
    std::string printed;
    krz::RuntimeOptions options;
    options.arguments = {argv[1], std::to_string(round)};
    options.standard_output = [&printed](std::string_view text) { printed += text; };
    krz::Runtime runtime(options);
    const std::string problem = runtime.load_module(krz::Runtime::default_module_path());
    if (!problem.empty()) return std::puts(problem.c_str()), 1;

    std::vector<krz::Diagnostic> diagnostics;
    const auto script = krz::Script::compile(
        runtime, "Print Args(1), OpenMovie(Args(0)).TrackCountKRZ", "embedded", diagnostics);
    if (!script || script->run() != 0) return 1;
    const krz::Value track =
        krz::call(runtime, "OpenMovie", {argv[1]}).call("GetVideoTrackKRZ", {1});
    std::printf("%s%s %d\n", printed.c_str(), track.type_name().c_str(),
                track.get("TrackID").integer());
  }
  std::printf("%u references\n", static_cast<unsigned>(ToolboxLiveReferences()));
}
