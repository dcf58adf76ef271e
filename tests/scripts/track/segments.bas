' Segments of tracks are taken out, stretched, shown again and moved apart; edits are what changes, and the file follows.
Function EditsOf(t As QTTrackKRZ) As String
  Dim text As String, start As Integer, duration As Integer, mediaStart As Int64, rate As Double
  For i As Integer = 1 To TrackEditCount(t.TrackHandle)
    If TrackEdit(t.TrackHandle, i, start, duration, mediaStart, rate) Then text = text + " " + Str(duration) + "@" + Str(mediaStart)
    If mediaStart >= 0 And rate <> 1 Then text = text + "*" + Str(rate)
  Next
  Return Trim(text)
End Function

Dim path As String = TestMovie("edited")
Dim m As Movie = OpenMovie(path, True)
Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Dim digest As String = SampleDigest(t.TrackHandle)
Print EditsOf(t)                                  ' expect: 300@-1 4800@1200
t.DeleteTrackSegment(600, 1200)
Print EditsOf(t), t.Lasterror, t.Duration         ' expect: 300@-1 300@1200 3300@2700 0 3900
t.InsertEmptyTrackSegment(600, 90)
Print EditsOf(t), t.Lasterror                     ' expect: 300@-1 300@1200 90@-1 3300@2700 0
t.ScaleTrackSegment(690, 600, 1200)
Print EditsOf(t), t.Lasterror                     ' expect: 300@-1 300@1200 90@-1 1200@2700*0.5 2700@3300 0
t.InsertTrackSegment(t, 300, 300, 5000)
Print EditsOf(t), t.Lasterror                     ' expect: 300@-1 300@1200 90@-1 1200@2700*0.5 2700@3300 410@-1 300@1200 0
Print m.Duration                                  ' expect: 5300
m.Save
Dim saved As QTTrackKRZ = OpenMovie(path).GetVideoTrackKRZ(1)
Print EditsOf(saved)                              ' expect: 300@-1 300@1200 90@-1 1200@2700*0.5 2700@3300 410@-1 300@1200
Print SampleDigest(saved.TrackHandle) = digest    ' expect: True

' What cannot be done changes nothing and says why.
t.DeleteTrackSegment(5301, 1)
Print t.Lasterror                                 ' expect: -2015
t.DeleteTrackSegment(0, -1)
Print t.Lasterror                                 ' expect: -2014
t.InsertEmptyTrackSegment(5300, 10)
Print t.Lasterror                                 ' expect: -2015
t.ScaleTrackSegment(0, 0, 10)
Print t.Lasterror                                 ' expect: -2014
t.InsertTrackSegment(t, -1, 10, 0)
Print t.Lasterror                                 ' expect: -2015
t.InsertTrackSegment(Nil, 0, 10, 0)
Print t.Lasterror                                 ' expect: -1
Print m.IsModified                                ' expect: False
Dim none As New QTTrackKRZ
none.DeleteTrackSegment(0, 1)
Print none.Lasterror                              ' expect: -2009
t.InsertTrackSegment(none, 0, 10, 0)
Print t.Lasterror                                 ' expect: -2009
none.ScaleTrackSegment(0, 1, 2)
Print none.Lasterror                              ' expect: -2009
none.InsertEmptyTrackSegment(0, 1)
Print none.Lasterror                              ' expect: -2009

' Sound and pictures are not one another's.
Dim both As Movie = OpenMovie(TestMovie("two-tracks"))
Dim pictures As QTTrackKRZ = both.GetVideoTrackKRZ(1)
pictures.InsertTrackSegment(both.GetSoundTrackKRZ(1), 0, 600, 0)
Print pictures.Lasterror, both.IsModified         ' expect: -2018 False
