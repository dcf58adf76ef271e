// How a track is shown and heard: volume, size, layer, matrix and whether it is enabled.
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
