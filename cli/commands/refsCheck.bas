' krz refs check: whether every reference leads to a track.
#Include "messages.bas"

Dim missing As Integer
Try
  Dim m As Movie = OpenMovie(Args(0))
  For i As Integer = 1 To m.TrackCountKRZ
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    Dim type As String, id As Integer, number As Integer = 1
    While TrackReference(t.TrackHandle, number, type, id)
      If m.GetTrackIDKRZ(id) Is Nil Then
        Print "track " + Str(t.TrackID) + ": """ + type + """ names track " + Str(id) + ", which does not exist"
        missing = missing + 1
      End If
      number = number + 1
    Wend
  Next
Catch e As IOException
  Fail(e.Message, 3)
End Try
If missing > 0 Then Quit(1)
Say("every reference leads to a track")
