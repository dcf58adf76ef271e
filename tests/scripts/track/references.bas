' Deleting a reference renumbers those behind it; deleting a track takes the references to it along.
Function ReferencesOf(t As QTTrackKRZ) As String
  Dim text As String, type As String, id As Integer, i As Integer = 1
  While TrackReference(t.TrackHandle, i, type, id)
    text = text + " " + type + Str(id)
    i = i + 1
  Wend
  Return Trim(text)
End Function

Dim path As String = TestMovie("chapters")
Dim m As Movie = OpenMovie(path, True)
Dim video As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Print ReferencesOf(video)             ' expect: chap2
video.DeleteTrackReference("chap", 2)
Print video.Lasterror                 ' expect: -2028
video.DeleteTrackReference("tmcd", 1)
Print video.Lasterror                 ' expect: -2028
video.DeleteTrackReference("chap", 1)
Print video.Lasterror, "[" + ReferencesOf(video) + "]"   ' expect: 0 []
m.Save
Print "[" + ReferencesOf(OpenMovie(path).GetVideoTrackKRZ(1)) + "]"   ' expect: []
m.Close
UndoSave(path)
Print ReferencesOf(OpenMovie(path).GetVideoTrackKRZ(1))   ' expect: chap2
video.DeleteTrackReference("chap", 1)
Print video.Lasterror                 ' expect: -2009
Dim none As New QTTrackKRZ
none.DeleteTrackReference("chap", 1)
Print none.Lasterror                  ' expect: -2009

Dim other As Movie = OpenMovie(TestMovie("chapters"), True)
RemoveTrack(other.GetTrackIndexKRZ(2).TrackHandle)
other.Save
Print other.TrackCountKRZ, "[" + ReferencesOf(other.GetVideoTrackKRZ(1)) + "]"   ' expect: 1 []
