' Finds the picture that stands longest in each movie: krz run examples/longest_picture.bas *.mov
For Each path As String In Args
  Dim m As Movie = OpenMovie(path)
  Dim t As QTTrackKRZ = m.GetVideoTrackKRZ(1)
  If t Is Nil Then
    Print path + ": no video"
    Continue
  End If

  Dim time As Integer = 0
  Dim duration As Integer
  Dim longest As Integer = 0
  Dim longestTime As Integer = -1
  ' From one picture to the start of the next; -1 says that there is none.
  While t.NextInterestingTimeKRZ(time, duration) And time >= 0
    If duration > longest Then
      longest = duration
      longestTime = time
    End If
    time = time + duration
  Wend
  Print path + ":", longest / m.TimeScale, "seconds, from second", longestTime / m.TimeScale
Next
