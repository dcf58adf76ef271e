' Track objects in arrays, variants and ByRef parameters keep their movie as long as one of them lives.
Dim before As Integer = LiveReferences
Dim tracks() As QTTrackKRZ

Sub Collect(m As Movie, list() As QTTrackKRZ)
  For i As Integer = 1 To m.TrackCountKRZ
    list.Append m.GetTrackIndexKRZ(i)
  Next
End Sub
Collect OpenMovie(TestMovie("lookup")), tracks
Collect OpenMovie(TestMovie("two-tracks")), tracks
Dim ids As String
For Each t As QTTrackKRZ In tracks
  ids = ids + " " + Str(t.TrackID) + t.MediaType
Next
Print "ids" + ids                            ' expect: ids 70vide 3soun 2000vide 5soun 9text 1vide 2soun

Dim v As Variant = tracks(2)
Print v IsA QTTrackKRZ, QTTrackKRZ(v).TrackID, v IsA QTChapterTrackKRZ   ' expect: True 2000 False
Try
  Print QTChapterTrackKRZ(tracks(2)).TrackID
Catch e As IllegalCastException
  Print "a plain track"                      ' expect: a plain track
End Try
Try
  Print QTChapterTrackKRZ(v).TrackID
Catch e As IllegalCastException
  Print "a plain track too"                  ' expect: a plain track too
End Try

Sub NextOfMovie(ByRef t As QTTrackKRZ)
  t = t.Movie.GetTrackIndexKRZ(4)
End Sub
Dim one As QTTrackKRZ = tracks(0)
NextOfMovie one
Print one.TrackID, tracks(0).TrackID         ' expect: 5 70
NextOfMovie tracks(0)
Print tracks(0).TrackID                      ' expect: 5

ReDim tracks(-1)
one = Nil
Print QTTrackKRZ(v).TrackID, LiveReferences > before   ' expect: 2000 True
v = Nil
Print LiveReferences = before                ' expect: True
