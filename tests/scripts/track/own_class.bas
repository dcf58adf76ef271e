' A script's class may inherit from the module's: the track's data lies before its own properties.
Class MarkedTrack Inherits QTTrackKRZ
  mark As Integer = 3
  words() As String
  Sub Constructor(mark As Integer)
    Self.mark = Self.mark + mark
    Lasterror = 55
  End Sub
  Function Twice() As Integer
    words.Append String(Duration)
    Return mark * 2 + Lasterror
  End Function
  Sub Destructor()
    Print "gone", mark, Lasterror
  End Sub
End Class
Dim t As QTTrackKRZ = New MarkedTrack(4)
Print MarkedTrack(t).Twice, t.Lasterror, t.Movie Is Nil, t   ' expect: 69 55 True MarkedTrack
t.Lasterror = 7
Print MarkedTrack(t).mark, MarkedTrack(t).words(0), t IsA QTTrackKRZ   ' expect: 7 0 True
t = Nil                                              ' expect: gone 7 7
