' NextInterestingTimeKRZ without a rate: the sample at a time or after it.
Dim t As QTTrackKRZ = OpenMovie(TestMovie("edited")).GetVideoTrackKRZ(1)

Sub Find(t As QTTrackKRZ, start As Integer)
  Dim time As Integer = start
  Dim duration As Integer = 77
  t.Lasterror = 55
  Dim found As Boolean = t.NextInterestingTimeKRZ(time, duration)
  Print found, time, duration, t.Lasterror
End Sub

' The media starts behind half a second of nothing.
Find t, 0                    ' expect: True 300 60 0
Find t, -1                   ' expect: True 300 60 0
Find t, -2147483648          ' expect: True 300 60 0
Find t, 300                  ' expect: True 300 60 0
Find t, 301                  ' expect: True 360 60 0
Find t, 5040                 ' expect: True 5040 60 0
' None is no error.
Find t, 5041                 ' expect: True -1 0 0
Find t, 2147483647           ' expect: True -1 0 0

' Before the movie a sample counts only when it begins later: at 0 it does.
Dim plain As QTTrackKRZ = OpenMovie(TestMovie("two-tracks")).GetVideoTrackKRZ(1)
Find plain, -1               ' expect: True 0 60 0
Find plain, 0                ' expect: True 0 60 0

' Starts are rounded up to movie ticks; the last sample ends with the track.
Dim ntsc As QTTrackKRZ = OpenMovie(TestMovie("ntsc")).GetVideoTrackKRZ(1)
Find ntsc, 0                 ' expect: True 0 21 0
Find ntsc, 1                 ' expect: True 21 20 0
Find ntsc, 22                ' expect: True 41 19 0
Print ntsc.Duration          ' expect: 60

' Through every edit: half speed, double speed, one frame held.
Dim rates As QTTrackKRZ = OpenMovie(TestMovie("rates")).GetVideoTrackKRZ(1)
Dim time, duration As Integer
Dim found As String
For round As Integer = 1 To 20
  If Not rates.NextInterestingTimeKRZ(time, duration) Or time < 0 Then Exit For
  found = found & time & "+" & duration & " "
  time = time + duration
Next
Print found + "end"  ' expect: 0+120 120+120 240+120 360+120 480+120 600+30 630+30 660+30 690+30 720+30 750+100 end

Find OpenMovie(TestMovie("silent")).GetSoundTrackKRZ(1), 0   ' expect: True -1 0 0
