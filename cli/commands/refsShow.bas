' krz refs show: which track refers to which.
#Include "messages.bas"

Try
  Dim m As Movie = OpenMovie(Args(0))
  Dim count As Integer
  For i As Integer = 1 To m.TrackCountKRZ
    Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
    Dim type As String, id As Integer, number As Integer = 1
    While TrackReference(t.TrackHandle, number, type, id)
      Dim target As QTTrackKRZ = m.GetTrackIDKRZ(id)
      Dim name As String = "track " + Str(id)
      If target Is Nil Then name = name + " (missing)" Else name = name + " (" + target.MediaType + ")"
      Print "track " + Str(t.TrackID) + " (" + t.MediaType + ") -" + type + "-> " + name
      number = number + 1
      count = count + 1
    Wend
  Next
  If count = 0 Then Say("no track refers to another")
Catch e As IOException
  Fail(e.Message, 3)
End Try
