' Segments of a movie: every track follows.
Function EditsOf(m As Movie) As String
  Dim text As String, start As Integer, duration As Integer, mediaStart As Int64, rate As Double
  For n As Integer = 1 To m.TrackCountKRZ
    Dim handle As Integer = m.GetTrackIndexKRZ(n).TrackHandle
    If n > 1 Then text = text + " /"
    For i As Integer = 1 To TrackEditCount(handle)
      If TrackEdit(handle, i, start, duration, mediaStart, rate) Then text = text + " " + Str(duration) + "@" + Str(mediaStart)
    Next
  Next
  Return Trim(text)
End Function

Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Print m.DeleteMovieSegmentKRZ(600, 3000), m.Duration                ' expect: 0 3000
Print EditsOf(m)                                                    ' expect: 600@0 2400@3600 / 600@0 2400@264600
Print m.ScaleMovieSegmentKRZ(600, 2400, 1200), m.Duration           ' expect: 0 1800
Print m.InsertEmptyMovieSegmentKRZ(600, 60), m.Duration             ' expect: 0 1860
Print m.InsertMovieSegmentKRZ(m, 0, 300, 1860), m.Duration          ' expect: 0 2160
Print EditsOf(m)                                                    ' expect: 600@0 60@-1 1200@3600 300@0 / 600@0 60@-1 1200@264600 300@0
m.Save
Print EditsOf(OpenMovie(path)) = EditsOf(m), MovieProblems(m) = ""  ' expect: True True

Print m.DeleteMovieSegmentKRZ(2161, 1), m.InsertEmptyMovieSegmentKRZ(2160, 1), m.ScaleMovieSegmentKRZ(0, -1, 1)   ' expect: -2015 -2015 -2014
Print m.InsertMovieSegmentKRZ(Nil, 0, 1, 0), m.IsModified           ' expect: -1 False

' What ends before the segment is left alone.
Dim uneven As Movie = OpenMovie(TestMovie("lookup"))
Print EditsOf(uneven)                                               ' expect: 600@0 / 1@0 / 600@0 / 1@0 / 60@0
Print uneven.DeleteMovieSegmentKRZ(30, 540), EditsOf(uneven)        ' expect: 0 30@0 30@570 / 1@0 / 30@0 30@570 / 1@0 / 30@0
