// The class TextInputStream: reads a file line by line, or what is left of it at once.
#include "library/stream.h"
#include "registry/tables.h"

namespace krz {

namespace {

REALclassDefinition g_class;

BufferedFile* file_of(REALobject stream) { return open_file(stream, g_class); }

// A mark of UTF-8 at the beginning is no part of the text.
REALobject opened(REALobject stream) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  BufferedFile* const file = stream ? file_of(stream) : nullptr;
  if (file && file->ahead().starts_with(kMark)) file->skip(kMark.size());
  return stream;
}

REALobject open_item(REALfolderItemStruct* item) {
  return opened(open_stream(g_class, item, BufferedFile::Mode::kRead));
}
REALobject open_path(REALstring path) {
  return opened(open_stream(g_class, string_path(path), BufferedFile::Mode::kRead));
}

bool append_bounded(std::string& text, std::string_view piece, const char* what) {
  if (text.size() + piece.size() <= kMaxReadBytes) {
    text.append(piece);
    return true;
  }
  raise_exception(
      "OutOfMemoryException",
      std::string(what) + " is longer than 256 MiB; read it in pieces with BinaryStream");
  return false;
}

// A line ends with a line feed, a carriage return, or both.
REALstring read_line(REALobject stream) {
  BufferedFile* const file = file_of(stream);
  if (!file) return nullptr;
  std::string line;
  for (std::string_view ahead = file->ahead(); !ahead.empty(); ahead = file->ahead()) {
    const size_t end = ahead.find_first_of("\r\n");
    if (!append_bounded(line, ahead.substr(0, end), "a line")) return nullptr;
    if (end == std::string_view::npos) {
      file->skip(ahead.size());
      continue;
    }
    const bool returned = ahead[end] == '\r';
    file->skip(end + 1);
    if (returned && file->ahead().starts_with('\n')) file->skip(1);
    break;
  }
  return make_string(line);
}

REALstring read_all(REALobject stream) {
  BufferedFile* const file = file_of(stream);
  if (!file) return nullptr;
  std::string text;
  for (std::string_view ahead = file->ahead(); !ahead.empty(); ahead = file->ahead()) {
    if (!append_bounded(text, ahead, "the text")) return nullptr;
    file->skip(ahead.size());
  }
  return make_string(text);
}

bool end_of_file(REALobject stream) {
  BufferedFile* const file = file_of(stream);
  return !file || file->ahead().empty();
}

void close(REALobject stream) { close_stream(stream, g_class); }
void destroy(REALobject stream) { destroy_stream(stream, g_class); }

MethodEntry g_shared_methods[] = {
    KRZ_SHARED(open_item, "Open(file as FolderItem) as TextInputStream"),
    KRZ_SHARED(open_path, "Open(path as string) as TextInputStream"),
};

MethodEntry g_methods[] = {
    KRZ_METHOD(read_line, "ReadLine() as string"),
    KRZ_METHOD(read_all, "ReadAll() as string"),
    KRZ_METHOD(end_of_file, "EndOfFile as boolean"),
    KRZ_METHOD(close, "Close()"),
};

}  // namespace

void register_text_input_stream(Registry& registry) {
  g_class = class_of<StreamData>("TextInputStream");
  g_class.destructor = reinterpret_cast<REALfunction>(&destroy);
  set_shared_methods(g_class, g_shared_methods);
  set_methods(g_class, g_methods);
  registry.register_class(g_class);
}

}  // namespace krz
