#include "movie/new_media.h"

#include "atoms/atom_writer.h"
#include "atoms/data_references.h"
#include "atoms/timecode.h"
#include "movie/media_data.h"
#include "movie/movie.h"

namespace toolbox {

namespace {

constexpr uint16_t kDitherCopy = 0x0040;

template <class Atom>
Bytes whole(const Atom& atom) {
  AtomWriter writer;
  writer.atom(atom);
  return writer.take();
}

Bytes video_header(bool is_classic) {
  VideoMediaHeaderAtom header;
  header.flags = 1;
  if (is_classic) {
    header.graphics_mode = kDitherCopy;
    header.op_color = {0x8000, 0x8000, 0x8000};
  }
  return whole(header);
}

void write_timecode_display(AtomWriter& writer) {
  TimecodeInfoAtom display;
  display.tail = {0};  // no font's name
  const auto tmcd = writer.begin(four_cc("tmcd"));
  writer.atom(display);
  writer.end(tmcd);
}

Bytes generic_header(FourCC type) {
  AtomWriter writer;
  const auto gmhd = writer.begin(four_cc("gmhd"));
  writer.atom(GenericMediaInfoAtom());
  if (type == four_cc("text")) {
    const auto text = writer.begin(four_cc("text"));
    AtomMatrix matrix = kIdentityMatrix;
    writer("matrix", matrix);
    writer.end(text);
  } else if (type == four_cc("tmcd")) {
    write_timecode_display(writer);
  }
  writer.end(gmhd);
  return writer.take();
}

Bytes data_handler(FourCC reference_type) {
  HandlerAtom handler;
  handler.component_type = four_cc("dhlr");
  handler.subtype = reference_type;
  handler.set_name("Data Handler");
  return whole(handler);
}

const char* handler_name(FourCC type) {
  switch (type) {
    case four_cc("vide"):
      return "Video Media Handler";
    case four_cc("soun"):
      return "Sound Media Handler";
    case four_cc("text"):
      return "Text Media Handler";
    case four_cc("tmcd"):
      return "Time Code Media Handler";
    default:
      return "Media Handler";
  }
}

void set_info_atoms(Media& media, bool is_classic, FourCC reference_type) {
  AtomChanges& atoms = media.change_info_atoms();
  switch (media.type()) {
    case four_cc("vide"):
      atoms.replace(four_cc("vmhd"), video_header(is_classic));
      break;
    case four_cc("soun"):
      atoms.replace(four_cc("smhd"), whole(SoundMediaHeaderAtom()));
      break;
    default:
      // Also in ISO files: readers take it, and it keeps how text and timecode are displayed.
      atoms.replace(four_cc("gmhd"), generic_header(media.type()));
  }
  if (is_classic) atoms.replace(four_cc("hdlr"), data_handler(reference_type));
}

Bytes reference_entry(const GivenDataReference& given) {
  DataReferenceEntry entry;
  entry.data.assign(given.data.begin(), given.data.end());
  AtomWriter writer;
  writer.atom(given.type, entry);
  return writer.take();
}

}  // namespace

Result<Media*> add_media(Track& track, FourCC type, uint32_t time_scale,
                         const std::optional<GivenDataReference>& reference) {
  if (track.media() != nullptr) {
    return Status(invalidTrack,
                  "track " + std::to_string(track.id()) + " has media already; dispose it first");
  }
  if (type == 0) return Status(cantFindHandler, "a media needs a type");
  if (reference && reference->type == 0) {
    return Status(invalidDataRef, "a data reference needs a type");
  }
  const bool classic = is_classic(track.movie());
  std::unique_ptr<Media> media = Media::create(track, type, time_scale);
  HandlerAtom& handler = media->change_handler();
  handler.component_type = classic ? four_cc("mhlr") : 0;
  handler.set_name(handler_name(type));
  TRY_ASSIGN(std::vector<Bytes> * references, media->change_data_references());
  references->push_back(reference ? reference_entry(*reference) : self_reference(track.movie()));
  const FourCC own_type = classic ? four_cc("alis") : four_cc("url ");
  set_info_atoms(*media, classic, reference ? reference->type : own_type);
  Media* made = media.get();
  track.set_media(std::move(media));
  return made;
}

}  // namespace toolbox
