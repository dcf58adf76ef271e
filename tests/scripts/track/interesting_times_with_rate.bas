' NextInterestingTimeKRZ with a rate: the sample behind a time, or before it when the rate is negative.
Dim t As QTTrackKRZ = OpenMovie(TestMovie("edited")).GetVideoTrackKRZ(1)

Sub Find(t As QTTrackKRZ, start As Integer, rate As Double)
  Dim time As Integer = start
  Dim duration As Integer = 77
  t.Lasterror = 55
  Dim found As Boolean = t.NextInterestingTimeKRZ(time, duration, rate)
  Print found, time, duration, t.Lasterror
End Sub

Find t, 0, 1                 ' expect: True 300 60 0
Find t, 300, 1               ' expect: True 360 60 0
Find t, 301, 1               ' expect: True 360 60 0
Find t, -1, 1                ' expect: True 300 60 0
Find t, 5040, 1              ' expect: True -1 0 0
Find t, 5100, -1             ' expect: True 5040 60 0
Find t, 5040, -1             ' expect: True 4980 60 0
Find t, 361, -1              ' expect: True 360 60 0
Find t, 300, -1              ' expect: True -1 0 0
Find t, 2147483647, -1       ' expect: True 5040 60 0
Find t, -2147483648, -1      ' expect: True -1 0 0

' At 0 alone the sample right there counts, so a loop that found it has to step over it itself.
Dim plain As QTTrackKRZ = OpenMovie(TestMovie("two-tracks")).GetVideoTrackKRZ(1)
Find plain, 0, 1             ' expect: True 0 60 0
Find plain, 0, -1            ' expect: True 0 60 0
Find plain, -1, -1           ' expect: True -1 0 0
Find plain, 60, 1            ' expect: True 120 60 0
Find plain, 60, -1           ' expect: True 0 60 0

' Only the sign of the rate matters; what is cut to 0 searches forward.
Find plain, 60, 0            ' expect: True 120 60 0
Find plain, 60, 1e300        ' expect: True 120 60 0
Find plain, 60, -1e300       ' expect: True 0 60 0
Find plain, 60, -0.00001     ' expect: True 120 60 0
Find plain, 60, -0.5         ' expect: True 0 60 0

' Backward through edits of other speeds meets the same times as forward.
Dim rates As QTTrackKRZ = OpenMovie(TestMovie("rates")).GetVideoTrackKRZ(1)
Dim time As Integer = 851, duration As Integer
Dim found As String
For round As Integer = 1 To 20
  If Not rates.NextInterestingTimeKRZ(time, duration, -1) Or time <= 0 Then Exit For
  found = found & time & " "
Next
Print found + "end", time    ' expect: 750 720 690 660 630 600 480 360 240 120 end 0
