#include "library/png_file.h"

#include <fcntl.h>
#include <png.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "library/io_error.h"
#include "library/late_library.h"
#include "library/new_file.h"
#include "object/exceptions.h"
#include "object/memory_budget.h"

namespace krz {

namespace {

/// The functions of libpng, which is loaded by the first picture that is read or written.
struct Libpng {
  decltype(::png_image_begin_read_from_memory)* begin_read;
  decltype(::png_image_finish_read)* finish_read;
  decltype(::png_image_write_to_stdio)* write;
  decltype(::png_image_free)* free;
};

bool load(Libpng& functions) {
  LateLibrary library("libpng16.so.16");
  library.look_up(functions.begin_read, "png_image_begin_read_from_memory");
  library.look_up(functions.finish_read, "png_image_finish_read");
  library.look_up(functions.write, "png_image_write_to_stdio");
  library.look_up(functions.free, "png_image_free");
  return library.complete();
}

const Libpng* libpng() {
  static Libpng functions;
  static const bool kLoaded = load(functions);
  if (kLoaded) return &functions;
  raise_exception("UnsupportedFormatException",
                  "PNG files need the library libpng (libpng16.so.16), which cannot be loaded; "
                  "install it (Debian: libpng16-16)");
  return nullptr;
}

// Longer files are no pictures that anybody means to open.
constexpr int64_t kMostFileBytes = int64_t{1} << 28;
constexpr int64_t kMostPixels = int64_t{1} << 28;

// No deflated byte stands for more.
constexpr int64_t kMostExpansion = 1032;

void raise_unreadable(const std::string& path, const std::string& reason) {
  raise_exception("UnsupportedFormatException",
                  "cannot read the picture \"" + path + "\": " + reason +
                      "; give a whole PNG file of at most 32767 x 32767 pixels");
}

struct FreeBlock {
  void operator()(void* block) const { memory_budget::free_block(block); }
};

/// The bytes of a file.
struct FileBytes {
  std::unique_ptr<uint8_t, FreeBlock> bytes;
  size_t size = 0;
};

bool read_file(const std::string& path, FileBytes& file) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) {
    raise_io_error("open", path, errno);
    return false;
  }
  struct stat status {};
  int error = 0;
  if (::fstat(descriptor, &status) != 0) error = errno;
  if (error == 0 && S_ISDIR(status.st_mode)) error = EISDIR;
  const bool bounded = S_ISREG(status.st_mode) && status.st_size <= kMostFileBytes;
  if (error == 0 && bounded) {
    const auto wanted = static_cast<size_t>(status.st_size);
    file.bytes.reset(static_cast<uint8_t*>(memory_budget::take_block(std::malloc(wanted + 1))));
    while (file.bytes && file.size < wanted) {
      const ssize_t count = ::read(descriptor, file.bytes.get() + file.size, wanted - file.size);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) error = errno;
      if (count <= 0) break;
      file.size += static_cast<size_t>(count);
    }
  }
  ::close(descriptor);
  if (error != 0) {
    raise_io_error("read", path, error);
  } else if (!bounded) {
    raise_unreadable(path, "it is no file, or longer than 256 MiB");
  } else if (!file.bytes) {
    raise_exception("OutOfMemoryException", "there is no memory to read \"" + path + "\"");
  } else {
    return true;
  }
  return false;
}

/// What the head of a PNG file says; the library believes it before it has seen a pixel.
struct Head {
  uint32_t width;
  uint32_t height;
  uint32_t bits_per_pixel;
};

bool read_head(const FileBytes& file, Head& head) {
  constexpr std::string_view kBegin("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16);
  if (file.size < kBegin.size() + 10 || std::memcmp(file.bytes.get(), kBegin.data(), 16) != 0)
    return false;
  const uint8_t* const bytes = file.bytes.get() + kBegin.size();
  const auto number = [](const uint8_t* at) {
    return uint32_t{at[0]} << 24 | uint32_t{at[1]} << 16 | uint32_t{at[2]} << 8 | at[3];
  };
  // By colour type: grey, -, red green blue, palette, grey with alpha, -, all four.
  constexpr uint8_t kComponents[] = {1, 0, 3, 1, 2, 0, 4};
  if (bytes[9] >= std::size(kComponents)) return false;
  head = {number(bytes), number(bytes + 4), uint32_t{bytes[8]} * kComponents[bytes[9]]};
  return head.bits_per_pixel != 0;
}

/// What speaks against making a picture of that head; empty when nothing does.
std::string objection(const Head& head, size_t file_size) {
  constexpr auto kMost = static_cast<uint32_t>(kMostPicturePixels);
  const std::string size = std::to_string(head.width) + " x " + std::to_string(head.height);
  if (head.width == 0 || head.height == 0 || head.width > kMost || head.height > kMost)
    return "its size is " + size + " pixels";
  if (int64_t{head.width} * head.height > kMostPixels)
    return size + " pixels are more than 268 million";
  const int64_t needed = (int64_t{head.width} * head.bits_per_pixel + 7) / 8 * head.height;
  if (needed / kMostExpansion > static_cast<int64_t>(file_size))
    return "its " + std::to_string(file_size) + " bytes cannot hold " + size + " pixels";
  return {};
}

uint8_t multiplied(uint32_t part, uint32_t alpha) {
  return static_cast<uint8_t>((part * alpha + 127) / 255);
}
uint8_t divided(uint32_t part, uint32_t alpha) {
  if (part >= alpha) return 255;
  return static_cast<uint8_t>((part * 255 + alpha / 2) / alpha);
}

// The library's name for the order of our bytes.
png_uint_32 format_of(const PicturePixels& pixels) {
  return pixels.places().alpha == 0 ? PNG_FORMAT_ARGB : PNG_FORMAT_BGRA;
}

/// Calls `change(part, alpha)` for every colour part of a row that is not opaque.
template <class Change>
void change_parts(uint8_t* row, int32_t width, PixelPlaces at, Change change) {
  for (int32_t x = 0; x < width; ++x, row += 4) {
    const uint8_t alpha = row[at.alpha];
    if (alpha == 255) continue;
    for (const uint8_t place : {at.red, at.green, at.blue})
      row[place] = alpha == 0 ? uint8_t{0} : change(row[place], alpha);
  }
}

ssize_t write_part(void* file, const char* bytes, size_t count) {
  return static_cast<NewFile*>(file)->write({bytes, count}) ? static_cast<ssize_t>(count) : 0;
}

}  // namespace

std::unique_ptr<PicturePixels> read_png(const std::string& path, const PixelMaker& make_pixels) {
  FileBytes file;
  Head head{};
  if (!read_file(path, file)) return nullptr;
  if (!read_head(file, head)) {
    raise_unreadable(path, "it does not begin as a PNG file");
    return nullptr;
  }
  if (const std::string wrong = objection(head, file.size); !wrong.empty()) {
    raise_unreadable(path, wrong);
    return nullptr;
  }
  const Libpng* const png = libpng();
  if (!png) return nullptr;
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  std::unique_ptr<PicturePixels> pixels;
  if (png->begin_read(&image, file.bytes.get(), file.size)) {
    const bool has_alpha = (image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
    pixels =
        make_pixels(static_cast<int32_t>(head.width), static_cast<int32_t>(head.height), has_alpha);
    if (!pixels) {
      png->free(&image);
      raise_exception("OutOfMemoryException",
                      "there is no memory for the picture \"" + path + "\"");
      return nullptr;
    }
    image.format = format_of(*pixels);
    if (png->finish_read(&image, nullptr, pixels->row(0), 0, nullptr)) {
      for (int32_t y = 0; has_alpha && y < pixels->height(); ++y)
        change_parts(pixels->row(y), pixels->width(), pixels->places(), multiplied);
      return pixels;
    }
  }
  raise_unreadable(path, image.message);
  png->free(&image);
  return nullptr;
}

void write_png(const PicturePixels& pixels, const std::string& path) {
  const Libpng* const png = libpng();
  if (!png) return;
  // The library wants colours that are not multiplied by their alpha, and nothing in skipped bytes.
  const size_t size = size_t(pixels.height()) * pixels.bytes_per_row();
  const std::unique_ptr<uint8_t, FreeBlock> copy(
      static_cast<uint8_t*>(memory_budget::take_block(std::malloc(size))));
  if (!copy) {
    return raise_exception("OutOfMemoryException",
                           "there is no memory to write the picture \"" + path + "\"");
  }
  NewFile file;
  if (!file.create(path, /*overwrite=*/true)) return;
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(pixels.width());
  image.height = static_cast<png_uint_32>(pixels.height());
  const PixelPlaces at = pixels.places();
  if (pixels.has_alpha()) {
    std::memcpy(copy.get(), pixels.row(0), size);
    image.format = format_of(pixels);
    for (int32_t y = 0; y < pixels.height(); ++y)
      change_parts(copy.get() + size_t(y) * pixels.bytes_per_row(), pixels.width(), at, divided);
  } else {
    image.format = PNG_FORMAT_RGB;
    uint8_t* to = copy.get();
    for (int32_t y = 0; y < pixels.height(); ++y) {
      const uint8_t* from = pixels.row(y);
      for (int32_t x = 0; x < pixels.width(); ++x, from += 4) {
        *to++ = from[at.red];
        *to++ = from[at.green];
        *to++ = from[at.blue];
      }
    }
  }
  FILE* const stream = ::fopencookie(&file, "w", {nullptr, &write_part, nullptr, nullptr});
  if (!stream) return raise_io_error("write", path, errno);
  const bool written = png->write(&image, stream, 0, copy.get(), 0, nullptr) != 0;
  const bool flushed = std::fclose(stream) == 0;
  if (written && flushed) {
    file.finish();
  } else {  // the first exception stays: that of the file, where it was the reason
    raise_exception("IOException",
                    "cannot write the picture \"" + path + "\": " + std::string(image.message));
  }
}

}  // namespace krz
