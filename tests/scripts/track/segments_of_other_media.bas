' A segment goes to a track of another media, and the samples that it shows go with it.
Function TextAt(t As QTTrackKRZ, time As Integer) As String
  Dim data As MemoryBlock, description As MemoryBlock
  Dim duration As Integer, index As Integer, count As Integer, flags As Integer
  Dim start As Integer, length As Integer, rate As Double, mediaStart As Int64 = -1
  For i As Integer = 1 To TrackEditCount(t.TrackHandle)
    If TrackEdit(t.TrackHandle, i, start, length, mediaStart, rate) And time < start + length Then Exit For
  Next
  If mediaStart < 0 Then Return "-"
  Dim mediaTime As Integer = Integer(mediaStart) + time - start    ' the scales are the same
  If Not t.GetMediaSample(data, mediaTime, duration, description, index, 1, count, flags) Then Return "error " + Str(t.Lasterror)
  data.LittleEndian = False
  Return data.StringValue(2, data.UInt16Value(0))
End Function

Dim copy As FolderItem = GetFolderItem(TestMovie("chapters") + ".copy.mov")
GetFolderItem(TestMovie("chapters")).CopyTo(copy)
Dim source As QTTrackKRZ = OpenMovie(TestMovie("chapters")).GetTrackIndexKRZ(2)
Dim m As Movie = OpenMovie(copy.Path, True)
Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(2)
source.InsertTrackSegment(t, 600, 1200, 300)
Print source.Lasterror, t.Duration, t.MediaSampleCount                     ' expect: 0 7200 5
Print TextAt(t, 0), TextAt(t, 300), TextAt(t, 899), TextAt(t, 900), TextAt(t, 1499), TextAt(t, 1500), TextAt(t, 2400)   ' expect: One One One Two Two One Two

' Tracks of other kinds of media do not mix.
source.InsertTrackSegment(m.GetTrackIndexKRZ(1), 0, 600, 0)
Print source.Lasterror, m.GetTrackIndexKRZ(1).Duration                     ' expect: -2018 6000
source.InsertTrackSegment(t, 6001, 1, 0)
Print source.Lasterror                                                     ' expect: -2015
source.InsertTrackSegment(Nil, 0, 1, 0)
Print source.Lasterror                                                     ' expect: -1

' Saved in its own file the movie refers to the other one; saved as a new file it needs it no longer.
m.Save
m.Close
m = OpenMovie(copy.Path)
Print TextAt(m.GetTrackIndexKRZ(2), 900), m.GetTrackIndexKRZ(2).MediaSampleCount   ' expect: Two 5
Dim whole As FolderItem = GetFolderItem(copy.Path + ".whole.mov")
m.SaveAs(whole.Path)
m.Close
copy.Delete
m = OpenMovie(whole.Path)
Print TextAt(m.GetTrackIndexKRZ(2), 900), "[" + MovieProblems(m) + "]"     ' expect: Two []
m.Close
whole.Delete
