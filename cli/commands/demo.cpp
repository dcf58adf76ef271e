// krz demo: writes the demonstration movie and shows what is in it.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "commands/actions.h"
#include "demo/demo_movie.h"

namespace cli {

namespace {

using toolbox::Bytes;

bool write_all(int descriptor, const Bytes& bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = write(descriptor, bytes.data() + done, bytes.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    done += static_cast<size_t>(count);
  }
  return true;
}

/// Whether the file holds exactly these bytes: the demonstration of an earlier run.
bool holds(const std::string& path, const Bytes& bytes) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (!file) return false;
  Bytes found(bytes.size() + 1);
  found.resize(std::fread(found.data(), 1, found.size(), file));
  std::fclose(file);
  return found == bytes;
}

/// Writes a new file; one that exists is left alone, whatever it is. False after a message.
bool write_new_file(const std::string& path, const Bytes& bytes) {
  const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (descriptor < 0) {
    if (errno == EEXIST) {
      if (holds(path, bytes)) return true;
      report(path + " exists and is another file; name another folder: krz demo DIR");
    } else {
      report(path + ": " + std::strerror(errno) + "; name a folder to write to: krz demo DIR");
    }
    return false;
  }
  const bool written = write_all(descriptor, bytes);
  const int error = errno;
  if (close(descriptor) == 0 && written) return true;
  report(path + ": " + std::strerror(written ? errno : error));
  unlink(path.c_str());
  return false;
}

}  // namespace

int make_demonstration(const Invocation& invocation) {
  const std::string folder = invocation.arguments.empty() ? "." : invocation.arguments.front();
  const std::string path = (folder == "." ? "" : folder + "/") + "krz-demo.mov";
  const toolbox::Result<Bytes> movie = demonstration_movie();
  if (!movie.ok()) {
    report(movie.status().message());
    return kFailed;
  }
  if (!write_new_file(path, movie.value())) return kFailed;

  const Command& info = *find_command("info");
  Invocation inspection;
  inspection.command = &info;
  inspection.arguments = {path};
  return run_program(info.script, "krz info", inspection, inspection.arguments);
}

}  // namespace cli
