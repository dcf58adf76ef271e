#include "file/zlib.h"

#include <dlfcn.h>
#include <zlib.h>  // for the stream's layout; the functions are looked up when needed

#include <algorithm>

namespace toolbox {

namespace {

struct Zlib {
  decltype(&::inflateInit_) inflate_init = nullptr;
  decltype(&::inflate) inflate = nullptr;
  decltype(&::inflateEnd) inflate_end = nullptr;
  decltype(&::compress2) compress = nullptr;
  decltype(&::compressBound) compress_bound = nullptr;

  bool complete() const {
    return inflate_init && inflate && inflate_end && compress && compress_bound;
  }
};

Zlib load_zlib() {
  Zlib zlib;
  void* library = ::dlopen("libz.so.1", RTLD_NOW | RTLD_LOCAL);  // stays loaded
  if (!library) return zlib;
  const auto look_up = [library](auto& function, const char* name) {
    function =
        reinterpret_cast<std::remove_reference_t<decltype(function)>>(::dlsym(library, name));
  };
  look_up(zlib.inflate_init, "inflateInit_");
  look_up(zlib.inflate, "inflate");
  look_up(zlib.inflate_end, "inflateEnd");
  look_up(zlib.compress, "compress2");
  look_up(zlib.compress_bound, "compressBound");
  return zlib;
}

Result<const Zlib*> zlib() {
  static const Zlib kZlib = load_zlib();
  if (kZlib.complete()) return &kZlib;
  return Status(featureUnsupported,
                "the movie atom is compressed, and the zlib library (libz.so.1) cannot be loaded; "
                "install it (Debian: zlib1g)");
}

constexpr uint64_t kPiece = 64 * 1024;

/// A stream that is ended whichever way the function is left.
struct Inflation {
  const Zlib& functions;
  z_stream stream{};
  bool begun = false;

  explicit Inflation(const Zlib& zlib) : functions(zlib) {
    begun = functions.inflate_init(&stream, ZLIB_VERSION, sizeof stream) == Z_OK;
  }
  ~Inflation() {
    if (begun) functions.inflate_end(&stream);
  }
  Inflation(const Inflation&) = delete;
  Inflation& operator=(const Inflation&) = delete;
};

}  // namespace

Result<Bytes> zlib_unpack(ByteRange packed, uint64_t unpacked_size) {
  TRY_ASSIGN(const Zlib* functions, zlib());
  Inflation inflation(*functions);
  if (!inflation.begun) return Status(memFullErr, "there is no memory to unpack the movie atom");
  z_stream& stream = inflation.stream;

  const uint64_t most = unpacked_size + 1;  // one byte more, to see a stream that is too long
  Bytes unpacked(std::min(most, kPiece));
  Bytes input;
  uint64_t read = 0;
  uint64_t written = 0;
  for (int result = Z_OK; result != Z_STREAM_END;) {
    if (stream.avail_in == 0 && read < packed.size) {
      input.resize(std::min(kPiece, packed.size - read));
      TRY(packed.source->read(packed.offset + read, input));
      read += input.size();
      stream.next_in = input.data();
      stream.avail_in = static_cast<uInt>(input.size());
    }
    if (written == unpacked.size()) {
      if (written == most) break;
      unpacked.resize(std::min(most, unpacked.size() * 2));
    }
    stream.next_out = unpacked.data() + written;
    const auto room = static_cast<uInt>(std::min<uint64_t>(unpacked.size() - written, 1u << 30));
    stream.avail_out = room;
    result = functions->inflate(&stream, Z_NO_FLUSH);
    written += room - stream.avail_out;
    if (result == Z_MEM_ERROR)
      return Status(memFullErr, "there is no memory to unpack the movie atom");
    if (result != Z_OK && result != Z_STREAM_END) {
      return Status(badPublicMovieAtom, "the packed bytes are damaged or cut short; " +
                                            std::to_string(written) + " bytes could be unpacked");
    }
  }
  if (written != unpacked_size) {
    return Status(badPublicMovieAtom,
                  "states an unpacked length of " + std::to_string(unpacked_size) +
                      " bytes, but unpacks to " +
                      (written > unpacked_size ? std::string("more") : std::to_string(written)));
  }
  unpacked.resize(unpacked_size);
  return unpacked;
}

Result<Bytes> zlib_pack(ByteView bytes) {
  TRY_ASSIGN(const Zlib* functions, zlib());
  uLongf size = functions->compress_bound(bytes.size());
  Bytes packed(size);
  if (functions->compress(packed.data(), &size, bytes.data(), bytes.size(), Z_BEST_COMPRESSION) !=
      Z_OK) {
    return Status(memFullErr, "there is no memory to pack the movie atom");
  }
  packed.resize(size);
  return packed;
}

}  // namespace toolbox
