// The least that a list of samples costs: reads the movie atom of a file, decodes the sample tables
// of every track and prints a line for each sample. It trusts the file in everything.
#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

char output[1 << 16];
size_t used = 0;

void flush() {
  if (write(STDOUT_FILENO, output, used) < 0) exit(1);
  used = 0;
}

void put(uint64_t value, char behind) {
  char digits[24];
  int count = 0;
  do {
    digits[count++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value);
  while (count) output[used++] = digits[--count];
  output[used++] = behind;
}

uint32_t number(const uint8_t* at) {
  return uint32_t{at[0]} << 24 | uint32_t{at[1]} << 16 | uint32_t{at[2]} << 8 | at[3];
}

struct Tables {
  const uint8_t* times = nullptr;
  const uint8_t* offsets = nullptr;
  const uint8_t* sync = nullptr;
  const uint8_t* sizes = nullptr;
  const uint8_t* chunks = nullptr;
};

void print(const Tables& tables) {
  const uint32_t count = number(tables.sizes + 8);
  const uint32_t one_size = number(tables.sizes + 4);
  const uint8_t* time_row = tables.times + 8;
  const uint8_t* offset_row = tables.offsets ? tables.offsets + 8 : nullptr;
  const uint8_t* sync_row = tables.sync ? tables.sync + 8 : nullptr;
  uint32_t time_left = number(time_row);
  uint32_t offset_left = offset_row ? number(offset_row) : 0;
  uint64_t time = 0;
  for (uint32_t i = 0; i < count; ++i) {
    while (time_left == 0) time_left = number(time_row += 8);
    while (offset_row && offset_left == 0) offset_left = number(offset_row += 8);
    const bool is_sync = !sync_row || number(sync_row) == i + 1;
    if (sync_row && is_sync) sync_row += 4;
    put(i + 1, ',');
    put(time + (offset_row ? number(offset_row + 4) : 0), ',');
    put(number(time_row + 4), ',');
    put(one_size ? one_size : number(tables.sizes + 12 + size_t{4} * i), ',');
    put(is_sync, ',');
    put(number(tables.chunks + 16), '\n');
    time += number(time_row + 4);
    --time_left;
    if (offset_row) --offset_left;
    if (used > sizeof output - 200) flush();
  }
}

void walk(const uint8_t* at, const uint8_t* end, Tables& tables) {
  for (; end - at >= 8; at += number(at)) {
    const uint8_t* const body = at + 8;
    const auto is = [&](const char* type) { return memcmp(at + 4, type, 4) == 0; };
    if (is("trak") || is("mdia") || is("minf") || is("stbl")) walk(body, at + number(at), tables);
    if (is("stts")) tables.times = body;
    if (is("ctts")) tables.offsets = body;
    if (is("stss")) tables.sync = body;
    if (is("stsz")) tables.sizes = body;
    if (is("stsc")) tables.chunks = body;
    if (is("trak")) {
      print(tables);
      tables = Tables();
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int file = argc > 1 ? open(argv[1], O_RDONLY) : -1;
  uint8_t head[16];
  for (off_t at = 0; pread(file, head, sizeof head, at) >= 8;) {
    uint64_t size = number(head);
    if (size == 1) size = uint64_t{number(head + 8)} << 32 | number(head + 12);
    if (memcmp(head + 4, "moov", 4) == 0) {
      auto* const atom = static_cast<uint8_t*>(malloc(size));
      if (!atom || pread(file, atom, size, at) != static_cast<ssize_t>(size)) return 1;
      Tables tables;
      walk(atom + 8, atom + size, tables);
      flush();
      return 0;
    }
    if (size < 8) break;
    at += static_cast<off_t>(size);
  }
  return 1;
}
