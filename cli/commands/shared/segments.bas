' Segments of a whole movie, or of one track with --track.

Class SegmentEditor
  Private m As Movie
  Private track As QTTrackKRZ    ' Nil for all tracks together

  Sub Constructor(m As Movie)
    Self.m = m
    If CommandLine.Has("track") Then track = SelectTrack(m, CommandLine.Value("track"))
  End Sub

  Function Length() As Integer
    If track Is Nil Then Return m.Duration
    Return track.Duration
  End Function

  Sub Remove(start As Integer, duration As Integer)
    If track Is Nil Then
      Check(m.DeleteMovieSegmentKRZ(start, duration))
    Else
      track.DeleteTrackSegment(start, duration)
      Check(track.Lasterror)
    End If
  End Sub

  Sub InsertEmpty(start As Integer, duration As Integer)
    If track Is Nil Then
      Check(m.InsertEmptyMovieSegmentKRZ(start, duration))
    Else
      track.InsertEmptyTrackSegment(start, duration)
      Check(track.Lasterror)
    End If
  End Sub

  Sub Scale(start As Integer, oldDuration As Integer, newDuration As Integer)
    If track Is Nil Then
      Check(m.ScaleMovieSegmentKRZ(start, oldDuration, newDuration))
    Else
      track.ScaleTrackSegment(start, oldDuration, newDuration)
      Check(track.Lasterror)
    End If
  End Sub

  ' Shows a segment of the same movie again.
  Sub Repeat(start As Integer, duration As Integer, place As Integer)
    If track Is Nil Then
      Check(m.InsertMovieSegmentKRZ(m, start, duration, place))
    Else
      track.InsertTrackSegment(track, start, duration, place)
      Check(track.Lasterror)
    End If
  End Sub

  ' Shows a segment of another movie, with --track of its track of that name. `copies` puts its samples into this movie;
  ' else they are referred to.
  Sub Take(other As Movie, start As Integer, duration As Integer, place As Integer, copies As Boolean)
    m.CopiesSamples = copies
    If track Is Nil Then
      Check(other.InsertMovieSegmentKRZ(m, start, duration, place))
    Else
      Dim source As QTTrackKRZ = SelectTrack(other, CommandLine.Value("track"))
      source.InsertTrackSegment(track, start, duration, place)
      Check(source.Lasterror)
    End If
  End Sub

  Private Sub Check(code As Integer)
    Select Case code
    Case 0
      Return
    Case -2015
      Fail("that time lies outside of the movie, which ends at " + ClockOf(Length, m), 1)
    Case -2014
      Fail("that duration is not possible", 1)
    Else
      Fail("the edit failed: " + MovieFailure + " (error " + Str(code) + ")", 1)
    End Select
  End Sub
End Class
