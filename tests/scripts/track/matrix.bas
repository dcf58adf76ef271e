' The matrix maps the track's own rectangle onto one of the movie, or is set number by number.
Sub Show(t As QTTrackKRZ)
  Dim a As Integer = 1, b As Integer = 1, c As Integer = 1, d As Integer = 1, e As Integer = 1, f As Integer = 1, g As Integer = 1, h As Integer = 1, i As Integer = 1
  t.GetTrackRawMatrix(a, b, c, d, e, f, g, h, i)
  Print a, b, c, d, e, f, g, h, i, t.Lasterror
End Sub

Dim path As String = TestMovie("two-tracks")
Dim m As Movie = OpenMovie(path, True)
Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
Show t   ' expect: 65536 0 0 0 65536 0 0 0 1073741824 0
t.SetTrackMatrix(10, 20, 160, 480)
Show t   ' expect: 32768 0 0 0 131072 0 655360 1310720 1073741824 0
m.Save
Show OpenMovie(path).GetVideoTrackKRZ(1)   ' expect: 32768 0 0 0 131072 0 655360 1310720 1073741824 0
' Places are cut to 16 bits.
t.SetTrackMatrix(40000, 0, 100, 100)
Show t   ' expect: 20480 0 0 0 27307 0 -1673527296 0 1073741824 0
t.SetTrackRawMatrix(0, 65536, 1, -65536, 0, 2, 15728640, -7, 1073741823)
Print t.Lasterror                          ' expect: 0
m.Save
Show OpenMovie(path).GetVideoTrackKRZ(1)   ' expect: 0 65536 1 -65536 0 2 15728640 -7 1073741823 0
' A track without size has no rectangle that could be mapped.
m.GetSoundTrackKRZ(1).SetTrackMatrix(0, 0, 5, 5)
Dim none As New QTTrackKRZ
none.SetTrackMatrix(0, 0, 5, 5)
Print none.Lasterror                       ' expect: -1
Show none   ' expect: 0 0 0 0 0 0 0 0 0 -1
