' Channel layouts: what a file says, what is set, and what the two properties make of it.
Dim path As String = TestMovie("tone")
Dim m As Movie = OpenMovie(path, True)
Dim t As QTTrackKRZ = m.GetSoundTrackKRZ(1)
Print Shown(TrackChannelLayout(t.TrackHandle))                ' expect: 6619138 0 0
Dim layout As New QTAudioChannelLayoutKRZ
layout.NumberChannelDescriptions = 2
Dim right As New QTAudioChannelDescriptionKRZ
right.ChannelLabel = 2 : right.ChannelFlags = 1 : right.Coordinate(0) = 0.1 : right.Coordinate(2) = -90
' The first place stays Nil, which is a description of zeros.
layout.ChannelDescription(1) = right
t.AudioChannelLayout = layout
Print t.Lasterror, Shown(TrackChannelLayout(t.TrackHandle))   ' expect: 0 0 0 2 0:0 2:1
m.Save
Dim saved As QTTrackKRZ = OpenMovie(path).GetSoundTrackKRZ(1)
Dim read As QTAudioChannelLayoutKRZ = TrackChannelLayout(saved.TrackHandle)
Print Shown(read), read.ChannelDescription(1).Coordinate(0), read.ChannelDescription(1).Coordinate(2)   ' expect: 0 0 2 0:0 2:1 0.10000000149011612 -90
Print Shown(saved.AudioChannelLayout), saved.Lasterror        ' expect: 0 0 0 0
Print Shown(OpenMovie(path).AudioSummaryChannelLayoutKRZ)     ' expect: 0 0 0
Print saved.MediaSoundSampleDescription(1).ChannelCount       ' expect: 2

' Of a hundred descriptions 64 are written; of fewer than none, none.
layout.NumberChannelDescriptions = 100
t.AudioChannelLayout = layout
Print t.Lasterror, TrackChannelLayout(t.TrackHandle).NumberChannelDescriptions   ' expect: 0 64
layout.NumberChannelDescriptions = -5 : layout.ChannelLayoutTag = 65536 : layout.ChannelBitmap = 3
t.AudioChannelLayout = layout
Print t.Lasterror, Shown(TrackChannelLayout(t.TrackHandle))   ' expect: 0 65536 3 0
m.Save
Dim third As QTTrackKRZ = OpenMovie(path).GetSoundTrackKRZ(1)
Print Shown(TrackChannelLayout(third.TrackHandle))            ' expect: 65536 3 0
Print TrackChannelLayout(m.GetVideoTrackKRZ(1).TrackHandle) Is Nil, TrackChannelLayout(0) Is Nil   ' expect: True True

' Damage counts for nothing, and a new layout takes its place beside it.
Dim brokenPath As String = TestMovie("broken-sound")
Dim broken As Movie = OpenMovie(brokenPath, True)
Dim last As QTTrackKRZ = broken.GetTrackIndexKRZ(7)
Print Shown(TrackChannelLayout(last.TrackHandle))             ' expect: 6553601 0 0
layout.ChannelLayoutTag = 6553601
last.AudioChannelLayout = layout
broken.GetTrackIndexKRZ(6).AudioChannelLayout = layout
Print last.Lasterror, broken.GetTrackIndexKRZ(6).Lasterror    ' expect: 0 0
broken.Save
Dim mended As QTTrackKRZ = OpenMovie(brokenPath).GetTrackIndexKRZ(7)
Print Shown(TrackChannelLayout(mended.TrackHandle))           ' expect: 6553601 3 0

Function Shown(layout As QTAudioChannelLayoutKRZ) As String
  Dim text As String = Str(layout.ChannelLayoutTag) + " " + Str(layout.ChannelBitmap) + " " + Str(layout.NumberChannelDescriptions)
  For i As Integer = 0 To layout.NumberChannelDescriptions - 1
    text = text + " " + Str(layout.ChannelDescription(i).ChannelLabel) + ":" + Str(layout.ChannelDescription(i).ChannelFlags)
  Next
  Return text
End Function
