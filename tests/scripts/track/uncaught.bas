' A script that fails in the middle lets go of its tracks and movies all the same.
Dim m As Movie = OpenMovie(TestMovie("two-tracks"))
Dim kept As New QTChapterDataKRZ
kept.Text = "kept"

Sub Deeper(t As QTTrackKRZ, depth As Integer)
  Dim mine As QTTrackKRZ = t.Movie.GetTrackIndexKRZ(2)
  If depth > 0 Then Deeper mine, depth - 1
  Dim none As QTTrackKRZ = m.GetTrackIDKRZ(99)
  Print none.MediaType                       ' expect-error: uncaught.bas:10:9: NilObjectException: none is Nil
End Sub
Deeper m.GetVideoTrackKRZ(1), 5
