// How a track is shown and heard: volume, size, layer, matrix and whether it is enabled.
#include "host/fixed_point.h"
#include "host/instance_data.h"
#include "track/track.h"

namespace krz {
namespace {

Track track_of(REALobject object) { return to_reference<Track>(track_data(object).track); }

struct Dimensions {
  Fixed width = 0;
  Fixed height = 0;
};

Dimensions dimensions_of(REALobject object) {
  Dimensions dimensions;
  if (const Track track = track_of(object)) {
    GetTrackDimensions(track, &dimensions.width, &dimensions.height);
  }
  return dimensions;
}

}  // namespace

int32_t rbTrackVolume(REALobject object) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = 0;
  // A nil track reaches the toolbox, which answers for it. The 8.8 value is handed over as it is.
  return GetTrackVolume(to_reference<Track>(data.track));
}

// The setter of "Width" and "Height" too: assigning to them sets the volume, in 8.8 as it is given,
// and leaves the dimensions alone.
void rbSetTrackVolume(REALobject object, int32_t value) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = data.track ? 0 : -1;
  if (data.track) SetTrackVolume(to_reference<Track>(data.track), static_cast<SInt16>(value));
}

void rbSetTrackEnabled(REALobject object, bool value) {
  if (const Track track = track_of(object)) SetTrackEnabled(track, value);
}

void rbSetTrackLayer(REALobject object, int32_t value) {
  if (const Track track = track_of(object)) SetTrackLayer(track, static_cast<SInt16>(value));
}

void rbSetTrackDimensions(REALobject object, double width, double height) {
  if (const Track track = track_of(object)) {
    SetTrackDimensions(track, FixedFromDouble(width), FixedFromDouble(height));
  }
}

bool rbTrackEnabled(REALobject object) {
  const Track track = track_of(object);
  return track && GetTrackEnabled(track);
}

int32_t rbTrackWidth(REALobject object) { return dimensions_of(object).width >> 16; }

int32_t rbTrackHeight(REALobject object) { return dimensions_of(object).height >> 16; }

int32_t rbTrackLayer(REALobject object) {
  const Track track = track_of(object);
  return track ? GetTrackLayer(track) : 0;
}

// Maps the track's own rectangle onto one of the movie.
void rbSetTrackMatrix(REALobject object, int32_t x, int32_t y, int32_t w, int32_t h) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return;
  const Track track = to_reference<Track>(data.track);
  Fixed width = 0;
  Fixed height = 0;
  GetTrackDimensions(track, &width, &height);
  // Sums are made in 32 bits; places have 16, what does not fit is cut off.
  const auto place = [](uint32_t value) { return Long2Fix(static_cast<SInt16>(value)); };
  const auto ux = static_cast<uint32_t>(x), uy = static_cast<uint32_t>(y);
  const Fixed left = place(ux), right = place(ux + static_cast<uint32_t>(w));
  const Fixed top = place(uy), bottom = place(uy + static_cast<uint32_t>(h));
  const FixedPoint source[4] = {{0, 0}, {width, 0}, {width, height}, {0, height}};
  const FixedPoint destination[4] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
  MatrixRecord matrix = {};
  QuadToQuadMatrix(source, destination, &matrix);
  SetTrackMatrix(track, &matrix);
  data.lasterror = GetMoviesError();
}

// Raw values, row by row: the third of each row is 2.30, the others 16.16.
void rbSetTrackRawMatrix(REALobject object, int32_t matrix00, int32_t matrix01, int32_t matrix02,
                         int32_t matrix10, int32_t matrix11, int32_t matrix12, int32_t matrix20,
                         int32_t matrix21, int32_t matrix22) {
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return;
  const MatrixRecord matrix = {{{matrix00, matrix01, matrix02},
                                {matrix10, matrix11, matrix12},
                                {matrix20, matrix21, matrix22}}};
  SetTrackMatrix(to_reference<Track>(data.track), &matrix);
  data.lasterror = GetMoviesError();
}

void rbGetTrackRawMatrix(REALobject object, int32_t* matrix00, int32_t* matrix01, int32_t* matrix02,
                         int32_t* matrix10, int32_t* matrix11, int32_t* matrix12, int32_t* matrix20,
                         int32_t* matrix21, int32_t* matrix22) {
  int32_t* const entries[3][3] = {{matrix00, matrix01, matrix02},
                                  {matrix10, matrix11, matrix12},
                                  {matrix20, matrix21, matrix22}};
  for (auto& row : entries) {
    for (int32_t* entry : row) *entry = 0;
  }
  QTTrackClassData& data = track_data(object);
  data.lasterror = -1;
  if (!data.track) return;
  MatrixRecord matrix = {};
  GetTrackMatrix(to_reference<Track>(data.track), &matrix);
  data.lasterror = GetMoviesError();
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      *entries[row][column] = matrix.matrix[row][column];
    }
  }
}

}  // namespace krz
