' krz describe: the sample descriptions of a movie, property by property and byte by byte.
#Include "messages.bas"
#Include "descriptions.bas"
#Include "record.bas"

Dim m As Movie
Try
  m = OpenMovie(Args(0))
Catch e As IOException
  Fail(e.Message, 3)
End Try
For i As Integer = 1 To m.TrackCountKRZ
  Dim t As QTTrackKRZ = m.GetTrackIndexKRZ(i)
  For k As Integer = 1 To t.MediaSampleDescriptionCount
    Describe(t, k)
  Next
  If t.MediaSampleDescriptionCount > 0 Then Continue
  Print "track " + Str(t.TrackID) + " (" + Printable(t.MediaType) + ") has no description"
  Print ""
Next
Try
  m.Check
Catch e As IOException
  Fail(e.Message, 3)
End Try

Sub Describe(t As QTTrackKRZ, index As Integer)
  Print "track " + Str(t.TrackID) + " (" + Printable(t.MediaType) + "), description " + Str(index) + " of " + Str(t.MediaSampleDescriptionCount)
  Dim document As JSONItem = DescriptionDocument(t, index)
  For i As Integer = 0 To document.Count - 1
    Dim name As String = document.NameAt(i)
    Print "  " + PadRight(name, 22) + Shown(document.Value(name))
  Next
  Dim record As New RawRecord(t.MediaSampleDescriptionRaw(index), t.MediaType)
  record.Show
  Print ""
End Sub

Function Shown(value As Variant) As String
  If value Is Nil Then Return "-"
  Return Printable(String(value))
End Function
