// The built-in commands' programs, made from the scripts of this folder when krz is built.
#pragma once

#include <span>
#include <string_view>

namespace cli {

struct NamedScript {
  const char* file;  // "info.bas"
  const char* text;
};

/// All that are declared below.
std::span<const NamedScript> scripts();

/// The bytecode of one of them, known by its address; empty for any other text.
std::string_view bytecode_of(const char* script);

extern const char kInfoScript[];
extern const char kInfoJSONScript[];
extern const char kMapScript[];
extern const char kReplScript[];
extern const char kTrackListScript[];
extern const char kTrackSetScript[];
extern const char kTrackCloneScript[];
extern const char kTrackDeleteScript[];
extern const char kEditListScript[];
extern const char kEditCutScript[];
extern const char kEditKeepScript[];
extern const char kEditInsertScript[];
extern const char kEditInsertEmptyScript[];
extern const char kEditScaleScript[];
extern const char kRefsShowScript[];
extern const char kRefsCheckScript[];
extern const char kChaptersListScript[];
extern const char kChaptersListJSONScript[];
extern const char kChaptersExportScript[];
extern const char kChaptersImportScript[];
extern const char kChaptersSetScript[];
extern const char kChaptersRemoveScript[];
extern const char kChaptersConvertScript[];
extern const char kChaptersCheckScript[];
extern const char kRefsPruneScript[];
extern const char kSaveScript[];
extern const char kVerifyScript[];
extern const char kUndoScript[];
extern const char kCommitScript[];
extern const char kDiffScript[];
extern const char kMetaListScript[];
extern const char kMetaGetScript[];
extern const char kMetaSetScript[];
extern const char kMetaAddScript[];
extern const char kMetaRemoveScript[];
extern const char kMetaCopyScript[];
extern const char kMetaWhereScript[];
extern const char kMetaExportScript[];
extern const char kMetaImportScript[];
extern const char kUserdataListScript[];
extern const char kUserdataGetScript[];
extern const char kUserdataAddScript[];
extern const char kUserdataRemoveScript[];
extern const char kUserdataExportScript[];
extern const char kUserdataImportScript[];
extern const char kSamplesListScript[];
extern const char kSamplesExtractScript[];
extern const char kDescribeScript[];
extern const char kSoundShowScript[];
extern const char kSoundSetScript[];
extern const char kSoundLevelsScript[];
extern const char kApertureShowScript[];
extern const char kApertureSetScript[];
extern const char kApertureGenerateScript[];
extern const char kApertureRemoveScript[];
extern const char kTimecodeShowScript[];
extern const char kTimecodeListScript[];
extern const char kTimecodeAddScript[];
extern const char kTimecodeRemoveScript[];
extern const char kTimecodeConvertScript[];
extern const char kClipGetScript[];
extern const char kClipSetScript[];
extern const char kClipClearScript[];

}  // namespace cli
